#include "cimserver/ServiceManager.hpp"

#include <systemd/sd-daemon.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace cimserver::service {

// A notice that systemd does not get is no reason to stop.

void ready(const std::string& status) {
    ::sd_notify(0, ("READY=1\nSTATUS=" + status).c_str());
}

void stopping() {
    ::sd_notify(0, "STOPPING=1");
}

void alive() {
    ::sd_notify(0, "WATCHDOG=1");
}

std::chrono::milliseconds interval(std::chrono::milliseconds longest) {
    constexpr std::uint64_t kCallsPerLimit = 4;
    std::uint64_t microseconds = 0;
    if (::sd_watchdog_enabled(0, &microseconds) <= 0) {
        return longest;
    }
    const std::chrono::milliseconds wanted(microseconds / kCallsPerLimit / 1000);
    return std::clamp(wanted, std::chrono::milliseconds(1), longest);
}

void replaceParent() {
    constexpr const char* kWatched = "WATCHDOG_PID";
    if (::getenv(kWatched) != nullptr) {
        ::setenv(kWatched, std::to_string(::getpid()).c_str(), 1);
    }
}

} // namespace cimserver::service
