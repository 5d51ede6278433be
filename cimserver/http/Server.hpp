// The HTTP server: listens, reads requests, authenticates clients, calls the application, writes the answers.
//
// Threads: one does all input and output, so a slow client costs nothing but its socket; `workers` run the handler, so
// a slow provider does not stop input and output; one hashes passwords, which is slow on purpose.
#pragma once

#include "cimserver/http/Message.hpp"
#include "cimserver/http/Settings.hpp"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace cimserver::http {

/// Cannot listen on an address; the text names it.
class ListenError : public std::runtime_error {
  public:
    ListenError(const std::string& text, bool mayPass) : std::runtime_error(text), mayPass_(mayPass) {}
    /// True when the address is in use, or is not this host's yet.
    bool mayPass() const { return mayPass_; }

  private:
    bool mayPass_;
};

class Server {
  public:
    /// Loads the TLS files, the user file and the console, and opens the dump; throws std::runtime_error naming the one
    /// that cannot be used.
    Server(const Settings& settings, Application application);
    /// Stops at once if stop() was not called.
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Binds all listeners and starts serving. Returns them with the ports actually bound. Throws ListenError, and
    /// may be called again then.
    std::vector<Listener> start();
    /// Accepts no more, closes what is idle, lets requests under way finish for at most `grace`. False when some did
    /// not: their handlers still run, and the process should end without tearing anything down.
    bool stop(Milliseconds grace);
    /// Loads the TLS files and the user file again, and opens the dump anew. An unusable file is logged, and the old
    /// one stays in use.
    void reload();
    /// To be called now and then: whether the thread of input and output has come round since the last call.
    bool responds();
    /// Counters as one line of text.
    std::string statistics() const;

  private:
    struct Core;
    std::shared_ptr<Core> core_;
};

} // namespace cimserver::http
