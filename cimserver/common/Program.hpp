// Runs another program for a short answer.
#pragma once

#include <chrono>
#include <string>

namespace cimserver {

struct ProgramResult {
    bool succeeded = false; ///< ended in time with exit status 0
    std::string text;       ///< the last line that it wrote, or why it failed
};

/// Runs a command, whose words are separated by blanks, without a shell and without input. It is killed after `limit`.
/// Blocks meanwhile; from any thread.
ProgramResult runProgram(const std::string& command, std::chrono::milliseconds limit);

} // namespace cimserver
