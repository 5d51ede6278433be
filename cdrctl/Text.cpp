#include "cdrctl/Text.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/common/Utf8.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>

namespace cdrctl {
namespace {

bool isControl(char32_t c) {
    const bool direction = (c >= 0x200E && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || direction;
}

std::size_t widthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; }));
}

} // namespace

std::string printable(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto c = cimserver::decodeUtf8(text);
        if (c.valid && !isControl(c.code)) {
            result += text.substr(0, c.length);
        } else {
            result += c.valid && (c.code == '\n' || c.code == '\t') ? " " : "\xEF\xBF\xBD";
        }
        text.remove_prefix(c.length);
    }
    return result;
}

std::string Table::text(const std::string& indent) const {
    std::vector<std::size_t> widths;
    for (const auto& row : rows_) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], widthOf(row[i]));
        }
    }
    std::string result;
    for (const auto& row : rows_) {
        std::string line = indent;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::string(widths[i] - widthOf(row[i]) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        result += line + "\n";
    }
    return result;
}

std::string bar(double share, unsigned width) {
    const auto filled = static_cast<unsigned>(std::lround(std::clamp(share, 0.0, 1.0) * width));
    std::string result;
    for (unsigned i = 0; i < width; ++i) {
        result += i < filled ? "█" : "░";
    }
    return result;
}

std::string bytesText(double bytes) {
    constexpr const char* kUnits[] = {"", " kB", " MB", " GB"};
    std::size_t unit = 0;
    for (; bytes >= 1000 && unit + 1 < std::size(kUnits); ++unit) {
        bytes /= 1000;
    }
    char text[32];
    std::snprintf(text, sizeof text, unit == 0 ? "%.0f%s" : "%.1f%s", bytes, kUnits[unit]);
    return text;
}

std::size_t editDistance(std::string_view a, std::string_view b) {
    const std::string other = cimserver::folded(b);
    std::vector<std::size_t> costs(other.size() + 1);
    std::iota(costs.begin(), costs.end(), std::size_t{0});
    for (const char c : cimserver::folded(a)) {
        std::size_t diagonal = costs[0]++;
        for (std::size_t i = 0; i < other.size(); ++i) {
            const std::size_t replaced = diagonal + (c == other[i] ? 0 : 1);
            diagonal = costs[i + 1];
            costs[i + 1] = std::min({replaced, costs[i] + 1, costs[i + 1] + 1});
        }
    }
    return costs.back();
}

} // namespace cdrctl
