// Refusals in the log: a flood of them must not fill it.
#pragma once

#include "cimserver/common/Log.hpp"

#include <chrono>
#include <optional>
#include <string>

namespace cimserver::http {

/// For one thread.
class RefusalLog {
  public:
    using Clock = std::chrono::steady_clock;

    /// Writes a line, at most one in kInterval; the next one tells how many were left out.
    void write(const std::string& text, Clock::time_point now) {
        if (written_ && now - *written_ < kInterval) {
            ++leftOut_;
            return;
        }
        const auto more = leftOut_ == 0 ? "" : " (" + std::to_string(leftOut_) + " more refusals before)";
        log::write(log::Level::Warning, "http", "refused " + text + more);
        written_ = now;
        leftOut_ = 0;
    }

  private:
    static constexpr std::chrono::seconds kInterval{5};

    std::optional<Clock::time_point> written_;
    unsigned long leftOut_ = 0;
};

} // namespace cimserver::http
