#include "DigitBin.hpp"

#include <cctype>
#include <cstdlib>
#include <cstring>

namespace cdroam {
namespace {

bool isDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

} // namespace

const char* decodeDigits(const char* row, int length, DigitText& text) {
    const int room = static_cast<int>(text.size()) - 1;
    std::size_t used = 0;
    for (int i = 0; i < std::min(length, room) && static_cast<unsigned char>(row[i]) < kNoDigit; ++i) {
        text.at(used++) = static_cast<char>(row[i] + '0');
    }
    text.at(used) = '\0';
    return text.data();
}

int encodeDigits(char* row, const char* text, int length) {
    const int given = static_cast<int>(std::strlen(text));
    std::fill_n(row, length, static_cast<char>(kNoDigit));
    for (int i = 0; i < std::min(given, length) && isDigit(text[i]); ++i) {
        row[i] = static_cast<char>(text[i] - '0');
    }
    return given;
}

int allDigits(char* text, int maximum) {
    if (text == nullptr || maximum < 0) {
        return 0;
    }
    if (std::strlen(text) > static_cast<std::size_t>(maximum)) {
        text[maximum] = '\0';
    }
    return std::all_of(text, text + std::strlen(text), isDigit) ? 1 : 0;
}

int assignDigits(char* text, unsigned char lowest, unsigned char highest, unsigned char* destination) {
    if (text == nullptr || destination == nullptr || allDigits(text, static_cast<int>(std::strlen(text))) == 0) {
        return -1;
    }
    const auto number = static_cast<unsigned char>(std::strtol(text, nullptr, 10));
    if (number < lowest || number > highest) {
        return -1;
    }
    *destination = number;
    return 0;
}

} // namespace cdroam
