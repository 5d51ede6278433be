#pragma once

#include "StatusRow.hpp"

#include <cstdint>
#include <string>

namespace zpo {

/// A status of ZpoShared.h or osa.h; null when there is none of that number.
const StatusRow* findStatus(std::uint32_t status);

/// A status in words, with its number: "no such entry (0x20000d)".
std::string statusText(std::uint32_t status);

} // namespace zpo
