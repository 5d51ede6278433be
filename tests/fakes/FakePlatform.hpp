// The platform's C functions (Zpo*, os*, system) in memory: each valid call is recorded and can be made to fail.
// The C functions may be called from several threads; what a test looks at it looks at while none is.
//
// Texts stand for what goes in and out, so that expectations can be lists of texts:
//   an entry's name   "CDR/CDRService/FORMAT"
//   its value         "bytes f912", "text abc", "int 7"; "" when there is no such entry
//   a call            the function's name and its arguments between blanks: "ZpoSetRegEntryInt CDR/CDRService/A int 7"
//   a log entry       category, level, identifier and text: "2 4 -1 getFormat error = 5"
#pragma once

#include "ZpoShared.h"

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace fakes {

class FakePlatform {
  public:
    /// The one behind the C functions.
    static FakePlatform& get();
    /// Forgets everything: entries, tasks, queues, registrations, switches, records.
    void reset() { *this = FakePlatform(); }

    // ---- Registry

    /// Creates or replaces an entry, or removes it when the value is "".
    void put(const std::string& entry, const std::string& value);
    std::string entry(const std::string& entry) const;

    // ---- Failure switches

    /// Calls of `function` whose record contains `argument` return `status` and do nothing else: all of them, or only
    /// the nth from now on.
    void fail(const std::string& function, std::uint32_t status, const std::string& argument = "", unsigned nth = 0) {
        switches_.push_back({function, status, argument, nth, 0});
    }
    /// Runs `work` once, during the next call of `function`; other calls go on meanwhile.
    void during(const std::string& function, std::function<void()> work) { during_ = {function, std::move(work)}; }
    /// Turns all switches off.
    void mend() { switches_.clear(); }

    // ---- Records

    /// The calls in order, those whose record begins with `prefix`.
    std::vector<std::string> calls(const std::string& prefix = "") const;
    /// Forgets the calls and the log so far.
    void forget() { calls_ = log = {}; }
    std::vector<std::string> log;

    // ---- Scheduler, notifications, queues

    std::vector<ZpoScheduledTaskRecord> tasks;   ///< the table; one that was created has only its path there
    std::vector<ZpoScheduledTask> created;       ///< as they were handed over, also when it failed
    std::vector<ZpoScheduledTaskRecord> deleted; ///< as they were handed over, also when it failed
    int openLists = 0;                           ///< lists handed out and not yet freed
    std::map<std::string, ZpoRegBackupAndRestoreCallback> callbacks; ///< by the name they were registered under
    std::map<std::string, std::uint32_t> queues;                     ///< ids of those that exist, by name

    // ---- For the C functions

    /// Records a call. Returns the status of the switch that it meets, else 0.
    std::uint32_t called(const std::string& function, const std::string& arguments);
    std::map<std::string, std::string> entries; ///< values by name
    std::uint32_t modules = 0;                  ///< diagnostic registrations so far; a handle is 40 + its number

  private:
    struct Switch {
        std::string function;
        std::uint32_t status;
        std::string argument;
        unsigned nth;
        unsigned met;
    };
    std::vector<std::string> calls_;
    std::vector<Switch> switches_;
    std::pair<std::string, std::function<void()>> during_;
    friend struct Call;
    inline static std::mutex mutex_;
};

/// The platform during one call of a C function; other threads' calls wait.
struct Call {
    const std::lock_guard<std::mutex> lock{FakePlatform::mutex_};
    FakePlatform* operator->() const { return &FakePlatform::get(); }
};

} // namespace fakes
