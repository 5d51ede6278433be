#include "cimserver/provider/Gate.hpp"

#include <algorithm>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>

namespace cimserver::provider {

namespace {

// One mutex, because the wait graph spans gates; held briefly.
struct Waiting {
    const Gate* gate;
    bool shared;
};

struct WaitGraph {
    std::mutex mutex;
    std::condition_variable changed;
    std::map<std::thread::id, Waiting> waiting;
};

WaitGraph& waitGraph() {
    static WaitGraph* const single = new WaitGraph; // never destroyed: providers may end after the statics
    return *single;
}

constexpr unsigned kDeepestWait = 64;

thread_local unsigned passesHeld = 0;

void runAll(const std::vector<std::function<void()>>& resumptions) {
    for (const auto& resume : resumptions) {
        resume();
    }
}

} // namespace

bool Gate::isInside() {
    return passesHeld > 0;
}

bool Gate::isShared(Access access) const {
    return sharing_ == Sharing::All || (sharing_ == Sharing::Reads && access == Access::Read);
}

/// True when `waiter`, directly or through others, waits for a gate that `holder` is in.
bool Gate::waitsFor(std::thread::id waiter, std::thread::id holder, unsigned depth) const {
    const auto found = waitGraph().waiting.find(waiter);
    if (found == waitGraph().waiting.end() || depth > kDeepestWait) {
        return false;
    }
    const Waiting& wait = found->second;
    const auto& inside = wait.gate->holders_;
    return std::any_of(inside.begin(), inside.end(), [&](const Holder& h) {
        return !(wait.shared && h.shared) && (h.thread == holder || waitsFor(h.thread, holder, depth + 1));
    });
}

/// Changes leave one lane to reads.
bool Gate::hasRoom(Access access) const {
    const auto isWrite = [](const Holder& h) { return h.access == Access::Write; };
    const auto writes = static_cast<std::size_t>(std::count_if(holders_.begin(), holders_.end(), isWrite));
    return holders_.size() < limits_.lanes &&
           (access == Access::Read || writes + 1 < limits_.lanes || limits_.lanes == 1);
}

/// Without a thread: whether a waiter of the queue may.
bool Gate::mayEnter(std::thread::id thread, Access access) const {
    const bool known = thread != std::thread::id();
    const auto isMine = [&](const Holder& h) { return h.thread == thread; };
    if (known && std::any_of(holders_.begin(), holders_.end(), isMine)) {
        return true; // called back by the provider itself
    }
    const bool shared = isShared(access);
    const auto excludes = [&](const Holder& h) {
        return !(shared && h.shared) && !(known && waitsFor(h.thread, thread, 0));
    };
    // A call out of another provider takes no lane, for it could wait for its own end.
    return std::none_of(holders_.begin(), holders_.end(), excludes) && ((known && isInside()) || hasRoom(access));
}

Gate::Pass Gate::admit(std::thread::id thread, Access access) {
    holders_.push_back({thread, access, isShared(access)});
    passesHeld += thread == std::thread::id() ? 0U : 1U;
    return Pass(*this, std::prev(holders_.end()));
}

std::optional<Gate::Pass> Gate::tryEnter(Access access) {
    const std::lock_guard<std::mutex> lock(waitGraph().mutex);
    const std::thread::id self = std::this_thread::get_id();
    // Reads do not overtake a change that waits for them to end.
    const bool inTurn = queue_.empty() || sharing_ == Sharing::All || isInside();
    return inTurn && mayEnter(self, access) ? std::optional(admit(self, access)) : std::nullopt;
}

std::optional<Gate::Pass> Gate::enter(Access access, std::chrono::milliseconds limit) {
    const std::thread::id self = std::this_thread::get_id();
    Resumptions resumptions;
    std::unique_lock<std::mutex> lock(waitGraph().mutex);
    bool admitted = mayEnter(self, access);
    if (!admitted && blocked_ < std::max(limits_.lanes, limits_.queue / 4)) {
        ++blocked_;
        waitGraph().waiting[self] = {this, isShared(access)};
        waitGraph().changed.notify_all(); // a thread that waits for us may now pass
        admitted = waitGraph().changed.wait_for(lock, limit, [&] { return mayEnter(self, access); });
        waitGraph().waiting.erase(self);
        --blocked_;
    }
    auto pass = admitted ? std::optional(admit(self, access)) : std::nullopt;
    callUp(resumptions); // it stood back for this thread
    lock.unlock();
    runAll(resumptions);
    return pass;
}

bool Gate::enqueue(Waiter waiter) {
    Resumptions resumptions;
    std::unique_lock<std::mutex> lock(waitGraph().mutex);
    if (queue_.size() >= limits_.queue) {
        remove([](const Waiter& one) { return one.abandoned(); }, resumptions);
    }
    const bool accepted = queue_.size() < limits_.queue;
    if (accepted) {
        queue_.push_back(std::move(waiter));
        callUp(resumptions); // the last one inside may have left since the waiter tried
    }
    lock.unlock();
    runAll(resumptions);
    return accepted;
}

void Gate::tidy(Clock::time_point now) {
    Resumptions resumptions;
    {
        const std::lock_guard<std::mutex> lock(waitGraph().mutex);
        remove([now](const Waiter& one) { return one.until <= now || one.abandoned(); }, resumptions);
        callUp(resumptions); // the next may share what the one before could not
    }
    runAll(resumptions);
}

template <class Unwanted>
void Gate::remove(Unwanted unwanted, Resumptions& resumptions) {
    for (auto one = queue_.begin(); one != queue_.end();) {
        const auto next = std::next(one);
        if (unwanted(*one)) {
            resumptions.emplace_back([resume = std::move(one->resume)] { resume(std::nullopt); });
            queue_.erase(one);
        }
        one = next;
    }
}

/// Promises places to those whose turn it is, unless a thread waits for one.
void Gate::callUp(Resumptions& resumptions) {
    bool changesWait = false; // for a lane: then no other change finds one, but a read may
    for (auto one = queue_.begin(); one != queue_.end() && blocked_ == 0;) {
        const auto next = std::next(one);
        const bool isRead = one->access == Access::Read;
        if ((isRead || !changesWait) && mayEnter({}, one->access)) {
            auto pass = std::make_shared<Pass>(admit({}, one->access));
            resumptions.emplace_back([resume = std::move(one->resume), pass] { resume(std::move(*pass)); });
            queue_.erase(one);
        } else if (sharing_ != Sharing::All || isRead) {
            break;
        } else {
            changesWait = true;
        }
        one = next;
    }
}

void Gate::leave(Holders::iterator holder) {
    Resumptions resumptions;
    {
        const std::lock_guard<std::mutex> lock(waitGraph().mutex);
        passesHeld -= holder->thread == std::thread::id() ? 0U : 1U;
        holders_.erase(holder);
        if (!waitGraph().waiting.empty()) {
            waitGraph().changed.notify_all();
        }
        callUp(resumptions);
    }
    runAll(resumptions);
}

Gate::Pass::Pass(Pass&& other) noexcept : gate_(other.gate_), holder_(other.holder_) {
    other.gate_ = nullptr;
}

Gate::Pass::~Pass() {
    if (gate_ != nullptr) {
        gate_->leave(holder_);
    }
}

void Gate::Pass::claim() {
    const std::lock_guard<std::mutex> lock(waitGraph().mutex);
    holder_->thread = std::this_thread::get_id();
    ++passesHeld;
}

} // namespace cimserver::provider
