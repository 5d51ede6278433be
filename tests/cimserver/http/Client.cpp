#include "Client.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/x509.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace http_testing {
namespace {

int connectTo(std::uint16_t port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const timeval patience{10, 0};
    ::setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(fd);
        throw std::runtime_error("cannot connect");
    }
    return fd;
}

} // namespace

Client::Client(std::uint16_t port) : fd_(connectTo(port)) {}

Client::Client(std::uint16_t port, const TlsChoice& choice) : Client(port) {
    context_.reset(SSL_CTX_new(TLS_client_method()));
    SSL_CTX_set_verify(context_.get(), SSL_VERIFY_PEER, nullptr);
    SSL_CTX_load_verify_locations(context_.get(), choice.caFile.c_str(), nullptr);
    if (choice.version != 0) {
        SSL_CTX_set_min_proto_version(context_.get(), choice.version);
        SSL_CTX_set_max_proto_version(context_.get(), choice.version);
    }
    if (!choice.certificateFile.empty()) {
        SSL_CTX_use_certificate_chain_file(context_.get(), choice.certificateFile.c_str());
        SSL_CTX_use_PrivateKey_file(context_.get(), choice.keyFile.c_str(), SSL_FILETYPE_PEM);
    }
    tls_.reset(SSL_new(context_.get()));
    SSL_set_fd(tls_.get(), fd_);
    if (SSL_connect(tls_.get()) != 1) {
        throw std::runtime_error("TLS handshake failed");
    }
}

Client::Client(Client&& other) noexcept
    : fd_(std::exchange(other.fd_, -1)), buffer_(std::move(other.buffer_)), context_(std::move(other.context_)),
      tls_(std::move(other.tls_)) {}

Client::~Client() {
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

void Client::send(const std::string& bytes) {
    if (tls_) {
        SSL_write(tls_.get(), bytes.data(), static_cast<int>(bytes.size()));
        return;
    }
    for (std::size_t done = 0; done < bytes.size();) {
        const auto sent = ::send(fd_, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
        if (sent <= 0) {
            return; // the server may have closed already; what it answered is still to be read
        }
        done += static_cast<std::size_t>(sent);
    }
}

bool Client::fill() {
    char bytes[4096];
    const auto size =
        tls_ ? static_cast<ssize_t>(SSL_read(tls_.get(), bytes, sizeof bytes)) : ::recv(fd_, bytes, sizeof bytes, 0);
    if (size <= 0) {
        return false;
    }
    buffer_.append(bytes, static_cast<std::size_t>(size));
    return true;
}

Reply Client::readHead() {
    Reply reply;
    while (buffer_.find("\r\n\r\n") == std::string::npos) {
        if (!fill()) {
            return reply;
        }
    }
    std::istringstream head(buffer_.substr(0, buffer_.find("\r\n\r\n") + 2));
    buffer_.erase(0, buffer_.find("\r\n\r\n") + 4);
    std::string version;
    head >> version >> reply.status;
    std::string line;
    for (std::getline(head, line); std::getline(head, line);) {
        auto name = line.substr(0, line.find(':'));
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
        reply.fields[name] = line.substr(name.size() + 2, line.size() - name.size() - 3);
    }
    return reply;
}

Reply Client::read() {
    auto reply = readHead();
    if (reply.status < 200) {
        return reply;
    }
    const auto length = std::stoul(reply.fields.at("content-length"));
    while (buffer_.size() < length && fill()) {
    }
    reply.body = buffer_.substr(0, length);
    buffer_.erase(0, length);
    return reply;
}

bool Client::ended() {
    char byte = 0;
    if (tls_) {
        return buffer_.empty() && SSL_read(tls_.get(), &byte, 1) == 0;
    }
    return buffer_.empty() && ::recv(fd_, &byte, 1, 0) == 0;
}

std::string Client::serverName() const {
    const std::unique_ptr<X509, void (*)(X509*)> certificate(SSL_get1_peer_certificate(tls_.get()), X509_free);
    char name[64] = "";
    X509_NAME_get_text_by_NID(X509_get_subject_name(certificate.get()), NID_commonName, name, sizeof name);
    return name;
}

std::string post(const std::string& body, const std::string& fields, const std::string& version) {
    return "POST /cimom " + version + "\r\nHost: localhost\r\nContent-Type: application/xml\r\n" + fields +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

} // namespace http_testing
