#include "cimserver/http/RequestReader.hpp"

#include "cimserver/common/Text.hpp"

#include <boost/beast/http/buffer_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <array>
#include <limits>

namespace cimserver::http {

namespace beast = boost::beast;

struct RequestReader::Parser {
    std::optional<beast::http::request_parser<beast::http::buffer_body>> now;
};

namespace {

/// What the parser found wrong.
ReadError readErrorOf(const beast::error_code& error, bool knowsTarget) {
    if (error == beast::http::error::header_limit && !knowsTarget) {
        return {414, "the request line is too long"};
    }
    if (error == beast::http::error::header_limit) {
        return {431, "the request head is too large"};
    }
    if (error == beast::http::error::body_limit) {
        return {413, "the request body is too large"};
    }
    if (error == beast::http::error::bad_version) {
        return {505, "the HTTP version is not supported"};
    }
    return {400, "not a well-formed HTTP request: " + error.message()};
}

/// True for fields with one value that the answer depends on. Those of CIM have a prefix in an M-POST request ("73-").
bool decides(std::string_view name) {
    const bool prefixed = name.size() > 3 && name[2] == '-' && name[0] >= '0' && name[0] <= '9';
    if (equalsIgnoringCase(name.substr(prefixed ? 3 : 0, 3), "CIM")) {
        return true;
    }
    constexpr std::string_view kNames[] = {"Accept",       "Authorization", "Content-Encoding",
                                           "Content-Type", "Expect",        "Man"};
    return std::any_of(std::begin(kNames), std::end(kNames),
                       [name](std::string_view one) { return equalsIgnoringCase(one, name); });
}

} // namespace

RequestReader::RequestReader(const Limits& limits) : limits_(limits), parser_(std::make_unique<Parser>()) {
    reset();
}

RequestReader::~RequestReader() = default;

void RequestReader::reset() {
    dropBody();
    request_ = Request();
    framing_ = Framing();
    authorization_.reset();
    auto& parser = parser_->now.emplace();
    parser.header_limit(static_cast<std::uint32_t>(limits_.headBytes));
    // The caller checks the announced length, before the body is read.
    parser.body_limit(std::numeric_limits<std::uint64_t>::max());
}

bool RequestReader::hasInput() {
    buffer_.erase(0, buffer_.find_first_not_of("\r\n"));
    return !buffer_.empty();
}

std::size_t RequestReader::held() const {
    return buffer_.capacity() + request_.body.capacity();
}

void RequestReader::dropBody() {
    std::string().swap(request_.body); // an assignment would keep the memory
    buffer_.shrink_to_fit();
}

RequestReader::Progress RequestReader::readHead() {
    auto& parser = *parser_->now;
    beast::error_code error;
    const auto used = parser.put(boost::asio::buffer(buffer_), error);
    if (error && error != beast::http::error::need_more) {
        return fail(readErrorOf(error, !parser.get().target().empty()));
    }
    buffer_.erase(0, used);
    if (!parser.is_header_done()) {
        return Progress::NeedMore;
    }
    takeHead();
    return checkFraming();
}

void RequestReader::takeHead() {
    auto& parser = *parser_->now;
    auto& message = parser.get();
    request_.method = std::string(message.method_string());
    request_.target = std::string(message.target());
    request_.version = message.version();
    for (const auto& field : message) {
        if (field.name() == beast::http::field::authorization) {
            authorization_ = std::string(field.value());
        } else {
            request_.fields.add(std::string(field.name_string()), std::string(field.value()));
        }
    }
    framing_.keepAlive = parser.keep_alive();
    framing_.chunked = parser.chunked();
    if (const auto length = parser.content_length()) {
        framing_.contentLength = *length;
    }
    framing_.expectsContinue =
        message.version() >= 11 && beast::iequals(message[beast::http::field::expect], "100-continue");
    parser.body_limit(limits_.bodyBytes);
    parser.eager(true);
}

/// Refuses what a proxy could have understood otherwise: a request without Host, with two, or with two different values
/// of another field that decides something.
RequestReader::Progress RequestReader::checkFields() {
    const auto& message = parser_->now->get();
    const auto hosts = message.count(beast::http::field::host);
    if (hosts > 1 || (hosts == 0 && message.version() == 11)) {
        return fail({400, hosts == 0 ? "the Host is missing" : "more than one Host"});
    }
    boost::container::small_vector<std::pair<std::string_view, std::string_view>, 16> deciding;
    for (const auto& field : message) {
        const std::string_view name(field.name_string().data(), field.name_string().size());
        if (decides(name)) {
            deciding.emplace_back(name, std::string_view(field.value().data(), field.value().size()));
        }
    }
    std::sort(deciding.begin(), deciding.end(),
              [](const auto& a, const auto& b) { return LessIgnoringCase()(a.first, b.first); });
    const auto twice = std::adjacent_find(deciding.begin(), deciding.end(), [](const auto& a, const auto& b) {
        return equalsIgnoringCase(a.first, b.first) && a.second != b.second;
    });
    if (twice != deciding.end()) {
        return fail({400, "two values of " + std::string(twice->first)});
    }
    return Progress::Done;
}

/// Refuses ambiguous framing, with which a request could be smuggled past a proxy.
RequestReader::Progress RequestReader::checkFraming() {
    const auto& message = parser_->now->get();
    if (message.version() != 10 && message.version() != 11) {
        return fail({505, "the HTTP version is not supported"});
    }
    const auto lengths = message.count(beast::http::field::content_length);
    const auto encodings = message.count(beast::http::field::transfer_encoding);
    if (lengths + encodings > 1 || message[beast::http::field::content_length].find(',') != beast::string_view::npos) {
        return fail({400, "more than one Content-Length or Transfer-Encoding"});
    }
    if (encodings == 1 && !beast::iequals(message[beast::http::field::transfer_encoding], "chunked")) {
        return fail({501, "the only Transfer-Encoding offered is chunked"});
    }
    if (framing_.chunked && message.version() == 10) {
        return fail({400, "HTTP/1.0 has no Transfer-Encoding"});
    }
    return checkFields();
}

RequestReader::Progress RequestReader::readBody(bool discard) {
    auto& parser = *parser_->now;
    auto& piece = parser.get().body();
    std::array<char, 4096> bytes; // not initialised
    // One call may consume only one element of the framing (a chunk's header, a piece of its data).
    while (!parser.is_done() && !buffer_.empty()) {
        beast::error_code error;
        piece = {bytes.data(), bytes.size(), true};
        buffer_.erase(0, parser.put(boost::asio::buffer(buffer_), error));
        // The body grows as it arrives: room for what a client only announces would cost memory.
        request_.body.append(bytes.data(), discard ? 0 : bytes.size() - piece.size);
        if (error == beast::http::error::need_more) {
            break;
        }
        if (error && error != beast::http::error::need_buffer) {
            return fail(readErrorOf(error, true));
        }
    }
    if (parser.is_done()) {
        return Progress::Done;
    }
    // What the parser left over is an unfinished line of the chunk framing.
    if (buffer_.size() > limits_.headBytes) {
        return fail({400, "a line of the chunked body is too long"});
    }
    if (buffer_.empty()) {
        std::string().swap(buffer_);
    }
    return Progress::NeedMore;
}

RequestReader::Progress RequestReader::fail(ReadError error) {
    error_ = std::move(error);
    return Progress::Failed;
}

} // namespace cimserver::http
