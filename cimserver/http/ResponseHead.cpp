#include "cimserver/http/ResponseHead.hpp"

#include "cimserver/common/Text.hpp"

#include <boost/beast/http/status.hpp>

#include <ctime>
#include <ostream> // for Boost's string_view

namespace cimserver::http {

namespace {

/// The Date field's value, renewed every second. I/O thread only.
const std::string& httpDate() {
    static std::string text;
    static std::time_t made = 0;
    const auto now = std::time(nullptr);
    if (now != made) {
        text = utcNow("%a, %d %b %Y %H:%M:%S GMT");
        made = now;
    }
    return text;
}

} // namespace

std::string responseHead(const Response& response, unsigned version, bool closeAfter, std::size_t room) {
    std::string text;
    text.reserve(512 + room);
    text.append("HTTP/1.1 ").append(std::to_string(response.status)).append(" ");
    text += obsolete_reason(boost::beast::http::int_to_status(response.status)).to_string();
    text.append("\r\nDate: ").append(httpDate()).append("\r\n");
    for (const auto& [name, value] : response.fields.all()) {
        // A text from outside must not end the header line that it is part of.
        text.append(name).append(": ").append(value, 0, value.find_first_of("\r\n")).append("\r\n");
    }
    if (closeAfter) {
        text += "Connection: close\r\n";
    } else if (version == 10) {
        text += "Connection: keep-alive\r\n";
    }
    if (!response.rest) {
        text.append("Content-Length: ").append(std::to_string(response.body.size())).append("\r\n");
    } else if (version != 10) {
        text += "Transfer-Encoding: chunked\r\n";
    }
    text += "\r\n";
    return text;
}

} // namespace cimserver::http
