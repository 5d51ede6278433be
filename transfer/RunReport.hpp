// What a run did: kept in STATE/last-run while it works, so that also a run that was killed is seen.
#pragma once

#include "StateFolder.hpp"

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace transfer {

struct FileFailure {
    std::string file;
    std::string reason;
};

struct RunReport {
    enum class State { None, Running, Succeeded, Failed };

    State state = State::None;
    std::time_t began = 0;
    std::time_t ended = 0;
    std::string target;      ///< empty when the settings were unusable
    std::uint64_t found = 0; ///< files that were to be sent
    std::uint64_t files = 0; ///< files that arrived
    std::uint64_t bytes = 0; ///< as they went over the wire
    std::uint64_t tries = 0;
    std::string reason; ///< why the run ended early; empty when it did not
    std::vector<FileFailure> failures;
    std::uint64_t moreFailures = 0; ///< those beyond the ones listed

    void addFailure(const std::string& file, const std::string& reason);

    /// Throws Failure, scope Run.
    void save(const StateFolder& state) const;
    /// State None when there is none.
    static RunReport load(const StateFolder& state);
};

/// "running", "succeeded", ...
const char* stateText(RunReport::State state);

} // namespace transfer
