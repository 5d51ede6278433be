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
    for (auto percent = text.find('%'); percent != std::string_view::npos; percent = text.find('%')) {
        unsigned char byte = 0;
        const std::string_view digits = text.substr(percent + 1, 2);
        const char* const end = digits.data() + digits.size();
        const bool encoded = digits.size() == 2 && std::from_chars(digits.data(), end, byte, 16).ptr == end;
        decoded += text.substr(0, percent);
        decoded += encoded ? static_cast<char>(byte) : '%';
        text.remove_prefix(percent + (encoded ? 3 : 1));
    }
    return decoded.append(text);
}

} // namespace cimserver::cimxml
