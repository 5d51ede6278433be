#include "cimserver/http/Policy.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/http/Settings.hpp"

#include <boost/asio/ip/address.hpp>

#include <algorithm>

namespace cimserver::http {
namespace {

/// Where the authority of an absolute-form target begins; npos for another form.
std::size_t authorityIn(std::string_view target) {
    const auto scheme = target.find("://");
    return scheme < target.find('/') ? scheme + 3 : std::string_view::npos;
}

/// "host", "host:port" or "[IPv6]:port" without port and brackets, in lower case.
std::string hostOf(std::string_view authority) {
    const bool bracketed = authority.substr(0, 1) == "[";
    auto host = authority.substr(0, authority.find(bracketed ? ']' : ':'));
    host.remove_prefix(bracketed ? 1 : 0);
    return folded(host);
}

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> list) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

bool isServed(std::string_view path) {
    return isOneOf(path, {"/cimom", "/"});
}

std::string_view mediaTypeOf(std::string_view field) {
    return trimmed(field.substr(0, field.find(';')));
}

constexpr std::string_view kXmlTypes[] = {"application/xml", "text/xml"};

bool isXml(std::string_view mediaType) {
    return equalsIgnoringCase(mediaType, kXmlTypes[0]) || equalsIgnoringCase(mediaType, kXmlTypes[1]);
}

/// How closely a range of an Accept field names the type: 0 not at all, 1 all types, 2 its top type, 3 exactly.
int closeness(std::string_view range, std::string_view type) {
    if (equalsIgnoringCase(range, type)) {
        return 3;
    }
    const auto top = std::string(type.substr(0, type.find('/'))) + "/*";
    if (equalsIgnoringCase(range, top)) {
        return 2;
    }
    return range == "*/*" || range == "*" ? 1 : 0;
}

bool qualityIsZero(std::string_view range) {
    for (const auto parameter : split(range, ';')) {
        if (equalsIgnoringCase(parameter.substr(0, 2), "q=")) {
            return parameter.find_first_not_of("0.", 2) == std::string_view::npos;
        }
    }
    return false;
}

/// The range that names the type most specifically decides.
bool acceptsType(const std::vector<std::string_view>& ranges, std::string_view type) {
    int closest = 0;
    bool accepted = false;
    for (const auto range : ranges) {
        const int close = closeness(mediaTypeOf(range), type);
        if (close > closest) {
            closest = close;
            accepted = !qualityIsZero(range);
        }
    }
    return accepted;
}

std::optional<Response> refuseContent(const Request& request) {
    const auto* type = request.fields.find("Content-Type");
    if (type == nullptr || !isXml(mediaTypeOf(*type))) {
        return textResponse(415, "the Content-Type must be application/xml or text/xml");
    }
    const auto* encoding = request.fields.find("Content-Encoding");
    if (encoding != nullptr && !equalsIgnoringCase(*encoding, "identity")) {
        return textResponse(415, "no Content-Encoding is offered");
    }
    const auto* accept = request.fields.find("Accept");
    if (accept != nullptr && !acceptsXml(*accept)) {
        return textResponse(406, "answers are application/xml, which the Accept field excludes");
    }
    return std::nullopt;
}

} // namespace

std::string_view pathOf(std::string_view target) {
    if (const auto authority = authorityIn(target); authority != std::string_view::npos) {
        const auto slash = target.find('/', authority);
        target = slash == std::string_view::npos ? "/" : target.substr(slash);
    }
    return target.substr(0, target.find('?'));
}

Response textResponse(unsigned status, std::string_view text) {
    Response response;
    response.status = status;
    response.fields.add("Content-Type", "text/plain; charset=\"utf-8\"");
    response.body = std::string(text) + "\n";
    return response;
}

Response refuseMethod(const std::string& method, std::string_view allowed) {
    if (!isOneOf(method, {"GET", "HEAD", "POST", "M-POST", "PUT", "DELETE", "PATCH", "TRACE", "CONNECT", "OPTIONS"})) {
        return textResponse(501, "the method " + method.substr(0, 40) + " is not implemented");
    }
    auto response = textResponse(405, "the method " + method + " is not offered here");
    response.fields.add("Allow", std::string(allowed));
    return response;
}

bool isForThisHost(const Request& request, const std::vector<std::string>& hostNames) {
    const auto isKnown = [&hostNames](std::string_view authority) {
        const auto host = hostOf(authority);
        boost::system::error_code noAddress;
        boost::asio::ip::make_address(host, noAddress);
        return !noAddress || host == "localhost" ||
               std::any_of(hostNames.begin(), hostNames.end(),
                           [&host](const std::string& name) { return equalsIgnoringCase(name, host); });
    };
    const auto* host = request.fields.find("Host");
    const std::string_view target = request.target;
    const auto authority = authorityIn(target);
    return (host == nullptr || isKnown(trimmed(*host))) &&
           (authority == std::string_view::npos ||
            isKnown(target.substr(authority, target.find_first_of("/?", authority) - authority)));
}

bool isHealthRequest(const Request& request) {
    return pathOf(request.target) == "/health" && isOneOf(request.method, {"GET", "HEAD"});
}

bool isReadyRequest(const Request& request) {
    return pathOf(request.target) == "/ready" && isOneOf(request.method, {"GET", "HEAD"});
}

Response healthResponse(const std::string& problems, const std::string& notices) {
    auto response =
        problems.empty() ? textResponse(200, notices.empty() ? "ok" : notices) : textResponse(503, problems);
    response.fields.add("Cache-Control", "no-cache");
    return response;
}

bool asksForOptions(const Request& request) {
    const auto path = pathOf(request.target);
    return request.method == "OPTIONS" && (isServed(path) || path == "*");
}

bool acceptsXml(std::string_view accept) {
    const auto ranges = split(accept, ',');
    return ranges.empty() || std::any_of(std::begin(kXmlTypes), std::end(kXmlTypes),
                                         [&ranges](std::string_view type) { return acceptsType(ranges, type); });
}

std::optional<Response> answerFromHead(const Request& request, const Framing& framing, const Limits& limits) {
    const auto path = pathOf(request.target);
    if (isOneOf(path, {"/health", "/ready"})) {
        return refuseMethod(request.method, "GET, HEAD");
    }
    if (!isServed(path)) {
        return textResponse(404, "nothing is served here; the path is /cimom");
    }
    if (request.method != "POST" && request.method != "M-POST") {
        return refuseMethod(request.method, kAllowed);
    }
    if (!framing.chunked && !framing.contentLength) {
        return textResponse(411, "a Content-Length is needed");
    }
    if (framing.contentLength.value_or(0) > limits.bodyBytes) {
        return textResponse(413, "the request body is larger than " + std::to_string(limits.bodyBytes) + " bytes");
    }
    const auto* expect = request.fields.find("Expect");
    if (expect != nullptr && !equalsIgnoringCase(*expect, "100-continue")) {
        return textResponse(417, "the only expectation offered is 100-continue");
    }
    return refuseContent(request);
}

} // namespace cimserver::http
