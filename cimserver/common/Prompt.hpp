// Passwords from a person, from standard input or from a file.
#pragma once

#include <iosfwd>
#include <string>

namespace cimserver {

/// The first line, without its end. A line that is longer than any password may be is cut, but stays too long. Throws
/// std::runtime_error when there is none.
std::string readPassword(std::istream& input);

/// Asks on standard error and reads from standard input, which must be a terminal, without showing what is typed.
std::string promptPassword(const char* text);

} // namespace cimserver
