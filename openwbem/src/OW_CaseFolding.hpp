// Unicode case folding.

#pragma once

#include "OW_Types.hpp"

#include <array>

namespace OpenWBEM {

/// What a code point becomes when case is ignored: up to three code points, padded with 0. "ss" for a sharp s; for
/// most, the code point itself.
std::array<UInt32, 3> foldCase(UInt32 codePoint);

} // namespace OpenWBEM
