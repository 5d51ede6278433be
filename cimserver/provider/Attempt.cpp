#include "cimserver/provider/Attempt.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/common/Workers.hpp"

#include <utility>

namespace cimserver::provider {
namespace {

struct Attempt {
    std::optional<Gate::Pass> turn; ///< the place that was promised to the request
    bool mayWait = true;            ///< false once its time is over
    bool begun = false;             ///< has been inside a provider: it is not run again
    Gate* wanted = nullptr;         ///< set with a Deferral
    Access access = Access::Read;
};

thread_local Attempt* current = nullptr;

class Scope {
  public:
    explicit Scope(Attempt& attempt) { current = &attempt; }
    ~Scope() { current = nullptr; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
};

void attempt(const std::shared_ptr<Job>& job, Gate::Clock::time_point until, Attempt state) {
    try {
        const Scope scope(state);
        return job->run();
    } catch (const Deferral&) {
        state.turn.reset();
    }
    const auto resume = [job, until](std::optional<Gate::Pass> turn) {
        if (job->abandoned()) {
            return job->drop();
        }
        auto next = std::make_shared<Attempt>();
        next->mayWait = turn.has_value();
        if (turn) {
            next->turn.emplace(std::move(*turn));
        }
        job->post([job, until, next] { attempt(job, until, std::move(*next)); });
    };
    if (!state.wanted->enqueue({state.access, until, [job] { return job->abandoned(); }, resume})) {
        attempt(job, until, {std::nullopt, false});
    }
}

} // namespace

void runJob(const std::shared_ptr<Job>& job, std::chrono::milliseconds patience) {
    attempt(job, Gate::Clock::now() + patience, {});
}

std::optional<Gate::Pass> admitTo(Gate& gate, Access access, std::chrono::milliseconds patience) {
    const bool first = current != nullptr && !current->begun && !Gate::isInside();
    std::optional<Gate::Pass> pass;
    if (first && current->turn && current->turn->isFor(gate)) {
        current->turn->claim();
        pass.emplace(std::move(*current->turn));
    } else if (auto entered = gate.tryEnter(access)) {
        pass.emplace(std::move(*entered));
    }
    if (first) {
        current->turn.reset();
        current->begun = pass.has_value();
    }
    if (!pass && first && current->mayWait) {
        current->wanted = &gate;
        current->access = access;
        throw Deferral();
    }
    if (pass || first) {
        return pass;
    }
    const Workers::Aside aside;
    return gate.enter(access, patience);
}

} // namespace cimserver::provider
