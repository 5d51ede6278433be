// The answer to "why did my push not run".
#pragma once

#include "StateFolder.hpp"

#include <string>

namespace transfer {

/// The settings' verdict, the schedule, the record folder and the last run: as lines for a person, or as one JSON
/// object. What cannot be read is told in its place.
std::string statusText(const StateFolder& state, const std::string& records);
std::string statusJson(const StateFolder& state, const std::string& records);

} // namespace transfer
