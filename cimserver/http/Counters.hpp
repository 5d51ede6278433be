// What the server did since it started, for the log. Counted on the I/O thread, read from any.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>

namespace cimserver::http {

class Counters {
  public:
    void connected() { ++connections_; }
    void refusedConnection() { ++refusedConnections_; }
    void loginFailed() { ++failedLogins_; }
    void timedOut() { ++timeouts_; }
    /// A request was answered, `latency` after its head was complete (after its first byte when the head failed).
    void answered(unsigned status, std::chrono::nanoseconds latency);

    /// One line: totals, errors, and the latency's mean, median, 99th percentile (upper bounds of power-of-two classes)
    /// and maximum in microseconds.
    std::string text() const;

  private:
    using Number = std::atomic<std::uint64_t>;

    std::uint64_t percentile(unsigned percent) const;

    Number connections_{0};
    Number refusedConnections_{0};
    Number failedLogins_{0};
    Number timeouts_{0};
    Number requests_{0};
    Number clientErrors_{0};
    Number serverErrors_{0};
    Number microseconds_{0};
    Number slowest_{0};
    std::array<Number, 40> latencies_{}; ///< [i]: below 2^i microseconds
};

} // namespace cimserver::http
