// Unicode case folding.

#pragma once

#include "OW_Types.hpp"

#include <array>

namespace OpenWBEM {

inline bool isASCII(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

/// ASCII letters only.
inline char toLowerASCII(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// What a code point becomes when case is ignored: up to three code points, padded with 0. "ss" for a sharp s; for
/// most, the code point itself.
std::array<UInt32, 3> foldCase(UInt32 codePoint);

} // namespace OpenWBEM
