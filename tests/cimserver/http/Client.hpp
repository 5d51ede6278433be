// A client that writes bytes as they are told and reads answers strictly.
#pragma once

#include <openssl/ssl.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace http_testing {

struct Reply {
    unsigned status = 0;                       ///< 0: the connection ended or nothing came in time
    std::map<std::string, std::string> fields; ///< names in lower case
    std::string body;
    bool closes() const { return fields.count("connection") != 0 && fields.at("connection") == "close"; }
};

/// TLS as a client does it; empty names mean none.
struct TlsChoice {
    std::string caFile;
    std::string certificateFile;
    std::string keyFile;
    int version = 0; ///< e.g. TLS1_2_VERSION; 0: any
};

class Client {
  public:
    explicit Client(std::uint16_t port);
    /// Throws std::runtime_error when the handshake fails.
    Client(std::uint16_t port, const TlsChoice& tls);

    void send(const std::string& bytes);
    void endSending();
    /// The next answer, waiting for at most ten seconds. Status 0 also when one in chunks is cut short.
    Reply read();
    /// The next answer to a HEAD request: a Content-Length without a body.
    Reply readHead();
    Reply ask(const std::string& bytes) { return send(bytes), read(); }
    /// True when the server ends the connection, without a reset and without another byte.
    bool ended();
    /// The common name of the server's certificate.
    std::string serverName() const;

  private:
    bool fill();
    bool fillTo(std::size_t size);
    std::string take(std::size_t size);
    bool readChunks(std::string& body);

    std::unique_ptr<BIO, void (*)(BIO*)> bio_;
    std::string buffer_;
};

/// A well-formed request with the body; `fields` are further lines, each with its "\r\n".
std::string post(const std::string& body, const std::string& fields = "", const std::string& version = "HTTP/1.1");

/// A request that calls the method; `object` is the class or instance within root/cimv2, empty for none.
std::string postCall(const std::string& method, const std::string& object, const std::string& call);

} // namespace http_testing
