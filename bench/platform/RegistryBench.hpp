// The registry behind the platform's C functions.
#pragma once

#include "Measure.hpp"
#include "Report.hpp"

namespace bench {

/// Reads and changes of a registry of 100 to 1,000,000 entries, beside raw LMDB; changes of 1 to 64 threads. Each size
/// in a process of its own.
void benchRegistry(Report& report, const Effort& effort);

} // namespace bench
