#include "ChangeQueue.hpp"

#include "ZpoShared.h"

#include <algorithm>

namespace zpo {

ChangeQueue::Turn::Turn(ChangeQueue& queue, Change& change) : queue_(queue), own_(change) {
    std::unique_lock<std::mutex> lock(queue_.mutex_);
    auto& waiting = queue_.waiting_;
    waiting.push_back(&change);
    const auto mayLead = [&] { return !queue_.led_ && waiting.front() == &change; };
    const auto called = [&] { return change.state != Change::State::Waiting || mayLead(); };
    if (!change.wake.wait_until(lock, change.until, called)) {
        waiting.erase(std::find(waiting.begin(), waiting.end(), &change));
        change.status = ZPO_REG_LOCKED;
        return;
    }
    // Whoever has taken the change uses it until it is done.
    change.wake.wait(lock, [&] { return change.state != Change::State::Taken; });
    leads_ = queue_.led_ = change.state == Change::State::Waiting;
}

void ChangeQueue::Turn::take() {
    const std::lock_guard<std::mutex> lock(queue_.mutex_);
    auto& waiting = queue_.waiting_;
    taken_.reserve(taken_.size() + waiting.size());
    for (Change* const change : waiting) {
        change->state = Change::State::Taken;
        change->status = ZPO_REG_NO_RESOURCES; // should memory be exhausted before it is made
        taken_.push_back(change);
    }
    waiting.clear();
}

ChangeQueue::Turn::~Turn() {
    if (!leads_) {
        return;
    }
    const std::lock_guard<std::mutex> lock(queue_.mutex_);
    if (own_.state == Change::State::Waiting) { // nothing was taken
        queue_.waiting_.pop_front();
    }
    for (Change* const change : taken_) {
        change->state = Change::State::Done;
        change->wake.notify_one(); // under the lock: its thread destroys it as soon as it is done
    }
    queue_.led_ = false;
    if (!queue_.waiting_.empty()) {
        queue_.waiting_.front()->wake.notify_one();
    }
}

} // namespace zpo
