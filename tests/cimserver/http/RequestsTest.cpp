// Requests as clients send them, good and bad, one connection at a time.
#include "Fixture.hpp"

#include <sys/stat.h>

using namespace http_testing;
using namespace std::chrono_literals;

namespace {

using RequestsTest = ServerTest;

TEST_F(RequestsTest, AnswersWhatTheRulesAllow) {
    settings_.hostNames = {"pbx.example"};
    start();
    const std::string host = "HTTP/1.1\r\nHost: localhost\r\n";
    const std::string xml = "Content-Type: text/xml; charset=utf-8\r\n";
    const std::string man = "Man: http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=73\r\n";
    const std::string posted = "POST||write|a";
    // clang-format off
    const std::pair<std::string, std::string> cases[] = {
        {post("a"), "POST||write|a"},
        {"\r\n\n" + post("a"), "POST||write|a"},
        {"M-POST / " + host + xml + man + "content-length: 0000000001\r\n\r\na", "M-POST||write|a"},
        {"POST http://localhost:5988/cimom " + host + "CONTENT-TYPE: Application/XML\r\ncOnTeNt-LeNgTh: 1\r\n\r\na", posted},
        {"POST http://localhost " + host + xml + "Content-Length: 1\r\n\r\na", posted},
        {"POST /cimom " + host + xml + "Transfer-Encoding: chunked\r\n\r\n1\r\na\r\n3;x=y\r\nbcd\r\n0\r\nX: y\r\n\r\n", posted + "bcd"},
        {post("", "Accept: */*\r\n"), "POST||write|"},
        {post("a", "Accept: text/html;q=1, text/xml;q=0.1\r\n"), "POST||write|a"},
        {post("a", "Accept: application/xml;q=0, text/*\r\n"), "POST||write|a"},
        {"GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n", "ok\n"},
        {"GET /health HTTP/1.0\r\n\r\n", "ok\n"},
        {"GET /health HTTP/1.1\r\nHost: [::1]:5988\r\n\r\n", "ok\n"},
        {"GET /health HTTP/1.1\r\nhost: 10.1.2.3\r\n\r\n", "ok\n"},
        {"GET /health HTTP/1.1\r\nHost: PBX.example:80\r\n\r\n", "ok\n"},
        {post("a", "Content-Type: application/xml\r\nX: 1\r\nX: 2\r\n"), posted},
    };
    // clang-format on
    for (const auto& [bytes, body] : cases) {
        const auto reply = connect().ask(bytes);
        EXPECT_EQ(reply.status, 200U) << bytes;
        EXPECT_EQ(reply.body, body) << bytes;
        EXPECT_EQ(reply.fields.count("date"), 1U) << bytes;
    }
}

/// A refusal leaves the connection open when the next request can be found in it, else it is announced and done.
TEST_F(RequestsTest, RefusesAndServesOn) {
    start();
    const std::string host = " HTTP/1.1\r\nHost: localhost\r\n";
    const std::string head = "POST /cimom" + host + "Content-Type: text/xml\r\n";
    const std::string chunked = "Transfer-Encoding: chunked\r\n\r\n";
    const std::tuple<unsigned, bool, std::string> cases[] = {
        {400, true, "\x16\x03\x01\x02 is TLS\r\n\r\n"},
        {400, true, "POST /cimom\r\n\r\n"},
        {400, true, head + "Broken field\r\n\r\n"},
        {400, true, head + "Content-Length : 1\r\n\r\na"},
        {400, true, head + "Content-Length: 1\r\nContent-Length: 1\r\n\r\na"},
        {400, true, head + "Content-Length: 1, 1\r\n\r\na"},
        {400, true, head + "Content-Length: 1\r\n" + chunked + "1\r\na\r\n0\r\n\r\n"},
        {400, true, head + "Transfer-Encoding: chunked\r\nContent-Length: 1\r\n\r\n1\r\na\r\n0\r\n\r\n"},
        {400, true, head + "Content-Length: -1\r\n\r\n"},
        {400, true, head + "Content-Length: 99999999999999999999\r\n\r\n"},
        {400, true, head + chunked + "zz\r\n"},
        {400, true, head + chunked + "1;" + std::string(40000, 'x')},
        {400, true, "POST /cimom HTTP/1.0\r\nContent-Type: text/xml\r\n" + chunked + "0\r\n\r\n"},
        {400, true, "POST / HTTP/1.1\r\nContent-Type: text/xml\r\nContent-Length: 1\r\n\r\na"},
        {400, true, post("a", "Host: localhost\r\n")},
        {400, true, post("a", "Content-Type: text/xml\r\n")},
        {400, true, post("a", "CIMMethod: GetClass\r\ncimmethod: DeleteInstance\r\n")},
        {400, true, post("a", "73-CIMObject: a\r\n73-CIMObject: b\r\n")},
        {400, true, post("a", "Authorization: Basic YTph\r\nAuthorization: Basic YTpi\r\n")},
        {421, false, "POST / HTTP/1.1\r\nHost: localhost.evil.example\r\nContent-Length: 4\r\n\r\nbody"},
        {421, false, "GET /health HTTP/1.1\r\nHost: evil.example:5988\r\n\r\n"},
        {421, false, "GET http://evil.example/health HTTP/1.1\r\nHost: localhost\r\n\r\n"},
        {501, true, head + "Transfer-Encoding: gzip, chunked\r\n\r\n0\r\n\r\n"},
        {505, true, "POST /cimom HTTP/2.0\r\n\r\n"},
        {404, false, "POST /elsewhere HTTP/1.1\r\nHost: localhost\r\nContent-Length: 4\r\n\r\nbody"},
        {405, false, "GET /cimom HTTP/1.1\r\nHost: localhost\r\n\r\n"},
        {501, false, "BREW /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Length: 4\r\n\r\nbody"},
        {411, false, head + "\r\n"},
        {415, false, "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Length: 4\r\n\r\nbody"},
        {415, false, "POST /cimom" + host + "Content-Type: text/html\r\n" + chunked + "1\r\na\r\n0\r\n\r\n"},
        {415, false, post("a", "Content-Encoding: gzip\r\n")},
        {406, false, post("a", "Accept: text/html, application/json\r\n")},
        {406, false, post("a", "Accept: application/xml;q=0, text/xml;q=0.000, */*\r\n")},
        {417, false, post("a", "Expect: the-unexpected\r\n")},
        {500, false, post("throw")},
        {404, true, "POST /elsewhere" + host + "Connection: close\r\nContent-Length: 4\r\n\r\nbody"},
    };
    for (const auto& [status, closes, bytes] : cases) {
        auto client = connect();
        const auto reply = client.ask(bytes);
        EXPECT_EQ(reply.status, status) << bytes;
        EXPECT_EQ(reply.closes(), closes) << bytes;
        if (closes) {
            EXPECT_TRUE(client.ended()) << bytes;
            expectServes();
        } else {
            EXPECT_EQ(client.ask(post("next")).body, "POST||write|next") << bytes;
        }
    }
}

TEST_F(RequestsTest, AnswersPipelinedRequestsInOrderHoweverTheyAreCut) {
    settings_.dumpFile = "/dev/full";
    start();
    const auto bytes = post("1") + "BREW / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 1\r\n\r\nx\r\n" +
                       "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Type: text/xml\r\nTransfer-Encoding: "
                       "chunked\r\n\r\n2\r\nab\r\n0\r\n\r\n";
    for (const std::size_t step : {bytes.size(), std::size_t{1}}) {
        auto client = connect();
        for (std::size_t at = 0; at < bytes.size(); at += step) {
            client.send(bytes.substr(at, step));
        }
        EXPECT_EQ(client.read().body, "POST||write|1");
        EXPECT_EQ(client.read().status, 501U);
        EXPECT_EQ(client.read().body, "POST||write|ab");
    }
    EXPECT_EQ(timesLogged("the dump is incomplete: No space left on device"), 1U);
}

TEST_F(RequestsTest, KeepsAnHttp10ConnectionOnlyOnRequest) {
    start();
    auto client = connect();
    EXPECT_EQ(client.ask(post("a", "Connection: keep-alive\r\n", "HTTP/1.0")).fields["connection"], "keep-alive");
    EXPECT_TRUE(client.ask(post("b", "", "HTTP/1.0")).closes());
    EXPECT_TRUE(client.ended());
}

TEST_F(RequestsTest, AsksForTheBodyOnExpect) {
    start();
    auto client = connect();
    const auto whole = post("body", "Expect: 100-continue\r\n");
    EXPECT_EQ(client.ask(whole.substr(0, whole.size() - 4)).status, 100U);
    EXPECT_EQ(client.ask("body").body, "POST||write|body");
    // Refused before the body: whether it still comes is unknown, so the connection ends.
    const auto refused =
        client.ask("POST /no HTTP/1.1\r\nHost: localhost\r\nExpect: 100-continue\r\nContent-Length: 4\r\n\r\n");
    EXPECT_EQ(refused.status, 404U);
    EXPECT_TRUE(refused.closes());
    EXPECT_TRUE(client.ended());
}

TEST_F(RequestsTest, AnswersOptionsAndHead) {
    start();
    auto client = connect();
    auto reply = client.ask("OPTIONS * HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_EQ(reply.fields["allow"], "POST, M-POST, OPTIONS");
    EXPECT_EQ(reply.fields["x-offers"], "all");
    EXPECT_EQ(reply.fields.count("x-forged"), 0U);
    client.send("HEAD /health HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_EQ(client.readHead().fields["content-length"], "3");
    EXPECT_EQ(client.ask(post("a")).body, "POST||write|a");
}

TEST_F(RequestsTest, SlowHandlersAndSilentClientsDelayNobody) {
    settings_.workers = 2;
    start();
    auto slow = connect();
    slow.send(post("wait"));
    std::vector<Client> others;
    for (int i = 0; i < 200; ++i) {
        others.push_back(connect());
        others.push_back(connect());
        others.back().send("POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Le");
    }
    expectServes();
    release_.set_value();
    EXPECT_EQ(slow.read().status, 200U);
    others.back().send("ngth: 1\r\nContent-Type: text/xml\r\n\r\na");
    EXPECT_EQ(others.back().read().body, "POST||write|a");
}

TEST_F(RequestsTest, NoticesThatAClientHasLeftAndAnswersIfItStillReads) {
    start();
    auto client = connect();
    client.send(post("await the end"));
    client.endSending();
    EXPECT_EQ(client.read().body, "POST||write|await the end");
    EXPECT_TRUE(client.ended());
}

TEST_F(RequestsTest, TellsTroubleInHealth) {
    trouble_ = "degraded: something";
    start();
    EXPECT_EQ(connect().ask("GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n").body, "degraded: something\n");
}

TEST_F(RequestsTest, FinishesRequestsUnderWayWhenStopped) {
    start();
    auto busy = connect();
    auto idle = connect();
    busy.send(post("wait"));
    ASSERT_EQ(idle.ask(post("a")).status, 200U);
    ASSERT_TRUE(support::waitUntil([this] { return waiting_ > 0; }));
    auto stopped = std::async(std::launch::async, [this] { return server_->stop(10s); });
    EXPECT_TRUE(idle.ended());
    release_.set_value();
    const auto reply = busy.read();
    EXPECT_EQ(reply.body, "POST||write|wait");
    EXPECT_TRUE(reply.closes());
    { const Client gone(std::move(busy)); }
    EXPECT_TRUE(stopped.get());
    EXPECT_THROW(connect(), std::runtime_error);
}

TEST_F(RequestsTest, GivesUpOnRequestsThatDoNotFinish) {
    start();
    auto busy = connect();
    busy.send(post("wait"));
    ASSERT_TRUE(support::waitUntil([this] { return waiting_ > 0; }));
    EXPECT_FALSE(server_->stop(20ms));
    release_.set_value();
}

TEST_F(RequestsTest, DumpsWhatGoesOverTheWireWithoutSecrets) {
    settings_.dumpFile = path("dump");
    start();
    const std::string secret = "dG9wOnNlY3JldA==";
    connect().ask(post(secret, "Authorization: Basic " + secret + "\r\nCookie: " + secret +
                                   "\r\nProxy-Authorization: " + secret + "\r\nX-Auth-Token: " + secret +
                                   "\r\nReferer: http://ann:" + secret + "@h/\r\nX-Seen: yes\r\n"));
    const auto text = support::contentOf(path("dump"));
    struct stat dump {};
    EXPECT_EQ(::stat(path("dump").c_str(), &dump), 0);
    EXPECT_EQ(dump.st_mode & 0777U, 0600U);
    EXPECT_EQ(text.find(secret), std::string::npos) << text;
    EXPECT_EQ(logged().find(secret), std::string::npos);
    for (const char* part :
         {"X-Seen: yes\n", "http://***@h/\n", "Cookie: ***\n", "\nshown of POST\n", "answer 200", "\nshown of 200\n"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part << " in " << text;
    }
}

} // namespace
