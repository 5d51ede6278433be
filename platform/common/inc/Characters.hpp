#pragma once

#include <string_view>

namespace zpo {

/// Bytes 0 to 31 and 127.
inline bool isControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7f;
}

/// ASCII letters and digits, whatever the locale.
bool isAlphanumeric(char c);

/// 1 to 64 letters, digits, '.', '_' and '-', no leading dot: safe as a file's name within a directory.
bool isPlainName(std::string_view name);

constexpr std::size_t kMaxPlainName = 64;

} // namespace zpo
