// TLS: versions, reload, client certificates.
#include "cimserver/http/Tls.hpp"
#include "Fixture.hpp"

#include <openssl/ssl.h>

using namespace http_testing;

namespace {

class TlsTest : public ServerTest {
  protected:
    TlsTest() {
        issue("test CA", "ca", false);
        issue("localhost", "server");
        settings_.tls.certificateFile = path("server.pem");
        settings_.tls.keyFile = path("server.key");
        tls_.caFile = path("ca.pem");
    }

    /// Writes a key and its certificate, signed by the authority or by itself.
    void issue(const std::string& commonName, const std::string& name, bool byAuthority = true) const {
        const auto file = path(name);
        const auto result = support::run(
            {"sh", "-c",
             "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj '/CN=" + commonName +
                 "' -keyout " + file + ".key -out " + file + ".pem" +
                 (byAuthority ? " -CA " + path("ca.pem") + " -CAkey " + path("ca.key") : "")});
        ASSERT_EQ(result.exitCode, 0) << result.output;
    }
    TlsChoice withCertificate(const std::string& name) const {
        return {tls_.caFile, path(name + ".pem"), path(name + ".key")};
    }
    /// The body of the answer to a request; empty when there is none.
    std::string askOver(const TlsChoice& choice) const {
        try {
            return Client(port_, choice).ask(post("a")).body;
        } catch (const std::runtime_error&) {
            return "";
        }
    }

    TlsChoice tls_;
};

TEST_F(TlsTest, Offers12And13Only) {
    start(true);
    tls_.version = TLS1_1_VERSION;
    EXPECT_EQ(askOver(tls_), "");
    // What the machine's own OpenSSL refuses anyway tells nothing of the server's own bound.
    const auto context = cimserver::http::makeTlsContext(settings_.tls);
    EXPECT_EQ(SSL_CTX_get_min_proto_version(context->native_handle()), TLS1_2_VERSION);
    const STACK_OF(SSL_CIPHER)* const ciphers = SSL_CTX_get_ciphers(context->native_handle());
    for (int i = 0; i < sk_SSL_CIPHER_num(ciphers); ++i) {
        EXPECT_TRUE(SSL_CIPHER_is_aead(sk_SSL_CIPHER_value(ciphers, i)))
            << SSL_CIPHER_get_name(sk_SSL_CIPHER_value(ciphers, i));
    }
}

TEST_F(TlsTest, VersionAndCiphersAreTheAdministrators) {
    const std::string served = "POST||write|a";
    const auto usual = settings_.tls;
    const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
        {usual.minVersion, usual.ciphers, served, served},
        {"1.3", "ECDHE+AESGCM", "", served},
        {"1.2", "TLS_AES_128_GCM_SHA256", served, served},
        {"1.2", "ECDHE-RSA-AES128-GCM-SHA256", "", served}, // the key is none of RSA
    };
    for (const auto& [least, ciphers, over12, over13] : cases) {
        settings_.tls.minVersion = least;
        settings_.tls.ciphers = ciphers;
        start(true);
        tls_.version = TLS1_2_VERSION;
        EXPECT_EQ(askOver(tls_), over12) << ciphers;
        tls_.version = TLS1_3_VERSION;
        EXPECT_EQ(askOver(tls_), over13) << ciphers;
    }
}

TEST_F(TlsTest, KeepsServingBesidePlainBytesAndSilentHandshakes) {
    settings_.limits.firstByte = cimserver::http::Milliseconds(500);
    start(true);
    auto silent = connect();
    auto plain = connect();
    plain.send(post("not TLS"));
    EXPECT_EQ(plain.read().status, 0U);
    Client client(port_, tls_);
    EXPECT_EQ(client.ask(post("1")).body, "POST||write|1");
    EXPECT_EQ(client.ask("BAD\r\n\r\n").status, 400U);
    EXPECT_TRUE(client.ended()) << "a closed TLS connection says so";
    EXPECT_EQ(silent.read().status, 0U);
    EXPECT_EQ(askOver(tls_), "POST||write|a");
}

TEST_F(TlsTest, ReloadsCertificateAndKeyAndKeepsTheOldWhenTheNewIsBad) {
    start(true);
    Client before(port_, tls_);
    issue("renewed", "server");
    server_->reload();
    EXPECT_EQ(Client(port_, tls_).serverName(), "renewed");
    EXPECT_EQ(before.ask(post("a")).body, "POST||write|a") << "connections outlive the reload";
    write("server.pem", "not a certificate");
    server_->reload();
    EXPECT_EQ(Client(port_, tls_).serverName(), "renewed");
    EXPECT_EQ(timesLogged("kept the old TLS certificate and key: cannot use the TLS certificate " + path("server.pem")),
              1U);
}

TEST_F(TlsTest, ClientCertificatesComeOnTopOrNameTheUser) {
    write("users", "alice:*:write\n");
    settings_.login.userFile = path("users");
    settings_.tls.clientCaFile = path("ca.pem");
    issue("alice", "alice");
    issue("mallory", "mallory");
    issue("alice", "stranger", false);
    const std::string refused = "a user name and password are needed\n";
    using cimserver::http::ClientCertificates;
    for (const auto mode : {ClientCertificates::Optional, ClientCertificates::Required}) {
        settings_.tls.clientCertificates = mode;
        start(true);
        EXPECT_EQ(askOver(withCertificate("alice")), "POST|alice|write|a");
        EXPECT_EQ(askOver(withCertificate("mallory")), refused);
        EXPECT_EQ(askOver(withCertificate("stranger")), "");
        EXPECT_EQ(askOver(tls_), mode == ClientCertificates::Optional ? refused : "");
    }
}

} // namespace
