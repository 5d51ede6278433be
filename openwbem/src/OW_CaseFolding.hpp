// Unicode case folding.

#pragma once

#include "OW_Types.hpp"

#include <array>

namespace OpenWBEM {

/// The code points that stand for this one when case is ignored, up to three, padded with 0: "ss" for a sharp s, for
/// most the code point itself.
std::array<UInt32, 3> foldCase(UInt32 codePoint);

} // namespace OpenWBEM
