#include "cimserver/common/Workers.hpp"

#include "cimserver/common/Log.hpp"

#include <algorithm>
#include <system_error>
#include <utility>

namespace cimserver {
namespace {

thread_local Workers* countedIn = nullptr; // the workers that this thread counts among

} // namespace

Workers::~Workers() {
    std::list<Queue> dropped; // destroyed without the lock: tasks own things
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        dropped.swap(queues_);
    }
    changed_.notify_all();
    for (auto& thread : threads_) {
        thread.join();
    }
}

void Workers::post(const std::string& sender, Task task) {
    const std::lock_guard lock(mutex_);
    auto queue = std::find_if(queues_.begin(), queues_.end(), [&](const Queue& one) { return one.sender == sender; });
    if (queue == queues_.end()) {
        queue = queues_.insert(queue, Queue{sender, {}});
    }
    if (spare_.empty()) {
        spare_.emplace_back();
    }
    spare_.front() = std::move(task);
    queue->tasks.splice(queue->tasks.end(), spare_, spare_.begin());
    ++waiting_;
    employ();
}

Workers::Task Workers::next() {
    auto& queue = queues_.front();
    auto task = std::move(queue.tasks.front());
    spare_.splice(spare_.end(), queue.tasks, queue.tasks.begin());
    --waiting_;
    if (queue.tasks.empty()) {
        queues_.pop_front();
    } else {
        queues_.splice(queues_.end(), queues_, queues_.begin());
    }
    return task;
}

/// Finds a thread for the next task; the lock is held.
void Workers::employ() {
    if (ending_ || called_ >= waiting_ || busy_ + called_ >= count_) {
        return;
    }
    try {
        if (idle_ > called_) {
            changed_.notify_one();
        } else {
            threads_.emplace_back([this] { run(); });
        }
        ++called_;
    } catch (const std::system_error& error) { // the task waits for one of the threads there are
        log::write(log::Level::Error, "workers", std::string("cannot start a thread: ") + error.what());
    }
}

void Workers::await(std::unique_lock<std::mutex>& lock) {
    while (!ending_ && !hasWork()) {
        ++idle_;
        changed_.wait(lock);
        --idle_;
        called_ -= called_ > 0 ? 1U : 0U;
    }
}

void Workers::run() {
    std::unique_lock lock(mutex_);
    --called_;
    for (;;) {
        await(lock);
        if (ending_) {
            return;
        }
        auto task = next();
        ++busy_;
        employ();
        lock.unlock();
        countedIn = this;
        task();
        task = nullptr;
        countedIn = nullptr;
        lock.lock();
        --busy_;
    }
}

Workers::Aside::Aside() : workers_(std::exchange(countedIn, nullptr)) {
    if (workers_ != nullptr) {
        const std::lock_guard lock(workers_->mutex_);
        --workers_->busy_;
        workers_->employ();
    }
}

Workers::Aside::Aside(Aside&& other) noexcept : workers_(std::exchange(other.workers_, nullptr)) {}

Workers::Aside::~Aside() {
    if (workers_ != nullptr) {
        const std::lock_guard lock(workers_->mutex_);
        ++workers_->busy_;
        countedIn = workers_;
    }
}

} // namespace cimserver
