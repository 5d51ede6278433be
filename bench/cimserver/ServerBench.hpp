// The server measured from outside; each function adds its rows and points to the report.
#pragma once

#include "Measure.hpp"
#include "Report.hpp"

namespace bench {

/// Requests of 1 to 1,000 connections, beside the floor server's.
void benchLoad(Report& report, const Effort& effort);
/// From exec to the first answer, and resident memory after the start and after many requests.
void benchLife(Report& report, const Effort& effort);
/// Schemas of 1 to 1,500 classes: start, GetClass, resident memory.
void benchSchema(Report& report, const Effort& effort);

} // namespace bench
