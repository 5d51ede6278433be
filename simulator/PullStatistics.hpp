// The statistics of files that clients fetch from the device: section CDRPull of the registry.
#pragma once

#include "RecordFolder.hpp"

#include <ctime>
#include <string>
#include <vector>

namespace cdrsim {

/// Counts one transfer of these files that succeeded. Throws when the registry fails.
void countPull(const std::vector<FinishedFile>& files, std::time_t now);

/// Counts one transfer that failed. Throws when the registry fails.
void countFailedPull(const std::string& reason, std::time_t now);

/// Whether clients fetch the files: the transfer type of the push settings is 3, or there is none.
bool isPullSet();

} // namespace cdrsim
