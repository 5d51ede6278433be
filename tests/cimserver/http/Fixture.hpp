// A server in this process with a handler that tells what it got, a folder for files, and what was logged.
#pragma once

#include "Client.hpp"
#include "Support.hpp"
#include "cimserver/http/Server.hpp"

#include <atomic>
#include <future>

namespace http_testing {

class ServerTest : public ::testing::Test {
  protected:
    ServerTest();

    /// Starts with settings_, on a free port of 127.0.0.1.
    void start(bool tls = false);
    Client connect() const { return Client(port_); }
    /// A good request on a connection of its own is answered.
    void expectServes() const;
    std::string path(const std::string& name) const { return folder_ / name; }
    void write(const std::string& name, const std::string& text) const { support::writeFile(path(name), text); }
    /// What the test logged so far; how often a text occurs in it.
    std::string logged() const { return support::contentOf(path("log")); }
    std::size_t timesLogged(const std::string& text) const { return support::countOf(text, logged()); }

    support::TempDir folder_;
    cimserver::http::Settings settings_;
    std::uint16_t port_ = 0;
    std::string trouble_;        ///< what /health is told
    std::promise<void> release_; ///< lets handlers go that got the body "wait"
    std::shared_future<void> released_{release_.get_future()};
    std::atomic<unsigned> waiting_{0}; ///< such handlers so far
    std::atomic<unsigned> made_{0};    ///< pieces of a megabyte for the bodies "pieces" (40) and "broken"
    std::unique_ptr<cimserver::http::Server> server_; ///< last: it ends before what its handlers use

  private:
    cimserver::http::Response handle(const cimserver::http::Exchange& exchange);
};

} // namespace http_testing
