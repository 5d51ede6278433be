#include "cimserver/http/CheckQueue.hpp"

#include <boost/asio/post.hpp>

#include <iterator>

namespace cimserver::http {

constexpr unsigned kTurns = 8; ///< one in so many is the oldest's

void CheckQueue::add(unsigned rank, std::function<void()> check) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.emplace(rank, std::move(check));
    }
    boost::asio::post(thread_, [this] { runFirst(); });
}

/// Called once for each check that was added.
void CheckQueue::runFirst() {
    std::unique_lock lock(mutex_);
    const auto oldest = waiting_.begin();
    const auto newest = std::prev(waiting_.upper_bound(oldest->first));
    const auto next = waiting_.extract(++taken_ % kTurns == 0 ? oldest : newest);
    lock.unlock();
    next.mapped()();
}

} // namespace cimserver::http
