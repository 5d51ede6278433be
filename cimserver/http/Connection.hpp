// One client's connection: reads a request, checks it, answers, reads the next. All on the I/O thread.
//
//   handshake -> await -> head -> (login) -> body -> handler -> answer -> await ...
//                                     \-> refusal -> drain the body -> await, or close
#pragma once

#include "cimserver/http/Access.hpp"
#include "cimserver/http/CheckQueue.hpp"
#include "cimserver/http/Counters.hpp"
#include "cimserver/http/Dump.hpp"
#include "cimserver/http/Message.hpp"
#include "cimserver/http/RequestReader.hpp"
#include "cimserver/http/Settings.hpp"
#include "cimserver/http/Stream.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/thread_pool.hpp>

#include <array>
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
    Counters counters;
    std::unique_ptr<Dump> dump;
    bool stopping = false; ///< I/O thread only
    std::function<void(Connection&)> onClosed;
    boost::asio::io_context io{1};
    boost::asio::thread_pool workers;
    CheckQueue checks;
};

class Connection : public std::enable_shared_from_this<Connection> {
  public:
    /// With `overCapacity` the first request is answered with 503.
    Connection(Services& services, std::unique_ptr<Stream> stream, std::string address, const std::string& port,
               bool overCapacity);

    void start();
    /// Closes now between requests, else after the answer under way.
    void stop();
    /// Closes now, whatever is under way.
    void close();

  private:
    enum class Phase { Idle, Busy, Closed };

    void await(Milliseconds limit);
    void onInput();
    void readHead();
    void onHead();
    void login();
    void check(Access::Decision decision);
    void onLogin(const std::optional<Identity>& identity);
    void answerOrReadBody();
    void beginBody();
    void readBody();
    void handle();

    void refuse(const Response& response);
    void fail(unsigned status, const std::string& text);
    void answer(const Response& response, bool closeAfter);
    void onAnswered(bool closeAfter);
    void drain();
    void finish();

    /// Reads once, then calls `next`; closes when the client has closed.
    void read(void (Connection::*next)());
    /// Writes output_, then calls `next`.
    void write(std::function<void(Connection&)> next);
    /// Calls `action` when `limit` passes before the next call of within() or cancelTimer().
    void within(Milliseconds limit, std::function<void(Connection&)> action);
    void cancelTimer();
    void timeOut(const char* what);
    void logAnswer(const Response& response) const;
    std::string serialise(const Response& response, bool closeAfter) const;

    Services& services_;
    std::unique_ptr<Stream> stream_;
    RequestReader reader_;
    boost::asio::steady_timer timer_;
    unsigned timing_ = 0;  ///< number of the timer's present use; an earlier one that fires late is ignored
    unsigned reading_ = 0; ///< the same for reads
    std::string address_;
    std::string peer_;
    bool overCapacity_;
    Phase phase_ = Phase::Idle;
    bool bodyUnread_ = false;
    Clock::time_point began_{};
    std::string output_;
    std::array<char, 8192> input_; // not initialised: an idle connection does not touch its pages
};

} // namespace cimserver::http
