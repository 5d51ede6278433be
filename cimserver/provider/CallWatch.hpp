// The provider calls under way, and which of them take long.
#pragma once

#include "cimserver/provider/Environment.hpp"

#include "OW_IntrusiveReference.hpp"

#include <atomic>
#include <chrono>
#include <list>
#include <mutex>
#include <string>

namespace cimserver::provider {

/// All members may be called from any thread.
class CallWatch {
  public:
    using Clock = std::chrono::steady_clock;
    struct Call {
        const char* phase;
        OpenWBEM::IntrusiveReference<const Environment> environment;
        Clock::time_point begun;
        bool slow = false;

        /// Phase, operation, class, user and provider, for the log.
        std::string described() const;
    };

    /// One call, as long as it lives.
    class Ticket {
      public:
        /// `phase` stands before the call in the log; it must outlive the ticket.
        Ticket(CallWatch& watch, OpenWBEM::IntrusiveReference<const Environment> environment, const char* phase = "");
        Ticket(Ticket&& other) noexcept;
        Ticket& operator=(Ticket&&) = delete;
        ~Ticket();

      private:
        CallWatch* watch_;
        std::list<Call>::iterator call_;
    };

    /// A call that takes longer than `limit` is slow.
    explicit CallWatch(std::chrono::milliseconds limit) : limit_(limit) {}

    /// Logs each call that has become slow, once.
    void inspect(Clock::time_point now);
    /// Slow calls that are still under way.
    unsigned slow() const { return slow_; }

  private:
    const std::chrono::milliseconds limit_;
    std::atomic<unsigned> slow_{0};
    std::mutex mutex_;
    std::list<Call> calls_; // the oldest first
};

} // namespace cimserver::provider
