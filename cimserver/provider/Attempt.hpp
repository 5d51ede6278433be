// One run of a request on a worker, which ends early when the provider it needs first has no room.
#pragma once

#include "cimserver/provider/Gate.hpp"

#include <functional>
#include <memory>
#include <optional>

namespace cimserver::provider {

/// A request as the provider host runs it: again from the start after it waited. All members may be called from any
/// thread.
class Job {
  public:
    virtual ~Job() = default;
    /// Runs the request; may throw what enter() throws as a Deferral, before it has changed anything.
    virtual void run() = 0;
    /// True when nobody waits for the answer any more.
    virtual bool abandoned() const = 0;
    /// Ends an abandoned request.
    virtual void drop() = 0;
    /// Runs the task on a worker.
    virtual void post(std::function<void()> task) = 0;
};

/// Runs the job on this thread, a worker. One that must wait is queued for at most `patience`; one whose time is over,
/// or that the queue has no room for, is run to the error that the provider is busy.
void runJob(const std::shared_ptr<Job>& job, std::chrono::milliseconds patience);

/// The way into a gate from any thread: a job's first entry is deferred when it has to wait, every other one waits on
/// its thread for at most `patience`. Empty when the provider is busy.
std::optional<Gate::Pass> admitTo(Gate& gate, Access access, std::chrono::milliseconds patience);

} // namespace cimserver::provider
