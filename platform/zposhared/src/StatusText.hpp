#pragma once

#include <cstdint>
#include <string>

namespace zpo {

/// A status of ZpoShared.h in words, with its number: "no such entry (0x20000d)".
std::string statusText(std::uint32_t status);

/// The text alone; null for a number that is no status.
const char* findStatusText(std::uint32_t status);

} // namespace zpo
