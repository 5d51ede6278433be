// The server's address as the push settings hold it.
#pragma once

#include <cstdint>
#include <string>

namespace transfer {

enum class Protocol { Sftp, Ftps, Ftp };

struct Address {
    Protocol protocol = Protocol::Sftp;
    std::string host; ///< without the brackets of an IPv6 address
    std::uint16_t port = 22;

    /// TLS from the first byte, as servers on port 990 expect it; elsewhere FTPS begins with AUTH TLS.
    bool isImplicitTls() const { return protocol == Protocol::Ftps && port == kImplicitTlsPort; }
    /// "sftp://host:22", an IPv6 address in brackets.
    std::string url() const;
    /// As known_hosts names the host: "host", or "[host]:port" when the port is not 22.
    std::string knownHostsName() const;

    static constexpr std::uint16_t kImplicitTlsPort = 990;
};

/// Reads HOST, HOST:PORT, an IPv6 address, or a URL of the schemes sftp, ftps and ftp; without a scheme it is SFTP.
/// Throws Failure, scope Run, when it is anything else.
Address parseAddress(const std::string& text);

} // namespace transfer
