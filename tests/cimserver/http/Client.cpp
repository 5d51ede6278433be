#include "Client.hpp"

#include <openssl/x509.h>
#include <sys/socket.h>

#include <algorithm>
#include <csignal>
#include <sstream>
#include <stdexcept>

namespace http_testing {

Client::Client(std::uint16_t port)
    : bio_(BIO_new_connect(("127.0.0.1:" + std::to_string(port)).c_str()), BIO_free_all) {
    std::signal(SIGPIPE, SIG_IGN); // the server may close while the client writes
    const timeval patience{10, 0};
    if (BIO_do_connect(bio_.get()) != 1 || ::setsockopt(static_cast<int>(BIO_get_fd(bio_.get(), nullptr)), SOL_SOCKET,
                                                        SO_RCVTIMEO, &patience, sizeof patience) != 0) {
        throw std::runtime_error("cannot connect");
    }
}

Client::Client(std::uint16_t port, const TlsChoice& choice) : Client(port) {
    const std::unique_ptr<SSL_CTX, void (*)(SSL_CTX*)> context(SSL_CTX_new(TLS_client_method()), SSL_CTX_free);
    SSL_CTX_set_verify(context.get(), SSL_VERIFY_PEER, nullptr);
    SSL_CTX_load_verify_locations(context.get(), choice.caFile.c_str(), nullptr);
    if (choice.version != 0) {
        SSL_CTX_set_min_proto_version(context.get(), choice.version);
        SSL_CTX_set_max_proto_version(context.get(), choice.version);
    }
    if (!choice.certificateFile.empty()) {
        SSL_CTX_use_certificate_chain_file(context.get(), choice.certificateFile.c_str());
        SSL_CTX_use_PrivateKey_file(context.get(), choice.keyFile.c_str(), SSL_FILETYPE_PEM);
    }
    bio_.reset(BIO_push(BIO_new_ssl(context.get(), 1), bio_.release()));
    if (BIO_do_handshake(bio_.get()) != 1) {
        throw std::runtime_error("TLS handshake failed");
    }
}

/// What does not go out because the server has closed does not matter: what it answered is still to be read.
void Client::send(const std::string& bytes) {
    for (int done = 0, sent = 1; sent > 0 && done < static_cast<int>(bytes.size()); done += sent) {
        sent = BIO_write(bio_.get(), bytes.data() + done, static_cast<int>(bytes.size()) - done);
    }
}

void Client::endSending() {
    ::shutdown(static_cast<int>(BIO_get_fd(bio_.get(), nullptr)), SHUT_WR);
}

bool Client::fill() {
    char bytes[4096];
    const int size = BIO_read(bio_.get(), bytes, sizeof bytes);
    buffer_.append(bytes, static_cast<std::size_t>(std::max(size, 0)));
    return size > 0;
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
    if (reply.fields.count("content-length") != 0) {
        const auto length = std::stoul(reply.fields.at("content-length"));
        fillTo(length);
        reply.body = take(length);
    } else if (reply.fields.count("transfer-encoding") == 0) {
        while (fill()) {
        }
        reply.body = take(buffer_.size());
    } else if (!readChunks(reply.body)) {
        reply.status = 0;
    }
    return reply;
}

bool Client::readChunks(std::string& body) {
    for (;;) {
        while (buffer_.find("\r\n") == std::string::npos) {
            if (!fill()) {
                return false;
            }
        }
        const auto length = std::stoul(take(buffer_.find("\r\n") + 2), nullptr, 16);
        if (!fillTo(length + 2)) {
            return false;
        }
        body += take(length);
        if (take(2) != "\r\n" || length == 0) {
            return length == 0;
        }
    }
}

bool Client::fillTo(std::size_t size) {
    while (buffer_.size() < size && fill()) {
    }
    return buffer_.size() >= size;
}

std::string Client::take(std::size_t size) {
    std::string taken = buffer_.substr(0, size);
    buffer_.erase(0, size);
    return taken;
}

bool Client::ended() {
    char byte = 0;
    return buffer_.empty() && BIO_read(bio_.get(), &byte, 1) == 0;
}

std::string Client::serverName() const {
    SSL* tls = nullptr;
    BIO_get_ssl(bio_.get(), &tls);
    const std::unique_ptr<X509, void (*)(X509*)> certificate(SSL_get1_peer_certificate(tls), X509_free);
    char name[64] = "";
    X509_NAME_get_text_by_NID(X509_get_subject_name(certificate.get()), NID_commonName, name, sizeof name);
    return name;
}

std::string post(const std::string& body, const std::string& fields, const std::string& version) {
    return "POST /cimom " + version + "\r\nHost: localhost\r\nContent-Type: application/xml\r\n" + fields +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string postCall(const std::string& method, const std::string& object, const std::string& call) {
    return post(R"(<CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLEREQ>)" + call +
                    "</SIMPLEREQ></MESSAGE></CIM>",
                "CIMOperation: MethodCall\r\nCIMMethod: " + method + "\r\nCIMObject: root/cimv2" + object + "\r\n");
}

} // namespace http_testing
