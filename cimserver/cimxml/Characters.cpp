#include "cimserver/cimxml/Characters.hpp"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace cimserver::cimxml {

bool isXmlCharacter(char32_t c) {
    if (c < 0x20) {
        return c == '\t' || c == '\n' || c == '\r';
    }
    return c <= 0xD7FF || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        const char* const end = text.data() + std::min(i + 3, text.size());
        const bool encoded = text[i] == '%' && end - text.data() == static_cast<std::ptrdiff_t>(i + 3) &&
                             std::from_chars(text.data() + i + 1, end, byte, 16).ptr == end;
        decoded += encoded ? static_cast<char>(byte) : text[i];
        i += encoded ? 2 : 0;
    }
    return decoded;
}

} // namespace cimserver::cimxml
