#include "Fixture.hpp"

#include "cimserver/Log.hpp"

#include <fstream>
#include <sstream>

namespace http_testing {

using namespace cimserver::http;

ServerTest::ServerTest() {
    std::string folder = std::filesystem::temp_directory_path() / "cimserver-http-XXXXXX";
    folder_ = ::mkdtemp(folder.data());
    cimserver::log::configure({path("log"), cimserver::log::Level::Debug});
}

ServerTest::~ServerTest() {
    server_.reset();
    std::filesystem::remove_all(folder_);
}

/// The answer tells method, user, role and body.
Response ServerTest::handle(const Request& request) {
    if (request.body == "wait") {
        ++waiting_;
        released_.wait();
    }
    if (request.body == "throw") {
        throw std::runtime_error("thrown by the handler");
    }
    Response response;
    response.fields.add("Content-Type", "application/xml; charset=\"utf-8\"");
    response.body = request.method + "|" + request.identity.user + "|" +
                    (request.identity.mayWrite ? "write" : "read") + "|" + request.body;
    return response;
}

void ServerTest::start(bool tls) {
    settings_.listeners = {{"127.0.0.1", 0, tls}};
    server_ = std::make_unique<Server>(settings_, [this](const Request& request) { return handle(request); });
    port_ = server_->start().at(0).port;
}

void ServerTest::expectServes() const {
    EXPECT_EQ(connect().ask(post("good")).body, "POST||write|good") << "the server no longer serves";
}

void ServerTest::write(const std::string& name, const std::string& text) const {
    std::ofstream(path(name)) << text;
}

std::string ServerTest::logged() const {
    std::ostringstream text;
    text << std::ifstream(path("log")).rdbuf();
    return text.str();
}

std::size_t ServerTest::timesLogged(const std::string& text) const {
    const auto all = logged();
    std::size_t count = 0;
    for (auto at = all.find(text); at != std::string::npos; at = all.find(text, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace http_testing
