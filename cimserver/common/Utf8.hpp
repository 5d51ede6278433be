// Reads single characters from UTF-8, which may be broken, and writes them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cimserver {

/// One character read from UTF-8.
struct Character {
    char32_t code = 0;      ///< 0 when not valid
    std::size_t length = 0; ///< bytes it takes, at least 1
    bool valid = false;     ///< well-formed, and no surrogate
};

/// Reads the first character of a text, which must not be empty. A broken sequence is one character.
Character decodeUtf8(std::string_view text);

/// Appends the code in UTF-8. For a surrogate the result is not valid UTF-8.
void appendUtf8(std::string& to, char32_t code);

} // namespace cimserver
