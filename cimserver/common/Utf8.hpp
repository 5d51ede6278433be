// Characters in UTF-8, between them and arbitrary bytes.
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

/// Reads the character at the head of a text that is not empty. A broken sequence is one character.
Character decodeUtf8(std::string_view text);

/// Appends any code as UTF-8 would have it; that of a surrogate is no valid character then.
void appendUtf8(std::string& to, char32_t code);

} // namespace cimserver
