#include "cimserver/http/Counters.hpp"

#include <algorithm>

namespace cimserver::http {

void Counters::answered(unsigned status, std::chrono::nanoseconds latency) {
    const auto micros =
        static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(latency).count());
    ++requests_;
    clientErrors_ += status / 100 == 4 ? 1 : 0;
    serverErrors_ += status / 100 == 5 ? 1 : 0;
    microseconds_ += micros;
    slowest_ = std::max(slowest_.load(), micros);
    std::size_t index = 0;
    while (index + 1 < latencies_.size() && (micros >> index) != 0) {
        ++index;
    }
    ++latencies_[index];
}

std::uint64_t Counters::percentile(unsigned percent) const {
    const std::uint64_t wanted = (requests_ * percent + 99) / 100;
    std::uint64_t seen = 0;
    for (std::size_t i = 0; i < latencies_.size(); ++i) {
        seen += latencies_[i];
        if (seen >= wanted) {
            return std::min(std::uint64_t{1} << i, slowest_.load());
        }
    }
    return slowest_;
}

std::string Counters::text() const {
    const auto number = [](const char* name, std::uint64_t value) { return name + std::to_string(value); };
    const std::uint64_t requests = requests_;
    return number("requests=", requests) + number(" client-errors=", clientErrors_) +
           number(" server-errors=", serverErrors_) + number(" failed-logins=", failedLogins_) +
           number(" timeouts=", timeouts_) + number(" connections=", connections_) +
           number(" connections-refused=", refusedConnections_) +
           number(" latency-us mean=", requests == 0 ? 0 : microseconds_ / requests) + number(" p50=", percentile(50)) +
           number(" p99=", percentile(99)) + number(" max=", slowest_);
}

} // namespace cimserver::http
