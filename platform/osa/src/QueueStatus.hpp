#pragma once

#include "StatusRow.hpp"

#include <cstdint>
#include <string>

namespace zpo {

/// A failure of osa.h; null when there is none of that number.
const StatusRow* findQueueStatus(std::uint32_t status);

/// A failure of osa.h in words, with its number: "no such queue (0x300003)".
std::string queueStatusText(std::uint32_t status);

} // namespace zpo
