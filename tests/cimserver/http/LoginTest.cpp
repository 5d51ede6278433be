// Logging in over the wire: each case is answered as the rules say, logged once, and no password is logged.
#include "Fixture.hpp"

#include "cimserver/http/UserFile.hpp"

#include <openssl/evp.h>

using namespace http_testing;
using namespace std::chrono_literals;

namespace {

class LoginTest : public ServerTest {
  protected:
    LoginTest() {
        static const auto hash = cimserver::http::hashPassword("right: password");
        write("users", "# people\nreader:" + hash + "\n\nwriter:" + hash + ":write\n");
        settings_.login.userFile = path("users");
        settings_.login.realm = "telephone system";
    }

    static std::string basic(const std::string& text) {
        std::string encoded((text.size() + 2) / 3 * 4 + 1, '\0');
        encoded.resize(static_cast<std::size_t>(EVP_EncodeBlock(reinterpret_cast<unsigned char*>(encoded.data()),
                                                                reinterpret_cast<const unsigned char*>(text.data()),
                                                                static_cast<int>(text.size()))));
        return "Authorization: Basic " + encoded + "\r\n";
    }
};

TEST_F(LoginTest, EachWayToLogIn) {
    start();
    const std::string wrong = "unknown user or wrong password for '";
    const std::tuple<std::string, std::string, std::string> cases[] = {
        // without a body it is a 401
        {basic("reader:right: password"), "POST|reader|read|a", ""},
        {"authorization:   bAsIc" + basic("writer:right: password").substr(20), "POST|writer|write|a", ""},
        {basic("reader:wrong"), "", wrong + "reader'"},
        {basic("reader:"), "", wrong + "reader'"},
        {basic(std::string("reader:right: password\0x", 24)), "", wrong + "reader'"},
        {basic("nobody:right: password"), "", wrong + "nobody'"},
        {basic("forged\nentry:x"), "", wrong + "forged\\nentry'"},
        {"", "", "no Authorization header"},
        {"Authorization: Digest username=\"reader\"\r\n", "", "the authentication scheme is not Basic"},
        {"Authorization: Basic\r\n", "", "malformed Authorization header"},
        {"Authorization: Basic !!!=\r\n", "", "malformed Authorization header"},
        {basic("no colon"), "", "malformed Authorization header"},
        {basic(":password"), "", "malformed Authorization header"},
    };
    settings_.login.freeFailures = 100;
    auto client = connect(); // one connection for all: a refused login does not end it
    for (const auto& [field, body, log] : cases) {
        const auto before = log.empty() ? 0 : timesLogged(log);
        auto reply = client.ask(post("a", field));
        EXPECT_EQ(reply.status, body.empty() ? 401U : 200U) << field;
        if (body.empty()) {
            EXPECT_EQ(reply.fields["www-authenticate"], "Basic realm=\"telephone system\"");
            EXPECT_EQ(timesLogged(log), before + 1) << field;
        } else {
            EXPECT_EQ(reply.body, body);
        }
    }
    EXPECT_NE(server_->statistics().find(" failed-logins=11 "), std::string::npos) << server_->statistics();
    EXPECT_EQ(logged().find("right: password"), std::string::npos);
    EXPECT_EQ(timesLogged("Basic "), 0U);
}

TEST_F(LoginTest, IsDecidedBeforeTheBodyIsRead) {
    start();
    auto client = connect();
    const auto whole = post("body");
    EXPECT_EQ(client.ask(whole.substr(0, whole.size() - 4)).status, 401U);
    EXPECT_EQ(client.ask("body" + post("a", basic("reader:right: password"))).body, "POST|reader|read|a");
    EXPECT_TRUE(connect().ask("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 999999\r\n\r\n").closes());
    EXPECT_EQ(connect().ask("GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n").status, 200U) << "health needs no login";
    EXPECT_EQ(connect().ask("OPTIONS / HTTP/1.1\r\nHost: localhost\r\n\r\n").status, 401U);
}

TEST_F(LoginTest, FailuresAreSlowedDownWithoutDelayingOthers) {
    settings_.login.freeFailures = 1;
    settings_.login.delay = 600'000ms;
    settings_.login.maxDelay = 600'000ms;
    start();
    ASSERT_EQ(connect().ask(post("a", basic("reader:right: password"))).status, 200U);
    ASSERT_EQ(connect().ask(post("a", basic("writer:wrong"))).status, 401U);
    auto guesser = connect();
    guesser.send(post("a", basic("writer:another")));
    // The same peer, with credentials that were right a moment ago.
    EXPECT_EQ(connect().ask(post("b", basic("reader:right: password"))).body, "POST|reader|read|b");
    EXPECT_EQ(connect().ask("GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n").status, 200U);
    EXPECT_EQ(timesLogged("wrong password"), 1U) << "the second guess was checked without delay";
    EXPECT_TRUE(server_->stop(10s)) << "a guess that waits does not delay the stop";
}

TEST_F(LoginTest, ReloadTakesNewUsersAndKeepsTheOldOnesWhenTheFileIsBad) {
    start();
    const auto login = basic("reader:right: password");
    ASSERT_EQ(connect().ask(post("a", login)).status, 200U);
    write("users", "reader:nonsense\n");
    server_->reload();
    EXPECT_EQ(connect().ask(post("a", login)).status, 200U);
    EXPECT_EQ(timesLogged("kept the old users: " + path("users") + ":1: the hash of user 'reader'"), 1U);
    write("users", "");
    server_->reload();
    EXPECT_EQ(connect().ask(post("a", login)).status, 401U) << "a removed user must not live on in the cache";
}

} // namespace
