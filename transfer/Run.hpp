// One run: every finished file of the record folder goes to the server.
//
// A file's way: "current" is written; the file goes up as NAME.ID.part; when its size there agrees, it is renamed to
// NAME; a line is added to "sent"; with DeleteFlag the local file is deleted. A run that is killed between any two
// steps leaves what the next one needs: "current" tells which file may have arrived without being remembered, and ID
// marks what is the beginning of this very file, so that only that is resumed.
#pragma once

#include "Console.hpp"
#include "FarEnd.hpp"
#include "PushSettings.hpp"
#include "Records.hpp"
#include "RunReport.hpp"
#include "StateFolder.hpp"

#include <chrono>
#include <string>

namespace transfer {

struct RunOptions {
    std::string records;             ///< the record folder
    std::chrono::seconds retryDelay; ///< before the first further try; doubled for each one after it, up to 5 minutes
};

/// Runs and keeps the report. The caller holds the lock. Never throws Failure.
RunReport runPush(const StateFolder& state, const RunOptions& options, Console& console);

/// Prints what a run would send now, and where. Throws Failure when a run could not begin.
void printPlan(const StateFolder& state, const RunOptions& options);

} // namespace transfer
