#include "cimserver/http/Connection.hpp"

#include "cimserver/common/Log.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/http/Message.hpp"
#include "cimserver/http/Policy.hpp"
#include "cimserver/http/Settings.hpp"

#include <boost/asio/post.hpp>

#include <algorithm>

namespace cimserver::http {

namespace asio = boost::asio;
using boost::system::error_code;

namespace {

/// A request whose client only ended sending is served if a worker takes it so soon.
constexpr Milliseconds kWaitOfAbandoned{1000};

} // namespace

Services::Services(const Settings& from, Application to)
    : settings(from), application(std::move(to)), access(from.login), console(from.consoleFolder),
      memory(from.limits.memory), workers(from.workers) {
    if (!from.dumpFile.empty()) {
        dump = std::make_unique<Dump>(from.dumpFile);
    }
}

Connection::Connection(Services& services, std::unique_ptr<Stream> stream, const Sender& sender, bool overCapacity)
    : services_(services), stream_(std::move(stream)), memory_(services.memory, sender.peer),
      reader_(services.settings.limits), timer_(services.io), number_(sender.number), address_(sender.address),
      peer_(address_ + ":" + sender.port), overCapacity_(overCapacity),
      admittedBy_(Clock::now() + services.settings.limits.firstByte + services.settings.limits.idle) {}

void Connection::start() {
    within(services_.settings.limits.firstByte, [](Connection& self) { self.timeOut("handshake"); });
    stream_->handshake([self = shared_from_this()](const error_code& error, std::size_t) {
        if (self->phase_ == Phase::Closed) {
            return; // meanwhile; the handshake may have succeeded all the same
        }
        if (error) {
            log::write(log::Level::Info, "http", self->peer_ + ": TLS handshake failed: " + error.message());
            self->close();
        } else {
            self->await(self->services_.settings.limits.firstByte);
        }
    });
}

void Connection::stop() {
    if (phase_ == Phase::Idle || phase_ == Phase::AwaitingLogin) {
        close();
    }
}

void Connection::close() {
    if (phase_ == Phase::Closed) {
        return;
    }
    phase_ = Phase::Closed;
    cancelTimer();
    stream_->close();
    services_.onClosed(*this);
}

void Connection::await(Milliseconds limit) {
    if (services_.stopping) {
        return close();
    }
    phase_ = Phase::Idle;
    reader_.reset();
    reader_.request().peer = peer_;
    reader_.request().memory = &memory_;
    memory_.release();
    began_ = Clock::now();
    if (reader_.hasInput()) { // the client sent the next request without waiting
        return onInput();
    }
    if (!admitted_) { // health requests do not keep it open
        const auto left = std::chrono::floor<Milliseconds>(admittedBy_ - Clock::now());
        limit = std::clamp(left, Milliseconds(0), limit);
    }
    within(limit, [](Connection& self) { self.close(); });
    read(&Connection::onInput);
}

void Connection::onInput() {
    if (!reader_.hasInput()) {
        return read(&Connection::onInput); // empty lines before a request: the time limit keeps running
    }
    began_ = Clock::now();
    within(services_.settings.limits.head, [](Connection& self) { self.timeOut("head"); });
    readHead();
}

void Connection::readHead() {
    switch (reader_.readHead()) {
    case RequestReader::Progress::NeedMore:
        return read(&Connection::readHead);
    case RequestReader::Progress::Failed:
        return fail(reader_.error().status, reader_.error().text);
    case RequestReader::Progress::Done:
        return onHead();
    }
}

void Connection::onHead() {
    cancelTimer();
    began_ = Clock::now();
    phase_ = Phase::Busy;
    bodyUnread_ = reader_.framing().hasBody();
    if (overCapacity_) {
        auto response = textResponse(503, "too many connections");
        response.fields.add("Retry-After", "1");
        return respond(response, true);
    }
    if (!services_.access.enabled() && !isForThisHost(reader_.request(), services_.settings.hostNames)) {
        services_.refusals.write(address_ + ": the Host of the request is unknown", Clock::now());
        return refuse(textResponse(421, "without users, only addresses and known names are served (--host-name)"));
    }
    if (isHealthRequest(reader_.request())) {
        const auto& problems = services_.application.problems;
        const auto& notices = services_.application.notices;
        return refuse(healthResponse(problems ? problems() : "", notices ? notices() : ""));
    }
    if (isReadyRequest(reader_.request()) && services_.application.ready) {
        return answerReadiness();
    }
    if (const auto response = services_.console.answer(reader_.request())) {
        return refuse(*response);
    }
    login();
}

void Connection::answerReadiness() {
    services_.application.ready([self = shared_from_this()](const std::string& problems) {
        asio::post(self->services_.io, [self, problems] { self->refuse(healthResponse(problems, "")); });
    });
}

void Connection::login() {
    auto decision =
        services_.access.decide(reader_.authorization(), address_, stream_->certificateUser(), Clock::now());
    if (!decision.check) {
        return onLogin(decision.identity);
    }
    if (decision.turn.wait <= Clock::duration::zero()) {
        return check(std::move(decision));
    }
    phase_ = Phase::AwaitingLogin;
    const auto wait = std::chrono::ceil<Milliseconds>(decision.turn.wait);
    within(wait, [decision = std::move(decision)](Connection& self) { self.check(decision); });
}

/// Hashes on the queue's thread and continues on the I/O thread.
void Connection::check(Access::Decision decision) {
    phase_ = Phase::Busy;
    const unsigned rank = decision.turn.rank;
    auto work = [self = shared_from_this(), decision = std::move(decision)] {
        auto identity = self->services_.access.verify(*decision.check);
        asio::post(self->services_.io, [self, decision, identity = std::move(identity)] {
            self->services_.access.conclude(decision, identity, self->address_, Clock::now());
            self->onLogin(identity);
        });
    };
    services_.checks.add(rank, std::move(work));
}

void Connection::onLogin(const std::optional<Identity>& identity) {
    if (phase_ == Phase::Closed) {
        return;
    }
    if (identity) {
        admitted_ = true;
        reader_.request().identity = *identity;
        return answerOrReadBody();
    }
    services_.counters.loginFailed();
    auto response = textResponse(401, "a user name and password are needed");
    response.fields.add("WWW-Authenticate", "Basic realm=\"" + services_.settings.login.realm + "\"");
    refuse(response);
}

void Connection::answerOrReadBody() {
    const auto& request = reader_.request();
    if (asksForOptions(request)) {
        auto response = services_.application.options;
        response.fields.add("Allow", kAllowed);
        return refuse(response);
    }
    if (const auto response = answerFromHead(request, reader_.framing(), services_.settings.limits)) {
        return refuse(*response);
    }
    beginBody();
}

/// The time for the body begins after the interim answer: output_ must not change before that is written.
void Connection::beginBody() {
    const auto begin = [](Connection& self) {
        self.within(self.services_.settings.limits.body, [](Connection& late) { late.timeOut("body"); });
        self.readBody();
    };
    if (!reader_.framing().expectsContinue || reader_.framing().contentLength.value_or(1) == 0) {
        return begin(*this);
    }
    output_ = "HTTP/1.1 100 Continue\r\n\r\n";
    writeAnswer(begin);
}

void Connection::readBody() {
    switch (reader_.readBody(false)) {
    case RequestReader::Progress::NeedMore:
        return read(&Connection::readBody);
    case RequestReader::Progress::Failed:
        return fail(reader_.error().status, reader_.error().text);
    case RequestReader::Progress::Done:
        bodyUnread_ = false;
        cancelTimer();
        return handle();
    }
}

/// Reads on meanwhile, to notice when the client leaves.
void Connection::handle() {
    read(nullptr);
    post([self = shared_from_this(), posted = Clock::now()] {
        if (self->abandoned_ && Clock::now() - posted > kWaitOfAbandoned) {
            return self->answer(textResponse(503, "the client has left"));
        }
        std::string why;
        try {
            return self->services_.application.handle(self);
        } catch (const std::exception& error) {
            why = std::string(": ") + error.what();
        } catch (...) { // whatever it is, the client gets an answer
        }
        log::write(log::Level::Error, "http", "the handler failed" + why);
        self->answer(textResponse(500, "internal error"));
    });
}

/// A dump shows whole answers.
void Connection::answer(Response response) {
    if (services_.dump && response.rest) {
        const auto rest = std::exchange(response.rest, nullptr);
        for (auto piece = rest(); !piece.empty() && memory_.grow(piece.size()); piece = rest()) {
            response.body += piece;
        }
    }
    asio::post(services_.io, [self = shared_from_this(), response = std::move(response)]() mutable {
        self->respond(std::move(response), false);
    });
}

void Connection::post(std::function<void()> task) {
    services_.workers.post(memory_.peer(), std::move(task));
}

void Connection::read(void (Connection::*next)()) {
    next_ = next;
    if (abandoned_ && next != nullptr) {
        return close();
    }
    if (reading_ || abandoned_) {
        return;
    }
    reading_ = true;
    stream_->read(input_.data(), input_.size(), [self = shared_from_this()](const error_code& error, std::size_t size) {
        self->onRead(error, size);
    });
}

void Connection::onRead(const error_code& error, std::size_t size) {
    reading_ = false;
    if (phase_ == Phase::Closed) {
        return;
    }
    const auto next = std::exchange(next_, nullptr);
    if (error && next == nullptr) {
        abandoned_ = true; // the answer is tried all the same: the client may only have ended sending
    } else if (error) {
        close();
    } else {
        reader_.feed({input_.data(), size});
        if (next != nullptr && !memory_.hold(reader_.held())) {
            respond(Response(), true);
        } else if (next != nullptr) {
            (this->*next)();
        }
    }
}

void Connection::within(Milliseconds limit, std::function<void(Connection&)> action) {
    timer_.expires_after(limit);
    timer_.async_wait(
        [self = shared_from_this(), action = std::move(action), timing = ++timing_](const error_code& error) {
            if (!error && timing == self->timing_) {
                action(*self);
            }
        });
}

void Connection::cancelTimer() {
    ++timing_;
    timer_.cancel();
}

/// A time limit has passed. A read that is still pending is ignored when it ends.
void Connection::timeOut(const char* what) {
    next_ = nullptr;
    services_.counters.timedOut();
    log::write(log::Level::Info, "http", peer_ + ": took too long over the " + what);
    const std::string_view phase = what;
    if (phase == "head" || phase == "body") {
        return fail(408, "the request took too long");
    }
    close();
}

} // namespace cimserver::http
