// The transfer's lines in the device's diagnostic log, CdrOAM.log.
#pragma once

#include <string>

namespace transfer::log {

/// Begin and end of runs.
void notice(const std::string& text);
/// What failed.
void failure(const std::string& text);

} // namespace transfer::log
