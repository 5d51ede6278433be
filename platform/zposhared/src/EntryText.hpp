#pragma once

#include "RegistryEntry.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace zpo {

// The text form of entries, one per line: COMPONENT SECTION KEY KIND VALUE, as in
//     CDR CDRService "FEATURE CODE" binary f9 12
//     CDR CDRPush TranTime text "02:30"
//     CDR CDRService DISKLIMIT int 200
// A word that is empty or holds a blank, a double quote, a backslash, '#' or a control character is written in double
// quotes, with the escapes \" \\ \n \t and \xNN. Empty lines and lines that begin with '#' are ignored.

/// One line, without the line feed.
std::string formatEntryText(const Entry& entry);

/// Appends the entries of a text. At the first line that is not an entry, or repeats a name, returns false and sets
/// `error` to "line 12: ..."; the entries before it have been appended.
bool parseEntries(std::string_view text, std::vector<Entry>& entries, std::string& error);

/// A value in its text form: binary as hexadecimal pairs ("000c", "00 0c"), an integer as decimal digits or 0x...
bool parseBinary(std::string_view text, std::string& bytes);
bool parseInteger(std::string_view text, std::string& bytes);
/// Bytes as lower-case pairs separated by blanks: "00 0c".
std::string formatBinary(std::string_view bytes);

} // namespace zpo
