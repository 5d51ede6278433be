// TLS: versions, reload, client certificates.
#include "Certificates.hpp"
#include "Fixture.hpp"

using namespace http_testing;

namespace {

class TlsTest : public ServerTest {
  protected:
    TlsTest() : ca_("test CA") {
        ca_.writeCertificate(path("ca.pem"));
        issue("localhost", "server");
        settings_.tls.certificateFile = path("server.pem");
        settings_.tls.keyFile = path("server.key");
        tls_.caFile = path("ca.pem");
    }

    void issue(const std::string& commonName, const std::string& name) const {
        const Certificate certificate(commonName, &ca_);
        certificate.writeCertificate(path(name + ".pem"));
        certificate.writeKey(path(name + ".key"));
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

    Certificate ca_;
    TlsChoice tls_;
};

TEST_F(TlsTest, Offers12And13Only) {
    start(true);
    for (const auto& [version, body] : {std::pair(TLS1_1_VERSION, ""), std::pair(TLS1_2_VERSION, "POST||write|a"),
                                        std::pair(TLS1_3_VERSION, "POST||write|a")}) {
        tls_.version = version;
        EXPECT_EQ(askOver(tls_), body) << version;
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

TEST_F(TlsTest, NamesTheFileThatDoesNotDo) {
    const Certificate other("other", &ca_);
    other.writeKey(path("other.key"));
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"absent.pem", "server.key", "cannot use the TLS certificate " + path("absent.pem")},
        {"server.pem", "absent.key", "cannot use the TLS key " + path("absent.key")},
        {"server.pem", "other.key", path("other.key")},
    };
    for (const auto& [certificate, key, text] : cases) {
        settings_.tls.certificateFile = path(certificate);
        settings_.tls.keyFile = path(key);
        try {
            start(true);
            ADD_FAILURE() << text;
        } catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find(text), std::string::npos) << error.what();
        }
    }
}

TEST_F(TlsTest, ClientCertificatesComeOnTopOrNameTheUser) {
    write("users", "alice:*:write\n");
    settings_.login.userFile = path("users");
    settings_.tls.clientCaFile = path("ca.pem");
    issue("alice", "alice");
    issue("mallory", "mallory");
    const Certificate stranger("alice");
    stranger.writeCertificate(path("stranger.pem"));
    stranger.writeKey(path("stranger.key"));
    const std::string refused = "a user name and password are needed\n";
    struct Case {
        std::string name;
        std::string optional, required;
    };
    const Case cases[] = {{"alice", "POST|alice|write|a", "POST|alice|write|a"},
                          {"mallory", refused, refused},
                          {"stranger", "", ""},
                          {"", refused, ""}};
    for (const auto mode :
         {cimserver::http::ClientCertificates::Optional, cimserver::http::ClientCertificates::Required}) {
        settings_.tls.clientCertificates = mode;
        start(true);
        for (const auto& one : cases) {
            EXPECT_EQ(askOver(one.name.empty() ? tls_ : withCertificate(one.name)),
                      mode == cimserver::http::ClientCertificates::Optional ? one.optional : one.required)
                << one.name;
        }
    }
}

} // namespace
