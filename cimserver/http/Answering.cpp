// The part of Connection that answers.
#include "cimserver/http/Connection.hpp"

#include "cimserver/common/Log.hpp"
#include "cimserver/http/Message.hpp"
#include "cimserver/http/Policy.hpp"
#include "cimserver/http/ResponseHead.hpp"

#include <boost/asio/post.hpp>

#include <algorithm>
#include <sstream>

namespace cimserver::http {

namespace asio = boost::asio;
using boost::system::error_code;

namespace {

constexpr std::uint64_t kDrainBytes = 65536;
constexpr std::size_t kKeptOutput = 16384;

/// Answers that an administrator looks for in the log, because a limit or a rule of the configuration made them.
bool isRefusal(unsigned status) {
    return status == 413 || status == 414 || status == 431;
}

} // namespace

/// Answers before the body is read. A short body is read and dropped, so that the next request can follow; after a long
/// one, or one that may never come (Expect), the connection is closed.
void Connection::refuse(const Response& response) {
    const auto& framing = reader_.framing();
    const bool unclear = framing.expectsContinue && bodyUnread_;
    respond(response, unclear || framing.contentLength.value_or(0) > kDrainBytes);
}

void Connection::fail(unsigned status, const std::string& text) {
    respond(textResponse(status, text), true);
}

void Connection::respond(Response response, bool closeAfter) {
    if (phase_ == Phase::Closed) {
        return;
    }
    if (memory_.refused() || !memory_.hold(reader_.held() + response.body.capacity())) {
        services_.refusals.write(address_ + ": no memory for its request or the answer", Clock::now());
        response = textResponse(503, "the memory for requests and answers is used up (--max-memory)");
        response.fields.add("Retry-After", "1");
    }
    if (isRefusal(response.status)) {
        services_.refusals.write(address_ + ": " + std::to_string(response.status) + " " +
                                     response.body.substr(0, response.body.find('\n')),
                                 Clock::now());
    }
    services_.counters.answered(response.status, Clock::now() - began_);
    logAnswer(response);
    const bool untilClosed = response.rest && reader_.request().version == 10;
    closeAfter = closeAfter || untilClosed || services_.stopping || !reader_.framing().keepAlive;
    phase_ = Phase::Busy;
    output_ =
        responseHead(response, reader_.request().version, closeAfter, std::min(response.body.size(), kKeptOutput));
    if (reader_.request().method == "HEAD" || response.status == 304) { // the length is told all the same
        response.body.clear();
    } else if (response.rest) {
        reader_.dropBody();
        rest_ = std::move(response.rest);
        return writePiece(std::move(response.body), closeAfter);
    }
    if (response.body.size() <= kKeptOutput) {
        output_ += response.body;
    } else {
        body_ = std::move(response.body);
    }
    reader_.dropBody();
    memory_.hold(reader_.held() + output_.capacity() + body_.capacity());
    writeAnswer([closeAfter](Connection& self) { self.onAnswered(closeAfter); });
}

/// What the first piece held stands for all of them: only one is in memory at a time. An empty one is the end.
void Connection::writePiece(std::string piece, bool closeAfter) {
    if (phase_ == Phase::Closed) {
        return;
    }
    const bool last = piece.empty();
    if (reader_.request().version != 10) {
        std::ostringstream length;
        length << std::hex << piece.size() << "\r\n";
        output_ += length.str();
        piece += "\r\n";
    }
    body_ = std::move(piece);
    writeAnswer(
        [last, closeAfter](Connection& self) { last ? self.onAnswered(closeAfter) : self.makePiece(closeAfter); });
}

void Connection::makePiece(bool closeAfter) {
    cancelTimer();
    output_.clear();
    std::string().swap(body_);
    post([self = shared_from_this(), closeAfter] {
        try {
            asio::post(self->services_.io, [self, piece = self->rest_(), closeAfter]() mutable {
                self->writePiece(std::move(piece), closeAfter);
            });
        } catch (const std::exception& error) {
            log::write(log::Level::Error, "http", std::string("an answer ended early: ") + error.what());
            asio::post(self->services_.io, [self] { self->close(); });
        }
    });
}

void Connection::writeAnswer(std::function<void(Connection&)> next) {
    within(services_.settings.limits.write, [](Connection& self) { self.timeOut("answer"); });
    write(std::move(next));
}

void Connection::write(std::function<void(Connection&)> next) {
    stream_->write(output_, body_,
                   [self = shared_from_this(), next = std::move(next)](const error_code& error, std::size_t) {
                       if (error || self->phase_ == Phase::Closed) {
                           return self->close();
                       }
                       next(*self);
                   });
}

void Connection::logAnswer(const Response& response) const {
    const auto& request = reader_.request();
    if (services_.dump) {
        services_.dump->write(request, response, services_.application.mask);
    }
    if (log::enabled(log::Level::Debug)) {
        log::write(log::Level::Debug, "http",
                   peer_ + " " + request.identity.user + " " + request.method + " " + request.target + ": " +
                       std::to_string(response.status) + ", " + std::to_string(response.body.size()) + " bytes");
    }
}

void Connection::onAnswered(bool closeAfter) {
    std::string().swap(output_); // an assignment would keep the memory
    std::string().swap(body_);
    rest_ = nullptr;
    if (closeAfter) {
        return finish();
    }
    if (bodyUnread_) {
        within(services_.settings.limits.body, [](Connection& self) { self.close(); });
        return drain();
    }
    await(services_.settings.limits.idle);
}

void Connection::drain() {
    switch (reader_.readBody(true)) {
    case RequestReader::Progress::NeedMore:
        return read(&Connection::drain);
    case RequestReader::Progress::Failed:
        return finish();
    case RequestReader::Progress::Done:
        return await(services_.settings.limits.idle);
    }
}

void Connection::finish() {
    if (abandoned_) { // nothing more can come
        return close();
    }
    within(services_.settings.limits.linger, [](Connection& self) { self.close(); });
    stream_->finish([self = shared_from_this()](const error_code&, std::size_t) { self->close(); });
}

} // namespace cimserver::http
