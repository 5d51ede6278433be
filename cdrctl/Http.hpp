// One HTTP request over TCP or TLS.
#pragma once

#include "cdrctl/Errors.hpp"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace cdrctl {

/// Where a server listens.
struct Address {
    bool tls = false;
    std::string host; ///< an IPv6 address without its brackets
    std::string port;
    std::string target;

    /// Reads "HOST", "HOST:PORT", "[IPV6]:PORT" or a URL with http or https; without a scheme it is http. The port is
    /// 5988 or 5989 and the target /cimom unless told. Throws std::invalid_argument, also for a user name in it.
    static Address parse(const std::string& text);
    std::string url() const;
    /// Whether the host is this machine by its name: localhost, 127.0.0.0/8 or ::1.
    bool isLoopback() const;
};

/// How to get in. Empty texts mean none.
struct Access {
    std::string user;
    std::string password;
    std::string caFile;          ///< PEM; empty: the system's authorities
    std::string certificateFile; ///< PEM, of this client
    std::string keyFile;         ///< PEM
    bool insecure = false;       ///< takes any certificate
    std::chrono::milliseconds timeout{30000};
};

struct Answer {
    unsigned status = 0;
    std::string cimError; ///< the header field CIMError
    std::string body;
};

using HeaderFields = std::vector<std::pair<std::string, std::string>>;

/// Posts the body and returns the answer, whatever its status. Each step may take as long as the timeout, but looking
/// up the host's name as long as the system's resolver takes; an answer of more than 16 MiB is refused. Throws
/// ConnectError.
Answer post(const Address& address, const Access& access, const HeaderFields& fields, const std::string& body);

} // namespace cdrctl
