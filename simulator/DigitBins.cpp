#include "DigitBins.hpp"

#include "ZpoShared.h"

namespace cdrsim {
namespace {

constexpr std::size_t kPrefixWidth = 8;
constexpr std::size_t kAccessWidth = 6;
constexpr std::size_t kAccessDigits = 5;
constexpr unsigned char kEmptyPosition = 12;

std::string decodeDigits(const unsigned char* row, std::size_t count) {
    std::string digits;
    for (std::size_t i = 0; i < count && row[i] <= 9; ++i) {
        digits += static_cast<char>('0' + row[i]);
    }
    return digits;
}

bool beginsWith(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

template <std::size_t size>
std::array<unsigned char, size> readTable(const char* key) {
    std::array<unsigned char, size> table{};
    if (ZpoGetRegEntryBinary("CDR", "CDRService", key, table.data(), size) != ZPO_OK) {
        table.fill(kEmptyPosition);
    }
    return table;
}

} // namespace

std::string DigitBins::prefixOf(const std::string& digits) const {
    std::string longest;
    for (const std::string& prefix : prefixes) {
        if (prefix.size() > longest.size() && beginsWith(digits, prefix)) {
            longest = prefix;
        }
    }
    return longest;
}

AccessBin DigitBins::accessOf(const std::string& digits) const {
    AccessBin longest;
    for (const AccessBin& bin : access) {
        if (bin.code.size() > longest.code.size() && beginsWith(digits, bin.code)) {
            longest = bin;
        }
    }
    return longest;
}

DigitBins decodeBins(const PrefixTable& prefixes, const AccessTable& access) {
    DigitBins bins;
    for (std::size_t at = 0; at < prefixes.size(); at += kPrefixWidth) {
        if (std::string digits = decodeDigits(&prefixes.at(at), kPrefixWidth); !digits.empty()) {
            bins.prefixes.push_back(std::move(digits));
        }
    }
    for (std::size_t at = 0; at < access.size(); at += kAccessWidth) {
        if (std::string digits = decodeDigits(&access.at(at), kAccessDigits); !digits.empty()) {
            bins.access.push_back({std::move(digits), access.at(at + kAccessDigits)});
        }
    }
    return bins;
}

DigitBins readDigitBins() {
    return decodeBins(readTable<std::tuple_size<PrefixTable>::value>("PREFIX BIN"),
                      readTable<std::tuple_size<AccessTable>::value>("ACCESS BIN"));
}

} // namespace cdrsim
