// Characters at the edge: what XML 1.0 allows, between arbitrary bytes and UTF-8.
#pragma once

#include "OW_String.hpp"

#include <cstdint>
#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// One character read from UTF-8.
struct Decoded {
    char32_t character = 0;
    std::size_t length = 0; ///< bytes it takes, at least 1
    bool valid = false;     ///< well-formed and allowed in an XML document
};

/// Reads the character at the head of a text that is not empty.
Decoded decodeCharacter(std::string_view text);

/// %XX replaced by the byte it stands for; a % without two hexadecimal digits stays as it is.
std::string percentDecoded(std::string_view text);

inline std::string_view view(const OpenWBEM::String& text) {
    return {text.c_str(), text.length()};
}
inline std::string toStd(const OpenWBEM::String& text) {
    return std::string(view(text));
}
inline OpenWBEM::String toCim(std::string_view text) {
    return OpenWBEM::String(text.data(), text.size());
}

} // namespace cimserver::cimxml
