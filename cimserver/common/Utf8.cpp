#include "cimserver/common/Utf8.hpp"

#include <utf8.h>

#include <algorithm>
#include <iterator>

namespace cimserver {
namespace {

/// The length of a broken sequence: its first byte and the continuation bytes after it that it announces.
std::size_t brokenLength(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto lead = byte(0);
    const std::size_t announced = lead < 0xE0 || lead > 0xF4 ? 1 : lead < 0xF0 ? 3 : 4;
    std::size_t length = 1;
    while (length < std::min(announced, text.size()) && (byte(length) & 0xC0U) == 0x80U) {
        ++length;
    }
    return length;
}

} // namespace

Character decodeUtf8(std::string_view text) {
    constexpr std::size_t kLongest = 4;
    const char* next = text.data();
    if (utf8::find_invalid(next, next + std::min(kLongest, text.size())) == next) {
        return {0, brokenLength(text), false};
    }
    const char32_t code = utf8::unchecked::next(next);
    return {code, static_cast<std::size_t>(next - text.data()), true};
}

void appendUtf8(std::string& to, char32_t code) {
    utf8::unchecked::append(code, std::back_inserter(to));
}

} // namespace cimserver
