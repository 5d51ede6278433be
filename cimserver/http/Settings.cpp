#include "cimserver/http/Settings.hpp"

#include "cimserver/common/Text.hpp"

#include <arpa/inet.h>

#include <charconv>
#include <stdexcept>

namespace cimserver::http {
namespace {

[[noreturn]] void failListener(const std::string& text, const char* why) {
    throw std::invalid_argument("cannot listen on '" + text + "': " + why);
}

bool isAddress(int family, const std::string& text) {
    in6_addr ignored{};
    return inet_pton(family, text.c_str(), &ignored) == 1;
}

std::uint16_t parsePort(const std::string& whole, std::string_view text) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size()) {
        failListener(whole, "the port is a number from 0 to 65535");
    }
    return port;
}

/// Takes "http://" or "https://" off the front. Returns whether the listener uses TLS.
bool takeScheme(std::string_view& text, bool tlsConfigured) {
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (equalsIgnoringCase(text.substr(0, scheme.size()), scheme)) {
            text.remove_prefix(scheme.size());
            return scheme == "https://";
        }
    }
    return tlsConfigured;
}

} // namespace

bool Listener::loopback() const {
    return address == "::1" || address.rfind("127.", 0) == 0;
}

std::string Listener::url() const {
    const bool v6 = address.find(':') != std::string::npos;
    return (tls ? "https://" : "http://") + (v6 ? "[" + address + "]" : address) + ":" + std::to_string(port);
}

Listener parseListener(const std::string& text, bool tlsConfigured) {
    std::string_view rest = text;
    Listener listener;
    listener.tls = takeScheme(rest, tlsConfigured);
    const auto colon = rest.rfind(':');
    if (colon == std::string_view::npos) {
        failListener(text, "expected ADDRESS:PORT");
    }
    listener.port = parsePort(text, rest.substr(colon + 1));
    listener.address = rest.substr(0, colon);
    const bool bracketed =
        listener.address.size() > 2 && listener.address.front() == '[' && listener.address.back() == ']';
    if (bracketed) {
        listener.address = listener.address.substr(1, listener.address.size() - 2);
    } else if (listener.address == "localhost") {
        listener.address = "127.0.0.1";
    }
    if (!isAddress(bracketed ? AF_INET6 : AF_INET, listener.address)) {
        failListener(text, "the address is an IPv4 address or an IPv6 address in brackets");
    }
    return listener;
}

} // namespace cimserver::http
