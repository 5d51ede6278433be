#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>

namespace zpo {

/// What a status means. Texts are never null; `advice` is empty where there is none.
struct StatusRow {
    std::uint32_t status;
    const char* name;
    const char* text;
    const char* advice;
};

/// The row of the status; null when the table has none.
template <std::size_t count>
const StatusRow* findRow(const StatusRow (&table)[count], std::uint32_t status) {
    const auto* const end = std::end(table);
    const auto* const found =
        std::find_if(std::begin(table), end, [status](const StatusRow& row) { return row.status == status; });
    return found == end ? nullptr : found;
}

/// "no such entry (0x20000d)"; `unknown` when there is no row.
inline std::string textWithNumber(const StatusRow* row, std::uint32_t status, const char* unknown) {
    char number[16];
    std::snprintf(number, sizeof number, " (0x%x)", status);
    return (row == nullptr ? unknown : row->text) + std::string(number);
}

} // namespace zpo
