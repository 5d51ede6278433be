// What an administrator decides about the transport: addresses, limits, TLS, users.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace cimserver::http {

using Milliseconds = std::chrono::milliseconds;

/// An address to listen on.
struct Listener {
    std::string address; ///< an IPv4 or IPv6 literal
    std::uint16_t port = 5988;
    bool tls = false;

    bool loopback() const;
    std::string url() const; ///< e.g. "http://127.0.0.1:5988", "https://[::1]:5989"
};

/// Reads "ADDRESS:PORT", "[IPV6]:PORT" or "localhost:PORT", optionally after "http://" or "https://". Without a scheme
/// the listener uses TLS when `tlsConfigured`. Throws std::invalid_argument with a text naming the item.
Listener parseListener(const std::string& text, bool tlsConfigured);

/// Sizes in bytes. A request that exceeds one of them is refused with the status named.
struct Limits {
    std::size_t headBytes = std::size_t{16} * 1024;     ///< 431; 414 when the request line alone exceeds it
    std::size_t bodyBytes = std::size_t{1024} * 1024;   ///< 413
    std::size_t memory = std::size_t{32} * 1024 * 1024; ///< for requests and answers together: 503
    std::size_t connections = 1000;                     ///< 503
    std::size_t peerConnections = 0;                    ///< of one address or IPv6 network; 0: a quarter, at least one
    std::size_t loopbackConnections = 0;                ///< of one loopback address; 0: half of all, at least one
    Milliseconds firstByte{30'000}; ///< for the TLS handshake, and from then to the first request's first byte
    Milliseconds head{10'000};      ///< from a request's first byte to the end of its head: 408
    Milliseconds body{30'000};      ///< from the head's end, or 100 Continue, to the body's end: 408
    Milliseconds idle{60'000};      ///< between an answer and the next request
    Milliseconds write{30'000};     ///< for the client to take an answer
    Milliseconds linger{2'000};     ///< after a closing answer, for the client to read it
};

enum class ClientCertificates { None, Optional, Required };

struct TlsSettings {
    std::string certificateFile; ///< PEM, with the chain
    std::string keyFile;         ///< PEM, not encrypted
    std::string clientCaFile;    ///< PEM: who may sign client certificates
    ClientCertificates clientCertificates = ClientCertificates::None;
    std::string minVersion = "1.2"; ///< or "1.3"
    /// In OpenSSL's notation, names of TLS 1.3 (TLS_...) among them; a version without any keeps its default.
    std::string ciphers = "ECDHE+AESGCM:ECDHE+CHACHA20";
};

struct LoginSettings {
    std::string userFile; ///< empty: no authentication
    std::string realm = "cimserver";
    Milliseconds cache{60'000};        ///< how long a right password is accepted without hashing it again
    unsigned freeFailures = 5;         ///< failures of one peer that cost no delay
    Milliseconds delay{500};           ///< after those; doubles with each further failure
    Milliseconds maxDelay{10'000};     ///< the longest such delay
    Milliseconds forgetAfter{300'000}; ///< a peer's failures are forgotten after being quiet for that long
};

struct Settings {
    std::vector<Listener> listeners;
    std::vector<std::string> hostNames; ///< accepted as Host without users, beside addresses and "localhost"
    Limits limits;
    TlsSettings tls;
    LoginSettings login;
    unsigned workers = 4;      ///< threads that run the handler
    std::string dumpFile;      ///< empty: no dump
    std::string consoleFolder; ///< empty: no console
};

} // namespace cimserver::http
