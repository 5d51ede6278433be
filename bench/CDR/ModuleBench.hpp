// The module in process, through its provider.
#pragma once

#include "Measure.hpp"
#include "Report.hpp"

namespace bench {

/// Reads of each class beside as many raw reads of the registry's file; changes beside a raw durable commit and a
/// message. Needs a process whose platform libraries have not been used yet.
void benchModule(Report& report, const Effort& effort);

} // namespace bench
