#include "cimserver/provider/Gate.hpp"

#include <algorithm>
#include <condition_variable>
#include <map>
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

} // namespace

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

bool Gate::mayEnter(std::thread::id thread, bool shared) const {
    const auto isMine = [&](const Holder& h) { return h.thread == thread; };
    if (std::any_of(holders_.begin(), holders_.end(), isMine)) {
        return true; // called back by the provider itself
    }
    return std::none_of(holders_.begin(), holders_.end(),
                        [&](const Holder& h) { return !(shared && h.shared) && !waitsFor(h.thread, thread, 0); });
}

std::optional<Gate::Pass> Gate::enter(Access access, std::chrono::milliseconds limit) {
    const std::thread::id self = std::this_thread::get_id();
    const bool shared = concurrentReads_ && access == Access::Read;
    std::unique_lock<std::mutex> lock(waitGraph().mutex);
    if (!mayEnter(self, shared)) {
        waitGraph().waiting[self] = {this, shared};
        waitGraph().changed.notify_all(); // a thread that waits for us may now pass
        const bool passed = waitGraph().changed.wait_for(lock, limit, [&] { return mayEnter(self, shared); });
        waitGraph().waiting.erase(self);
        if (!passed) {
            return std::nullopt;
        }
    }
    holders_.push_back({self, shared});
    return Pass(*this);
}

void Gate::leave() {
    const std::thread::id self = std::this_thread::get_id();
    const std::lock_guard<std::mutex> lock(waitGraph().mutex);
    const auto mine =
        std::find_if(holders_.rbegin(), holders_.rend(), [&](const Holder& h) { return h.thread == self; });
    if (mine != holders_.rend()) {
        holders_.erase(std::next(mine).base());
    }
    if (!waitGraph().waiting.empty()) {
        waitGraph().changed.notify_all();
    }
}

Gate::Pass::~Pass() {
    if (gate_ != nullptr) {
        gate_->leave();
    }
}

} // namespace cimserver::provider
