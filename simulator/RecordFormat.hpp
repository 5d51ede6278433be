// The simulator's record format: CSV, described in docs/SIMULATOR.md.
#pragma once

#include "Call.hpp"
#include "DigitBins.hpp"
#include "ServiceSettings.hpp"

#include <cstdint>
#include <ctime>
#include <string>

namespace cdrsim {

/// The lines with which a record file begins that was begun at that time; may be empty.
std::string headOf(const ServiceSettings& settings, std::time_t begun);

/// Whether a line of a record file belongs to its head.
bool isHeadLine(const std::string& line);

/// Whether the report filter and the filter duration leave the call in.
bool isReported(const ServiceSettings& settings, const Call& call);

/// The call's line with the line feed at its end. `number` counts the records.
std::string recordOf(const ServiceSettings& settings, const DigitBins& bins, const Call& call, std::uint64_t number);

/// A time of the machine's time zone in the form of strftime.
std::string timeText(std::time_t time, const char* form);

/// A text that differs when the schedule (0 to 4) has the record file clipped between two times.
std::string clipPeriod(std::uint32_t schedule, std::time_t time);

} // namespace cdrsim
