#include "cimserver/http/CheckQueue.hpp"

#include <boost/asio/post.hpp>

namespace cimserver::http {

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
    const auto first = waiting_.extract(waiting_.begin());
    lock.unlock();
    first.mapped()();
}

} // namespace cimserver::http
