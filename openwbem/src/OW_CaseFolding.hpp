// Unicode case folding.

#pragma once

#include "OW_Types.hpp"

namespace OpenWBEM {

/// The code point that stands for this one when case is ignored; the code point itself for most.
UInt32 foldCase(UInt32 codePoint);

} // namespace OpenWBEM
