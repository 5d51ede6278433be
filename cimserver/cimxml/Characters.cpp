#include "Characters.hpp"

namespace cimserver::cimxml {
namespace {

bool allowed(char32_t c) {
    if (c < 0x20) {
        return c == '\t' || c == '\n' || c == '\r';
    }
    return c <= 0xD7FF || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

unsigned byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

/// Bytes of the sequence that a lead byte opens; 0 when no sequence starts so.
std::size_t sequenceLength(unsigned lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/// The smallest character that needs a sequence of that length: anything below is an overlong form.
constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};

int hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace

Decoded decodeCharacter(std::string_view text) {
    const unsigned lead = byteAt(text, 0);
    const std::size_t length = sequenceLength(lead);
    if (length <= 1) {
        return {lead, 1, length == 1 && allowed(lead)};
    }
    char32_t character = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (i >= text.size() || (byteAt(text, i) & 0xC0U) != 0x80U) {
            return {0, i, false};
        }
        character = (character << 6U) | (byteAt(text, i) & 0x3FU);
    }
    return {character, length, character >= smallest[length] && allowed(character)};
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        if (low < 0) {
            decoded += text[i];
            continue;
        }
        decoded += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return decoded;
}

} // namespace cimserver::cimxml
