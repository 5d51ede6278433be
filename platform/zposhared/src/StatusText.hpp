#pragma once

#include <cstdint>
#include <string>

namespace zpo {

/// One line for a person about a status of ZpoShared.h, with its number: "no such entry (0x20000d)".
std::string statusText(std::uint32_t status);

} // namespace zpo
