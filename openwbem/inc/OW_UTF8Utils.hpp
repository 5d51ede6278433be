// Functions on UTF-8 text.

#pragma once

#include "OW_ArrayFwd.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <cstddef>

namespace OpenWBEM {

/// Text is not UTF-8 or does not fit into 16-bit units.
OW_DECLARE_APIEXCEPTION(InvalidUTF8, OW_COMMON_API)

/// All text arguments must be NUL-terminated and not null; they may be malformed: nothing is read beyond the NUL.
namespace UTF8Utils {

/// Number of code points; of malformed text the number of bytes that can begin one.
OW_COMMON_API size_t charCount(const char* utf8str);
/// The first code point of the text; 0xFFFF if it does not fit into 16 bits or is malformed.
OW_COMMON_API UInt16 UTF8toUCS2(const char* utf8char);
/// The first code point of the text; 0xFFFFFFFF if it is malformed.
OW_COMMON_API UInt32 UTF8toUCS4(const char* utf8char);
/// The code point in UTF-8; empty for one above 0x10FFFF, and for 0.
OW_COMMON_API String UCS2toUTF8(UInt16 ucs2char);
OW_COMMON_API String UCS4toUTF8(UInt32 ucs4char);
/// Appends the same to sb.
OW_COMMON_API void UCS4toUTF8(UInt32 ucs4char, StringBuffer& sb);
/// 0 if the texts are equal with their case folded by Unicode's rules ("ss" equals a sharp s), independent of any
/// locale; else the difference of the first bytes that differ where the folded texts do, the end counting as 0. The
/// sign thus follows the spelling: "A" sorts before "_", "a" after it.
OW_COMMON_API int compareToIgnoreCase(const char* str1, const char* str2);
/// The text in 16-bit units. Throws InvalidUTF8Exception if it is malformed or has a code point above 0xFFFF.
OW_COMMON_API Array<UInt16> StringToUCS2(const String& input);
/// The text of 16-bit units, also of ones given as bytes in native order; an odd last byte is left out.
OW_COMMON_API String UCS2ToString(const Array<UInt16>& input);
OW_COMMON_API String UCS2ToString(const Array<char>& input);
OW_COMMON_API String UCS2ToString(const void* input, size_t inputLength);
/// Writes the ISO 8859-1 text source in UTF-8 to destination: capacity bytes at most, terminator included, never cut
/// within a character. With capacity 0 nothing is written.
OW_COMMON_API void ISO8859ToUTF8(const char* source, char* destination, size_t capacity);

} // namespace UTF8Utils

} // namespace OpenWBEM
