#include "Address.hpp"

#include "Failure.hpp"
#include "Text.hpp"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace transfer {
namespace {

struct Scheme {
    std::string_view name;
    Protocol protocol;
    std::uint16_t port;
};

constexpr Scheme kSchemes[] = {
    {"sftp", Protocol::Sftp, 22},
    {"ftps", Protocol::Ftps, 21},
    {"ftp", Protocol::Ftp, 21},
};
constexpr std::size_t kMaxHost = 253;

[[noreturn]] void refuse(const std::string& text, const char* reason) {
    throw Failure(Scope::Run, "IPAddress \"" + printable(text) + "\": " + reason);
}

const Scheme& schemeOf(std::string_view name, const std::string& text) {
    for (const Scheme& scheme : kSchemes) {
        if (scheme.name == name) {
            return scheme;
        }
    }
    refuse(text, "the scheme is none of sftp, ftps and ftp");
}

bool isHostCharacter(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z') || character == '.' || character == '-' || character == '_';
}

bool isAddressCharacter(char character) {
    return isHostCharacter(character) || character == ':';
}

std::uint16_t parsePort(std::string_view digits, const std::string& text) {
    std::uint16_t port = 0;
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    if (parsed.ec != std::errc() || parsed.ptr != digits.data() + digits.size() || port == 0) {
        refuse(text, "the port is not a number from 1 to 65535");
    }
    return port;
}

/// Takes "[address]", "address" or "host" off the front of `rest`; an address without brackets has no port.
std::string takeHost(std::string_view& rest, const std::string& text) {
    const bool bracket = !rest.empty() && rest.front() == '[';
    const bool bare = !bracket && std::count(rest.begin(), rest.end(), ':') > 1;
    const std::size_t end = bracket ? rest.find(']') : (bare ? rest.size() : std::min(rest.find(':'), rest.size()));
    if (end == std::string_view::npos) {
        refuse(text, "the bracket of the address is not closed");
    }
    std::string host(rest.substr(bracket ? 1 : 0, end - (bracket ? 1 : 0)));
    rest.remove_prefix(end + (bracket ? 1 : 0));
    const auto isAllowed = bracket || bare ? isAddressCharacter : isHostCharacter;
    if (host.empty() || host.size() > kMaxHost || host.front() == '-' ||
        !std::all_of(host.begin(), host.end(), isAllowed)) {
        refuse(text, "this is not the name or address of a host");
    }
    return host;
}

std::string inBrackets(const std::string& host) {
    return host.find(':') == std::string::npos ? host : "[" + host + "]";
}

} // namespace

std::string Address::url() const {
    const auto* const scheme = std::find_if(std::begin(kSchemes), std::end(kSchemes),
                                            [this](const Scheme& each) { return each.protocol == protocol; });
    return std::string(scheme->name) + "://" + inBrackets(host) + ":" + std::to_string(port);
}

std::string Address::knownHostsName() const {
    return port == kSchemes[0].port ? host : "[" + host + "]:" + std::to_string(port);
}

Address parseAddress(const std::string& text) {
    if (text.empty()) {
        throw Failure(Scope::Run, "no server is set: IPAddress is empty");
    }
    std::string_view rest = text;
    const std::size_t mark = rest.find("://");
    const Scheme& scheme = mark == std::string_view::npos ? kSchemes[0] : schemeOf(rest.substr(0, mark), text);
    rest.remove_prefix(mark == std::string_view::npos ? 0 : mark + 3);
    if (!rest.empty() && rest.back() == '/') {
        rest.remove_suffix(1);
    }
    Address address{scheme.protocol, takeHost(rest, text), scheme.port};
    if (!rest.empty() && rest.front() != ':') {
        refuse(text, "after the host only a port may follow; the folder is DestFolder's");
    }
    if (!rest.empty()) {
        address.port = parsePort(rest.substr(1), text);
    }
    return address;
}

} // namespace transfer
