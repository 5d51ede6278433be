#include "cimserver/cimxml/HttpRules.hpp"

#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/common/Text.hpp"

#include <algorithm>
#include <map>

namespace cimserver::cimxml {
namespace {

constexpr std::string_view kExtension = "http://www.dmtf.org/cim/mapping/http/v1.0";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The prefix that `Man: "http://www.dmtf.org/cim/mapping/http/v1.0"; ns=73` declares, "73-"; empty when it declares
/// something else.
std::string declaredPrefix(std::string_view man) {
    const std::vector<std::string_view> parts = split(man, ';');
    if (parts.size() != 2) {
        return {};
    }
    std::string_view uri = parts[0];
    if (uri.size() > 2 && uri.front() == '"' && uri.back() == '"') {
        uri = uri.substr(1, uri.size() - 2);
    }
    const std::vector<std::string_view> ns = split(parts[1], '=');
    const bool shaped = ns.size() == 2 && equalsIgnoringCase(ns[0], "ns") && ns[1].size() == 2 && isDigit(ns[1][0]) &&
                        isDigit(ns[1][1]);
    return shaped && uri == kExtension ? std::string(ns[1]) + "-" : std::string();
}

using Keys = std::map<std::string, std::string>;

/// Takes a quoted or bare key value and its comma off the front of `text`.
std::string takeKeyValue(std::string_view& text) {
    std::string value;
    bool inQuotes = false;
    std::size_t i = 0;
    for (; i < text.size() && (inQuotes || text[i] != ','); ++i) {
        if (text[i] == '"') {
            inQuotes = !inQuotes;
        } else if (text[i] == '\\' && i + 1 < text.size()) {
            value += text[++i];
        } else {
            value += text[i];
        }
    }
    text.remove_prefix(std::min(i + 1, text.size()));
    return value;
}

/// The keys of `K="v",N=3`, by lower-case names.
Keys keysOfHeader(std::string_view text) {
    Keys keys;
    while (!text.empty()) {
        const std::size_t equal = text.find('=');
        if (equal == std::string_view::npos) {
            keys.emplace(folded(text), "");
            break;
        }
        std::string name = folded(trimmed(text.substr(0, equal)));
        text.remove_prefix(equal + 1);
        keys.emplace(std::move(name), takeKeyValue(text));
    }
    return keys;
}

/// The header was decoded as a whole, although some clients encode only the part before the keys.
bool sameKeyText(std::string_view header, std::string_view message) {
    return equalsIgnoringCase(header, message) || equalsIgnoringCase(header, percentDecoded(message));
}

/// True unless the keys of the header differ from those of the message. Compares only names and plain values, because
/// references and unnamed keys are written in many ways.
bool keysAgree(const Keys& header, pugi::xml_node instanceName) {
    for (const pugi::xml_node binding : instanceName.children("KEYBINDING")) {
        const auto found = header.find(folded(binding.attribute("NAME").value()));
        const pugi::xml_node value = binding.child("KEYVALUE");
        if (found == header.end() || (value && !sameKeyText(found->second, textOf(value)))) {
            return false;
        }
    }
    return true;
}

/// Whether the decoded CIMObject "root/cimv2" or "root/cimv2:Class.K=v" names the message's target.
bool objectAgrees(std::string_view object, const RequestMessage& message) {
    const std::size_t colon = message.isMethodCall() ? object.find(':') : std::string_view::npos;
    if (!equalsIgnoringCase(withoutSlashes(object.substr(0, colon)), withoutSlashes(message.nameSpace()))) {
        return false;
    }
    if (!message.isMethodCall()) {
        return true;
    }
    if (colon == std::string_view::npos) {
        return false;
    }
    const std::string_view path = object.substr(colon + 1);
    const bool instance = std::string_view(message.target().name()) == "INSTANCENAME";
    const std::size_t dot = instance ? path.find('.') : std::string_view::npos;
    if (!equalsIgnoringCase(path.substr(0, dot), message.target().attribute(instance ? "CLASSNAME" : "NAME").value())) {
        return false;
    }
    return !instance ||
           keysAgree(keysOfHeader(dot == std::string_view::npos ? "" : path.substr(dot + 1)), message.target());
}

} // namespace

http::Response optionsResponse() {
    http::Response response;
    response.fields.add("Opt", std::string(kExtension) + " ; ns=73");
    response.fields.add("73-CIMProtocolVersion", "1.0");
    response.fields.add("73-CIMSupportedFunctionalGroups",
                        "basic-read, basic-write, instance-manipulation, association-traversal");
    return response;
}

CimHeaders::CimHeaders(const http::Request& request) : request_(request) {
    if (request.method != "M-POST") {
        return;
    }
    const std::string* man = request.fields.find("Man");
    prefix_ = man == nullptr ? "" : declaredPrefix(*man);
    if (prefix_.empty()) {
        throw HttpError(501, "", "M-POST needs Man: " + std::string(kExtension) + "; ns=NN");
    }
}

const std::string* CimHeaders::find(std::string_view name) const {
    return prefix_.empty() ? request_.fields.find(name) : request_.fields.find(prefix_ + std::string(name));
}

void CimHeaders::requireMethodCall() const {
    if (find("CIMBatch") != nullptr) {
        throw HttpError(501, "multiple-requests-unsupported", "CIMBatch: one request at a time");
    }
    const std::string* operation = find("CIMOperation");
    if (operation == nullptr || !equalsIgnoringCase(trimmed(*operation), "MethodCall")) {
        throw HttpError(400, "unsupported-operation",
                        operation == nullptr ? "CIMOperation is missing"
                                             : "CIMOperation " + quote(*operation) + " is not MethodCall");
    }
    const std::string* version = find("CIMProtocolVersion");
    if (version != nullptr && !hasMajorVersion(trimmed(*version), '1')) {
        throw HttpError(501, "unsupported-protocol-version", "CIMProtocolVersion " + quote(*version));
    }
}

void CimHeaders::requireAgreement(const RequestMessage& message) const {
    const std::string* method = find("CIMMethod");
    const std::string* object = find("CIMObject");
    if (method == nullptr || object == nullptr) {
        throw headerMismatch(method == nullptr ? "CIMMethod is missing" : "CIMObject is missing");
    }
    if (!equalsIgnoringCase(percentDecoded(trimmed(*method)), message.name())) {
        throw headerMismatch("CIMMethod " + quote(*method) + " is not " + quote(message.name()));
    }
    if (!objectAgrees(percentDecoded(trimmed(*object)), message)) {
        throw headerMismatch("CIMObject " + quote(*object) + " is not the object of the message");
    }
    const std::string* version = find("CIMProtocolVersion");
    if (version != nullptr && trimmed(*version) != message.frame().protocolVersion) {
        throw headerMismatch("CIMProtocolVersion " + quote(*version) + " is not " +
                             quote(message.frame().protocolVersion));
    }
}

void CimHeaders::add(http::Response& response, const std::string& name, std::string value) const {
    response.fields.add(prefix_ + name, std::move(value));
}

void CimHeaders::addExtension(http::Response& response) const {
    if (!prefix_.empty()) {
        response.fields.add("Ext", "");
        response.fields.add("Man", std::string(kExtension) + "; ns=" + prefix_.substr(0, 2));
    }
}

} // namespace cimserver::cimxml
