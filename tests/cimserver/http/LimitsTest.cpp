// Each limit is met, answered as it should be, and the server serves on.
#include "Fixture.hpp"

#include <netinet/in.h>
#include <sys/resource.h>

#include <regex>

using namespace http_testing;
using namespace std::chrono_literals;

namespace {

class LimitsTest : public ServerTest {
  protected:
    LimitsTest() {
        settings_.limits.headBytes = 1000;
        settings_.limits.bodyBytes = 100'000;
    }
};

TEST_F(LimitsTest, Sizes) {
    start();
    const std::string head = "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: text/xml\r\n";
    const std::string megabyte(1'000'000, 'x');
    std::string chunks;
    for (int i = 0; i < 101; ++i) {
        chunks += "3E8\r\n" + std::string(1000, 'x') + "\r\n";
    }
    const std::tuple<unsigned, std::string, const char*> cases[] = {
        {431, head + "X: " + megabyte, "a field that does not end"},
        {431, head + "X: " + std::string(1000, 'x') + "\r\n\r\n", "a head just too large"},
        {414, "POST /" + megabyte, "a request line that does not end"},
        {413, head + "Content-Length: 100001\r\n\r\n", "announced, and not a byte of it sent"},
        {413, head + "Content-Length: 1000000\r\n\r\n" + megabyte, "announced and sent"},
        {413, head + "Transfer-Encoding: chunked\r\n\r\nF4240\r\n" + megabyte, "one large chunk"},
        {413, head + "Transfer-Encoding: chunked\r\n\r\n" + chunks, "many small chunks"},
    };
    for (const auto& [status, bytes, what] : cases) {
        auto client = connect();
        const auto reply = client.ask(bytes);
        EXPECT_EQ(reply.status, status) << what;
        EXPECT_TRUE(reply.closes()) << what;
        expectServes();
    }
    EXPECT_EQ(connect().ask(post(std::string(100'000, 'x'))).body.size(), 100'012U) << "the limit itself is allowed";
}

/// What is sent, and the status of the answer when time is over; 0: closed without one.
TEST_F(LimitsTest, TimesEndTheConnection) {
    using cimserver::http::Limits;
    const std::string head = "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Type: text/xml\r\n";
    const std::tuple<cimserver::http::Milliseconds Limits::*, std::string, unsigned> cases[] = {
        {&Limits::firstByte, "", 0},
        {&Limits::firstByte, "\r\n\r\n", 0},
        {&Limits::idle, post("a"), 0},
        {&Limits::head, "POST /cimom HT", 408},
        {&Limits::body, head + "Content-Length: 9\r\n\r\nhalf", 408},
        {&Limits::body, head + "Transfer-Encoding: chunked\r\n\r\n5\r\n", 408}};
    const auto unlimited = settings_.limits;
    for (const auto& [limit, bytes, status] : cases) {
        settings_.limits = unlimited;
        settings_.limits.*limit = 30ms;
        start();
        auto client = connect();
        client.send(bytes);
        if (limit == &Limits::idle) {
            EXPECT_EQ(client.read().status, 200U);
        }
        EXPECT_EQ(client.read().status, status) << bytes;
        EXPECT_TRUE(client.ended()) << bytes;
        EXPECT_EQ(server_->statistics().find(" timeouts=1 ") != std::string::npos, status == 408) << bytes;
        expectServes();
    }
}

TEST_F(LimitsTest, AClientThatDoesNotReadItsAnswerIsLeft) {
    settings_.limits.write = 50ms;
    settings_.limits.bodyBytes = 64'000'000;
    settings_.limits.memory = 1'000'000'000;
    start();
    auto client = connect();
    client.send(post(std::string(32'000'000, 'x')));
    EXPECT_TRUE(support::waitUntil([&] { return timesLogged("took too long over the answer") == 1; }, 10s));
    expectServes();
}

TEST_F(LimitsTest, ConnectionsOverTheCapAreToldSo) {
    settings_.limits.connections = 2;
    settings_.limits.loopbackConnections = 3;
    start();
    auto first = connect();
    ASSERT_EQ(first.ask(post("a")).status, 200U);
    auto second = std::make_unique<Client>(connect());
    ASSERT_EQ(second->ask(post("a")).status, 200U);
    auto third = connect();
    const auto reply = third.ask(post("a"));
    EXPECT_EQ(reply.status, 503U);
    EXPECT_TRUE(reply.closes());
    EXPECT_TRUE(third.ended());
    EXPECT_EQ(first.ask(post("b")).body, "POST||write|b");
    second.reset();
    { const Client gone(std::move(third)); }
    EXPECT_TRUE(support::waitUntil([&] { return connect().ask(post("a")).status == 200; }))
        << "a place that became free is not given away";
    EXPECT_TRUE(std::regex_search(server_->statistics(), std::regex("connections-refused=[1-9]")));
}

TEST_F(LimitsTest, OneAddressHasItsShareAndUnusedConnectionsGiveWay) {
    settings_.limits.connections = 3;
    settings_.limits.loopbackConnections = 2;
    start();
    const int other = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0); // unused too, but of another address
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK + 1)}, {}};
    ASSERT_EQ(::bind(other, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    address = {AF_INET, htons(port_), {htonl(INADDR_LOOPBACK)}, {}};
    ASSERT_EQ(::connect(other, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    auto unused = connect();
    EXPECT_EQ(unused.ask("GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n").status, 200U);
    auto first = connect();
    EXPECT_EQ(first.ask(post("a")).status, 200U);
    auto second = connect();
    EXPECT_EQ(second.ask(post("a")).status, 200U) << "the unused one makes room";
    EXPECT_TRUE(unused.ended());
    EXPECT_EQ(connect().ask(post("a")).status, 503U);
    EXPECT_EQ(first.ask(post("b")).status, 200U);
    EXPECT_EQ(timesLogged("refused 127.0.0.1: 2 of 3 connections"), 1U);
    ::close(other);
}

TEST_F(LimitsTest, EachConnectionCanHaveADescriptor) {
    rlimit before{};
    ASSERT_EQ(0, getrlimit(RLIMIT_NOFILE, &before));
    const auto limitWith = [&](rlim_t softLimit, std::size_t connections) {
        const rlimit low{softLimit, before.rlim_max};
        EXPECT_EQ(0, setrlimit(RLIMIT_NOFILE, &low));
        settings_.limits.connections = connections;
        start();
        rlimit now{};
        EXPECT_EQ(0, getrlimit(RLIMIT_NOFILE, &now));
        return now.rlim_cur;
    };
    EXPECT_GT(limitWith(100, 200), 200U);
    EXPECT_EQ(limitWith(500, 10), 500U) << "it was enough";
    EXPECT_EQ(timesLogged("the limit of open files"), 0U);
    if (before.rlim_max != RLIM_INFINITY) {
        EXPECT_EQ(limitWith(100, before.rlim_max), before.rlim_max);
        EXPECT_EQ(timesLogged("the limit of open files"), 1U);
    }
    setrlimit(RLIMIT_NOFILE, &before);
}

TEST_F(LimitsTest, HealthDoesNotKeepAConnection) {
    settings_.limits.firstByte = 30ms;
    settings_.limits.idle = 30ms;
    start();
    auto client = connect();
    bool open = true;
    for (int i = 0; i < 1000 && open; ++i) {
        open = client.ask("GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n").status == 200;
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_FALSE(open);
}

TEST_F(LimitsTest, BodiesAreBoundedTogetherAsTheyArrive) {
    settings_.limits.memory = 120'000;
    start();
    const auto half = post(std::string(60'000, 'x'));
    std::vector<Client> halves;
    for (int i = 0; i < 2; ++i) {
        halves.push_back(connect());
        halves.back().send(half.substr(0, 30'000));
    }
    for (int i = 0; i < 3; ++i) {
        expectServes(); // and the halves arrive meanwhile
    }
    EXPECT_EQ(connect().ask(half.substr(0, 59'000)).fields["retry-after"], "1");
    expectServes();
    halves.clear();
    EXPECT_TRUE(support::waitUntil([&] { return connect().ask(post(std::string(20'000, 'x'))).status == 200; }))
        << "what was held is free again";
}

/// Forty megabytes, with room for three.
TEST_F(LimitsTest, LongAnswersAreMadeAsTheyAreTaken) {
    settings_.limits.memory = 3'000'000;
    start();
    auto slow = connect();
    slow.send(post("pieces"));
    EXPECT_TRUE(support::waitUntil([&] { return made_ > 0; }));
    for (int i = 0; i < 3; ++i) {
        expectServes();
    }
    EXPECT_LT(made_, 40U) << "what is not taken is not made";
    const auto reply = slow.read();
    EXPECT_EQ(reply.body.size(), 40'000'018U);
    EXPECT_EQ(reply.body.back(), 'a' + 39 % 26);
    EXPECT_EQ(slow.ask(post("good")).status, 200U) << "the connection goes on";

    made_ = 0;
    auto old = connect();
    const auto untilClosed = old.ask(post("pieces", "Connection: keep-alive\r\n", "HTTP/1.0"));
    EXPECT_EQ(untilClosed.fields.count("transfer-encoding"), 0U);
    EXPECT_EQ(untilClosed.body.size(), 40'000'018U);
    EXPECT_TRUE(untilClosed.closes());

    made_ = 0;
    EXPECT_EQ(connect().ask(post("broken")).status, 0U) << "cut short";
    EXPECT_EQ(timesLogged("an answer ended early: no third piece"), 1U);

    made_ = 0;
    settings_.dumpFile = path("dump");
    start();
    EXPECT_EQ(connect().ask(post("pieces")).status, 503U) << "a dump shows whole answers, if there is room";
    made_ = 38;
    EXPECT_EQ(connect().ask(post("pieces")).fields["content-length"], "2000018");
}

TEST_F(LimitsTest, AnswersCountUntilTheyAreTaken) {
    settings_.limits.bodyBytes = 64'000'000;
    settings_.limits.memory = 100'000'000;
    start();
    const auto large = post(std::string(16'000'000, 'x'));
    auto slow = connect();
    slow.send(large);
    auto later = connect();
    ASSERT_TRUE(support::waitUntil([&] { return timesLogged("16000012 bytes") == 1; }, 10s));
    EXPECT_EQ(later.ask(post(std::string(30'000'000, 'x'))).status, 503U);
    expectServes();
    EXPECT_EQ(slow.read().body.size(), 16'000'012U);
    EXPECT_EQ(slow.ask(large).status, 200U);
}

} // namespace
