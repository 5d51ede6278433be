// The console's files over the wire: what is served to whom, and that nothing else of the machine is.
#include "Fixture.hpp"

#include "cimserver/http/UserFile.hpp"

#include <filesystem>

using namespace http_testing;

namespace {

class StaticFilesTest : public ServerTest {
  protected:
    StaticFilesTest() {
        std::filesystem::create_directories(path("console/below"));
        write("console/index.html", "<title>page</title>");
        write("console/a.mjs", "code");
        write("console/private.txt", "not of a kind that is served");
        write("console/below/b.mjs", "not in the folder itself");
        settings_.consoleFolder = path("console");
    }
    static std::string get(const std::string& target, const std::string& fields = "", const char* method = "GET") {
        return method + (" " + target) + " HTTP/1.1\r\nHost: localhost\r\n" + fields + "\r\n";
    }
};

TEST_F(StaticFilesTest, NeedNoLoginAndAreAllThatNeedsNone) {
    write("users", "writer:" + cimserver::http::hashPassword("word") + ":write\n");
    settings_.login.userFile = path("users");
    start();
    const std::tuple<std::string, unsigned, std::string> cases[] = {
        {get("/console/"), 200, "<title>page</title>"},
        {get("/console/?lang=de"), 200, "<title>page</title>"},
        {get("/console/a.mjs"), 200, "code"},
        {get("/console"), 308, ""},
        {get("/console/index.html"), 404, ""},
        {get("/console/private.txt"), 404, ""},
        {get("/console/below/"), 404, ""},
        {get("/console/below/b.mjs"), 404, ""},
        {get("/console/../users"), 404, ""},
        {get("/console/%2e%2e/users"), 404, ""},
        {get("/console//a.mjs"), 404, ""},
        {get("/console/a.mjs", "", "POST"), 405, ""},
        {get("/consoles"), 401, ""},
        {get("/../console/a.mjs"), 401, ""},
        {post("a"), 401, ""},
    };
    auto client = connect(); // one connection: each answer leaves it in order
    for (const auto& [request, status, body] : cases) {
        const auto reply = client.ask(request);
        EXPECT_EQ(reply.status, status) << request;
        EXPECT_TRUE(body.empty() || reply.body == body) << request << reply.body;
        EXPECT_EQ(reply.fields.count("www-authenticate"), status == 401 ? 1U : 0U) << request;
    }
}

TEST_F(StaticFilesTest, TellBrowsersWhatToKeepAndWhatToRefuse) {
    start();
    auto client = connect();
    auto page = client.ask(get("/console/"));
    EXPECT_EQ(page.fields["content-type"], "text/html; charset=utf-8");
    EXPECT_EQ(page.fields["x-content-type-options"], "nosniff");
    EXPECT_EQ(page.fields["cache-control"], "no-cache");
    const auto policy = page.fields["content-security-policy"];
    EXPECT_EQ(policy.find("default-src 'none'; script-src 'self'; style-src 'self';"), 0U) << policy;
    EXPECT_EQ(policy.find("unsafe"), std::string::npos) << policy;
    EXPECT_NE(policy.find("frame-ancestors 'none'"), std::string::npos) << policy;
    client.send(get("/console/", "If-None-Match: \"other\", W/" + page.fields["etag"] + "\r\n"));
    const auto known = client.readHead();
    EXPECT_EQ(known.status, 304U);
    EXPECT_EQ(known.fields.at("content-length"), page.fields["content-length"]);
    EXPECT_EQ(client.ask(get("/console/a.mjs", "If-None-Match: " + page.fields["etag"] + "\r\n")).body, "code");
    EXPECT_EQ(client.ask("GET /console/ HTTP/1.1\r\nHost: evil.example\r\n\r\n").status, 421U);
}

TEST_F(StaticFilesTest, AreCheckedAtStartAndAbsentWithoutTheOption) {
    write("console/a.mjs", std::string(256 * 1024 + 1, ' '));
    EXPECT_THROW(start(), std::runtime_error);
    std::filesystem::create_directories(path("many"));
    for (int i = 0; i <= 32; ++i) {
        write("many/" + std::to_string(i) + ".mjs", "");
    }
    for (const char* bad : {"many", "elsewhere"}) {
        settings_.consoleFolder = path(bad);
        EXPECT_THROW(start(), std::runtime_error) << bad;
    }
    settings_.consoleFolder.clear();
    start();
    EXPECT_EQ(connect().ask(get("/console/")).status, 404U);
}

} // namespace
