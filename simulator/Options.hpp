#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cdrsim {

struct Options {
    std::string records = "/var/lib/cdr/records"; ///< folder of the record files
    unsigned callsPerMinute = 30;                 ///< on average; 0 for none
    std::optional<std::uint32_t> seed;
    std::uint64_t once = 0; ///< write so many records and end; 0: run until stopped
    bool pull = false;
    std::optional<std::string> pullFailure; ///< count a failed transfer with this reason
};

/// Reads the command line and the environment. Returns the exit code when the program is to end: 0 after help, 2 on
/// wrong usage.
std::optional<int> readOptions(int argc, char** argv, Options& options);

} // namespace cdrsim
