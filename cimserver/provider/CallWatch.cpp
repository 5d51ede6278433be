#include "cimserver/provider/CallWatch.hpp"

#include "cimserver/common/Log.hpp"

#include <utility>

namespace cimserver::provider {

using OpenWBEM::IntrusiveReference;

std::string CallWatch::Call::described() const {
    return phase + environment->described();
}

CallWatch::Ticket::Ticket(CallWatch& watch, IntrusiveReference<const Environment> environment, const char* phase)
    : watch_(&watch) {
    const std::lock_guard lock(watch.mutex_);
    call_ = watch.calls_.insert(watch.calls_.end(), Call{phase, std::move(environment), Clock::now()});
}

CallWatch::Ticket::Ticket(Ticket&& other) noexcept : watch_(std::exchange(other.watch_, nullptr)), call_(other.call_) {}

CallWatch::Ticket::~Ticket() {
    if (watch_ == nullptr) {
        return;
    }
    std::list<Call> ended; // outlives the lock: the environment may hold what a provider made
    const std::lock_guard lock(watch_->mutex_);
    ended.splice(ended.end(), watch_->calls_, call_);
    if (call_->slow) {
        --watch_->slow_;
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - call_->begun).count();
        log::write(log::Level::Info, "provider",
                   call_->described() + " has ended after " + std::to_string(seconds) + " s");
    }
}

void CallWatch::inspect(Clock::time_point now) {
    const std::lock_guard lock(mutex_);
    for (auto& call : calls_) {
        if (!call.slow && now - call.begun > limit_) {
            call.slow = true;
            ++slow_;
            log::write(log::Level::Warning, "provider",
                       call.described() + " has been running for more than " + std::to_string(limit_.count()) + " ms");
        }
    }
}

} // namespace cimserver::provider
