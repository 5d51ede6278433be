#include "Characters.hpp"

#include <algorithm>

namespace zpo {

bool isAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isPlainName(std::string_view name) {
    return !name.empty() && name.size() <= kMaxPlainName && name.front() != '.' &&
           std::all_of(name.begin(), name.end(),
                       [](char c) { return isAlphanumeric(c) || c == '.' || c == '_' || c == '-'; });
}

} // namespace zpo
