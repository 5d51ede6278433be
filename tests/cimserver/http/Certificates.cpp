#include "Certificates.hpp"

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdio>

namespace http_testing {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File create(const std::string& file) {
    return {std::fopen(file.c_str(), "w"), std::fclose};
}

} // namespace

Certificate::Certificate(const std::string& commonName, const Certificate* issuer)
    : key_(EVP_EC_gen("P-256"), EVP_PKEY_free), certificate_(X509_new(), X509_free) {
    static long serial = 1;
    auto* x509 = certificate_.get();
    X509_set_version(x509, 2);
    ASN1_INTEGER_set(X509_get_serialNumber(x509), serial++);
    X509_gmtime_adj(X509_getm_notBefore(x509), -60);
    X509_gmtime_adj(X509_getm_notAfter(x509), 3600);
    X509_set_pubkey(x509, key_.get());
    X509_NAME_add_entry_by_txt(X509_get_subject_name(x509), "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>(commonName.c_str()), -1, -1, 0);
    const auto& by = issuer != nullptr ? *issuer : *this;
    X509_set_issuer_name(x509, X509_get_subject_name(by.certificate_.get()));
    if (issuer == nullptr) {
        std::unique_ptr<X509_EXTENSION, void (*)(X509_EXTENSION*)> ca(
            X509V3_EXT_conf_nid(nullptr, nullptr, NID_basic_constraints, "critical,CA:TRUE"), X509_EXTENSION_free);
        X509_add_ext(x509, ca.get(), -1);
    }
    X509_sign(x509, by.key_.get(), EVP_sha256());
}

void Certificate::writeCertificate(const std::string& file) const {
    PEM_write_X509(create(file).get(), certificate_.get());
}

void Certificate::writeKey(const std::string& file) const {
    PEM_write_PrivateKey(create(file).get(), key_.get(), nullptr, nullptr, 0, nullptr, nullptr);
}

} // namespace http_testing
