// Keys and certificates for one test run, written as PEM files.
#ifndef TESTS_CIMSERVER_HTTP_CERTIFICATES_HPP
#define TESTS_CIMSERVER_HTTP_CERTIFICATES_HPP

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

namespace http_testing {

class Certificate {
  public:
    /// Signed by `issuer`, or by itself.
    explicit Certificate(const std::string& commonName, const Certificate* issuer = nullptr);
    void writeCertificate(const std::string& file) const;
    void writeKey(const std::string& file) const;

  private:
    std::unique_ptr<EVP_PKEY, void (*)(EVP_PKEY*)> key_;
    std::unique_ptr<X509, void (*)(X509*)> certificate_;
};

} // namespace http_testing

#endif
