// The conversion that some OpenWBEM 3.0.3 builds lack; used only where the build finds none.
#pragma once

#include <cstddef>

namespace OpenWBEM {
namespace UTF8Utils {

/// Converts the NUL-terminated source. Writes at most `capacity` bytes with the terminating NUL and never cuts inside a
/// UTF-8 sequence.
void ISO8859ToUTF8(const char* source, char* destination, std::size_t capacity);

} // namespace UTF8Utils
} // namespace OpenWBEM
