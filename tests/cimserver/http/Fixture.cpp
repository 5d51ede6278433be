#include "Fixture.hpp"

#include "cimserver/common/Log.hpp"

namespace http_testing {

using namespace cimserver::http;

ServerTest::ServerTest() {
    cimserver::log::configure({path("log"), cimserver::log::Level::Debug});
}

/// The answer tells method, user, role and body.
Response ServerTest::handle(const Exchange& exchange) {
    const Request& request = exchange.request();
    if (request.body == "await the end") {
        support::waitUntil([&exchange] { return exchange.abandoned(); });
    }
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
    if (request.body == "pieces" || request.body == "broken") {
        response.rest = [this, broken = request.body == "broken"] {
            if (broken && made_ == 2) {
                throw std::runtime_error("no third piece");
            }
            return made_ == 40 ? "" : std::string(1'000'000, static_cast<char>('a' + made_++ % 26));
        };
    }
    return response;
}

void ServerTest::start(bool tls) {
    settings_.listeners = {{"127.0.0.1", 0, tls}};
    Application application{[this](const std::shared_ptr<Exchange>& exchange) { exchange->answer(handle(*exchange)); }};
    application.options.fields.add("X-Offers", "all\r\nX-Forged: yes");
    application.mask = [](const Request& request, const Response& response) -> ShownBodies {
        return {"shown of " + request.method, "shown of " + std::to_string(response.status)};
    };
    application.notices = [this] { return trouble_; };
    server_ = std::make_unique<Server>(settings_, std::move(application));
    port_ = server_->start().at(0).port;
}

void ServerTest::expectServes() const {
    EXPECT_EQ(connect().ask(post("good")).body, "POST||write|good") << "the server no longer serves";
}

} // namespace http_testing
