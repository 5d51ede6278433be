// One client's connection: reads a request, checks it, answers, reads the next. All on the I/O thread.
//
//   handshake -> await -> head -> (login) -> body -> handler -> answer -> await ...
//                                     \-> refusal -> drain the body -> await, or close
#pragma once

#include "cimserver/common/Memory.hpp"
#include "cimserver/common/Workers.hpp"
#include "cimserver/http/Access.hpp"
#include "cimserver/http/CheckQueue.hpp"
#include "cimserver/http/Counters.hpp"
#include "cimserver/http/Dump.hpp"
#include "cimserver/http/Message.hpp"
#include "cimserver/http/RefusalLog.hpp"
#include "cimserver/http/RequestReader.hpp"
#include "cimserver/http/Settings.hpp"
#include "cimserver/http/StaticFiles.hpp"
#include "cimserver/http/Stream.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <string>

namespace cimserver::http {

class Connection;

/// What connections share; owned by the server and alive as long as any connection.
struct Services {
    Services(const Settings& from, Application to);

    Settings settings;
    Application application;
    Access access;
    StaticFiles console;
    Counters counters;
    MemoryBudget memory;
    std::unique_ptr<Dump> dump;
    RefusalLog refusals; ///< I/O thread only, and so the next
    bool stopping = false;
    std::function<void(Connection&)> onClosed;
    boost::asio::io_context io{1};
    CheckQueue checks;
    Workers workers; ///< last: its tasks use all the others
};

/// Who opened a connection.
struct Sender {
    std::uint64_t number; ///< of the connection
    std::string address;
    std::string port;
    std::string peer; ///< whose share of the memory it uses: the address, or the network of an IPv6 address
};

class Connection : public Exchange, public std::enable_shared_from_this<Connection> {
  public:
    /// With `overCapacity` the first request is answered with 503.
    Connection(Services& services, std::unique_ptr<Stream> stream, const Sender& sender, bool overCapacity);

    std::uint64_t number() const { return number_; }
    /// True for an idle connection that never had a request by a user (by anybody, without users).
    bool isDispensable() const { return phase_ == Phase::Idle && !admitted_; }

    void start();
    /// Closes now between requests and while a login waits for its turn, else after the answer under way.
    void stop();
    /// Closes now, whatever is under way.
    void close();

    const Request& request() const override { return reader_.request(); }
    bool abandoned() const override { return abandoned_; }
    void answer(Response response) override;
    void post(std::function<void()> task) override;

  private:
    enum class Phase { Idle, AwaitingLogin, Busy, Closed };

    void await(Milliseconds limit);
    void onInput();
    void readHead();
    void onHead();
    void answerReadiness();
    void login();
    void check(Access::Decision decision);
    void onLogin(const std::optional<Identity>& identity);
    void answerOrReadBody();
    void beginBody();
    void readBody();
    void handle();

    void refuse(const Response& response);
    void fail(unsigned status, const std::string& text);
    void respond(Response response, bool closeAfter);
    void writeAnswer(std::function<void(Connection&)> next);
    void writePiece(std::string piece, bool closeAfter);
    void makePiece(bool closeAfter);
    void onAnswered(bool closeAfter);
    void drain();
    void finish();

    /// Reads once, then calls `next`; closes when the client has closed. One read at a time is under way; another call
    /// only changes what comes next.
    void read(void (Connection::*next)());
    void onRead(const boost::system::error_code& error, std::size_t size);
    /// Writes output_ and body_, then calls `next`.
    void write(std::function<void(Connection&)> next);
    /// Calls `action` when `limit` passes before the next call of within() or cancelTimer().
    void within(Milliseconds limit, std::function<void(Connection&)> action);
    void cancelTimer();
    void timeOut(const char* what);
    void logAnswer(const Response& response) const;

    Services& services_;
    std::unique_ptr<Stream> stream_;
    MemoryAccount memory_;
    RequestReader reader_;
    boost::asio::steady_timer timer_;
    unsigned timing_ = 0; ///< number of the timer's present use; an earlier one that fires late is ignored
    bool reading_ = false;
    void (Connection::*next_)() = nullptr; ///< after the present read; null: nothing
    const std::uint64_t number_;
    std::string address_;
    std::string peer_;
    bool overCapacity_;
    bool admitted_ = false;        ///< had a request whose sender may be here
    Clock::time_point admittedBy_; ///< the end of a connection that has had none
    Phase phase_ = Phase::Idle;
    bool bodyUnread_ = false;
    std::atomic<bool> abandoned_{false}; ///< the client's end was read while the application had a request
    Clock::time_point began_{};
    std::string output_;                ///< the answer's head, with a small body
    std::string body_;                  ///< a large one, or a piece of it
    std::function<std::string()> rest_; ///< makes the next piece
    std::array<char, 4096> input_;      // not initialised: an idle connection does not touch its pages
};

} // namespace cimserver::http
