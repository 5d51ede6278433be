#include "cimserver/http/Tls.hpp"

#include "cimserver/common/Text.hpp"

#include <boost/asio/error.hpp>
#include <openssl/ssl.h>
#include <openssl/x509.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace cimserver::http {

namespace ssl = boost::asio::ssl;
using boost::system::error_code;

namespace {

constexpr const char* kNoCertificate = "cannot use the TLS certificate";
constexpr const char* kNoKey = "cannot use the TLS key";
constexpr const char* kNoClientCa = "cannot use the file of client certificate authorities";

void check(const error_code& error, const char* what, const std::string& file) {
    if (error) {
        throw std::runtime_error(std::string(what) + " " + file + ": " + error.message());
    }
}

/// OpenSSL's messages do not say why it cannot open a file.
void checkReadable(const char* what, const std::string& file) {
    if (::access(file.c_str(), R_OK) != 0) {
        throw std::runtime_error(std::string(what) + " " + file + ": " + std::strerror(errno));
    }
}

void setClientCertificates(ssl::context& context, const TlsSettings& settings) {
    error_code error;
    checkReadable(kNoClientCa, settings.clientCaFile);
    context.load_verify_file(settings.clientCaFile, error);
    check(error, kNoClientCa, settings.clientCaFile);
    // The names of the authorities help a client with several certificates to choose.
    SSL_CTX_set_client_CA_list(context.native_handle(), SSL_load_client_CA_file(settings.clientCaFile.c_str()));
    const bool required = settings.clientCertificates == ClientCertificates::Required;
    context.set_verify_mode(ssl::verify_peer | (required ? ssl::verify_fail_if_no_peer_cert : 0), error);
    check(error, "cannot ask for client certificates by", settings.clientCaFile);
}

/// Throws as checkCiphers. OpenSSL passes over a name in a list that it does not know, so each is tried alone.
void setCiphers(SSL_CTX* context, const std::string& ciphers) {
    std::string lists[2]; // of TLS 1.2 and 1.3
    for (const std::string_view part : split(ciphers, ':')) {
        const bool is13 = part.substr(0, 4) == "TLS_";
        const std::string name(part);
        const auto set = is13 ? SSL_CTX_set_ciphersuites : SSL_CTX_set_cipher_list;
        const bool isName = std::string_view("!-+@").find(name[0]) == std::string_view::npos;
        const std::string list = lists[is13].empty() ? name : lists[is13] + ":" + name;
        if ((isName && set(context, name.c_str()) != 1) || set(context, list.c_str()) != 1) {
            throw std::invalid_argument("--tls-ciphers: '" + name + "' is no cipher or leaves none");
        }
        lists[is13] = list;
    }
}

} // namespace

void checkCiphers(const std::string& ciphers) {
    setCiphers(ssl::context(ssl::context::tls_server).native_handle(), ciphers);
}

std::shared_ptr<ssl::context> makeTlsContext(const TlsSettings& settings) {
    auto context = std::make_shared<ssl::context>(ssl::context::tls_server);
    auto* native = context->native_handle();
    SSL_CTX_set_min_proto_version(native, settings.minVersion == "1.3" ? TLS1_3_VERSION : TLS1_2_VERSION);
    SSL_CTX_set_options(native, SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_COMPRESSION | SSL_OP_CIPHER_SERVER_PREFERENCE);
    setCiphers(native, settings.ciphers);
    // Resumed sessions would skip the check of the client certificate against a reloaded file.
    SSL_CTX_set_session_cache_mode(native, SSL_SESS_CACHE_OFF);
    SSL_CTX_set_num_tickets(native, 0);
    SSL_CTX_set_options(native, SSL_OP_NO_TICKET);
    // An encrypted key fails instead of asking for a password on a terminal that nobody sees.
    context->set_password_callback([](std::size_t, ssl::context::password_purpose) { return std::string(); });
    error_code error;
    checkReadable(kNoCertificate, settings.certificateFile);
    context->use_certificate_chain_file(settings.certificateFile, error);
    check(error, kNoCertificate, settings.certificateFile);
    checkReadable(kNoKey, settings.keyFile);
    context->use_private_key_file(settings.keyFile, ssl::context::pem, error);
    check(error, kNoKey, settings.keyFile);
    if (SSL_CTX_check_private_key(native) != 1) {
        throw std::runtime_error("the TLS key " + settings.keyFile + " does not belong to the certificate " +
                                 settings.certificateFile);
    }
    if (settings.clientCertificates != ClientCertificates::None) {
        setClientCertificates(*context, settings);
    }
    return context;
}

std::string verifiedCommonName(SSL* connection) {
    const std::unique_ptr<X509, void (*)(X509*)> certificate(SSL_get1_peer_certificate(connection), X509_free);
    if (!certificate || SSL_get_verify_result(connection) != X509_V_OK) {
        return {};
    }
    char name[256];
    const int length =
        X509_NAME_get_text_by_NID(X509_get_subject_name(certificate.get()), NID_commonName, name, sizeof name);
    const std::string result(name, length > 0 ? static_cast<std::size_t>(length) : 0);
    return result.find('\0') == std::string::npos ? result : std::string();
}

} // namespace cimserver::http
