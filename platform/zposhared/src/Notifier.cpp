#include "Notifier.hpp"

#include "Diagnostics.hpp"
#include "EventWatch.hpp"
#include "PerProcess.hpp"
#include "ProcessRegistry.hpp"
#include "Scheduler.hpp"
#include "Settings.hpp"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <map>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <sys/eventfd.h>
#include <thread>
#include <vector>

namespace zpo {
namespace {

constexpr std::size_t kMaxNames = 64;
constexpr std::size_t kMaxRegisteredName = 64;
constexpr std::uint64_t kMaxCallsAtOnce = 64; // a damaged counter must not call for ever

struct Registration {
    ZpoRegBackupAndRestoreCallback callback = nullptr;
    std::uint32_t kind = 0;
    std::optional<StoreCounters> notified; ///< the events it has been told; empty: the registry could not be read
    bool owed = false; ///< a restore event, because a task is pending: who sets the tasks then sets them again
};

struct Call {
    ZpoRegBackupAndRestoreCallback callback;
    unsigned long event;
};

// Empty when the registry cannot be read. A store that does not exist has counted nothing and is not created here.
std::optional<StoreCounters> currentCounters() {
    StoreCounters counters;
    RegistryStore* registry = processRegistry();
    if (registryFileExists() && (registry == nullptr || registry->counters(counters) != ZPO_OK)) {
        return std::nullopt;
    }
    return counters;
}

// How many events a registration has not been notified of. In another store all are new; in a store that could not be
// read before, at most one is.
std::size_t newEvents(const Registration& registration, const StoreCounters& now, std::uint64_t StoreCounters::*count) {
    if (!registration.notified) {
        return now.*count != 0 ? 1 : 0;
    }
    const std::uint64_t before = registration.notified->identity == now.identity ? (*registration.notified).*count : 0;
    return now.*count > before ? static_cast<std::size_t>(std::min(now.*count - before, kMaxCallsAtOnce)) : 0;
}

void addCalls(std::vector<Call>& calls, const Registration& registration, std::uint32_t event, std::size_t count) {
    if ((registration.kind & event) != 0) {
        calls.insert(calls.end(), count, Call{registration.callback, event});
    }
}

// The callback's code must still be there when the thread calls it.
void keepLoaded(ZpoRegBackupAndRestoreCallback callback) {
    Dl_info info{};
    void* address = nullptr;
    static_assert(sizeof address == sizeof callback);
    std::memcpy(&address, &callback, sizeof address);
    if (dladdr(address, &info) != 0) {
        dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD); // one more reference, never given back
    }
}

class Notifier {
  public:
    std::uint32_t add(const std::string& name, ZpoRegBackupAndRestoreCallback callback, std::uint32_t kind) {
        const std::lock_guard<std::mutex> lock(mutex_);
        const auto known = registrations_.find(name);
        if (known != registrations_.end()) {
            known->second.callback = callback;
            known->second.kind = kind;
            return ZPO_OK;
        }
        if (registrations_.size() >= kMaxNames) {
            return ZPO_NOTIFY_TOO_MANY;
        }
        if (!start()) {
            return ZPO_NOTIFY_NO_THREAD;
        }
        registrations_[name] = Registration{callback, kind, currentCounters(), isTaskPending()};
        if (registrations_[name].owed) {
            announceEvent(*settings().stateDirectory); // the thread may be asleep already
        }
        return ZPO_OK;
    }

    void stop() {
        std::unique_lock<std::mutex> lock(mutex_);
        stopped_ = true;
        std::thread thread = std::move(thread_);
        lock.unlock();
        if (!thread.joinable()) {
            return;
        }
        eventfd_write(stopFd_.get(), 1);
        if (thread.get_id() == std::this_thread::get_id()) {
            thread.detach(); // a callback ends the process
        } else {
            thread.join();
        }
    }

  private:
    bool start() {
        if (thread_.joinable() || stopped_) {
            return thread_.joinable();
        }
        stopFd_ = UniqueFd(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
        if (!stopFd_) {
            return false;
        }
        // Signals belong to the host process's own threads.
        sigset_t all;
        sigset_t before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
        try {
            thread_ = std::thread([this] { run(); });
        } catch (const std::system_error&) {
            stopFd_.reset();
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return thread_.joinable();
    }

    void run() {
        EventWatch watch(*settings().stateDirectory, stopFd_.get());
        do {
            watch.arm();
            for (const Call& call : pending()) {
                call.callback(call.event);
            }
        } while (watch.wait());
    }

    std::vector<Call> pending() {
        std::vector<Call> calls;
        const std::lock_guard<std::mutex> lock(mutex_);
        const std::optional<StoreCounters> now = stopped_ ? std::nullopt : currentCounters();
        if (!now) {
            return calls;
        }
        for (auto& [name, registration] : registrations_) {
            addCalls(calls, registration, ZPO_EVENT_BACKUP, newEvents(registration, *now, &StoreCounters::backups));
            addCalls(calls, registration, ZPO_EVENT_RESTORE, newEvents(registration, *now, &StoreCounters::restores));
            addCalls(calls, registration, ZPO_EVENT_RESTORE, registration.owed ? 1 : 0);
            registration.notified = now;
            registration.owed = false;
        }
        return calls;
    }

    std::mutex mutex_; ///< not held while a callback runs
    std::map<std::string, Registration> registrations_;
    std::thread thread_;
    UniqueFd stopFd_;
    bool stopped_ = false;
};

// The thread ends before the objects that its callbacks use are destroyed: exit handlers run last in, first out.
void stopAtExit() {
    if (Notifier* notifier = PerProcess<Notifier>::find()) {
        notifier->stop();
    }
}

} // namespace

std::uint32_t registerCallback(const char* name, ZpoRegBackupAndRestoreCallback callback, std::uint32_t kind) {
    const std::size_t length = name == nullptr ? 0 : strnlen(name, kMaxRegisteredName + 1);
    if (length == 0 || length > kMaxRegisteredName || callback == nullptr || kind == 0 ||
        (kind & ~(ZPO_EVENT_BACKUP | ZPO_EVENT_RESTORE)) != 0) {
        return ZPO_NOTIFY_BAD_ARGUMENT;
    }
    if (processRegistry() == nullptr) {
        return ZPO_NOTIFY_BAD_SETTING;
    }
    keepLoaded(callback);
    std::atexit(stopAtExit);
    return PerProcess<Notifier>::get([] { return new Notifier; }).add(name, callback, kind);
}

} // namespace zpo
