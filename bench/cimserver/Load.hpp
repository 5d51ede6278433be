// Many clients at once, driven by one thread: each sends its next request as soon as it has the answer to the last.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace bench {

struct LoadResult {
    double perSecond = 0;
    double p50 = 0; ///< microseconds from request to answer, like the next
    double p99 = 0;
};

/// A connection's request of this number, from 0 on.
using Requests = std::function<std::string(unsigned connection, unsigned number)>;

/// Loads the server at 127.0.0.1 for so long. Throws std::runtime_error when an answer is not a success.
LoadResult measureLoad(int port, unsigned connections, std::chrono::milliseconds time, const Requests& requests);

/// Sends so many requests in all.
void sendRequests(int port, unsigned connections, unsigned total, const Requests& requests);

} // namespace bench
