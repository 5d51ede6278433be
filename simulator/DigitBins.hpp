// The bins in the registry: entries "PREFIX BIN", 8 rows of 8 digit positions, and "ACCESS BIN", 5 rows of 5 digit
// positions and a suppress count. A position is one byte with the digit's value; another value ends the row's digits.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace cdrsim {

struct AccessBin {
    std::string code;
    std::size_t suppress = 0; ///< how many of the dialled digits are suppressed
};

/// The bins that are not empty.
struct DigitBins {
    std::vector<std::string> prefixes;
    std::vector<AccessBin> access;

    /// The longest prefix with which the digits begin; empty when there is none.
    std::string prefixOf(const std::string& digits) const;
    /// The bin of the longest access code with which the digits begin; one with an empty code when there is none.
    AccessBin accessOf(const std::string& digits) const;
};

using PrefixTable = std::array<unsigned char, 64>;
using AccessTable = std::array<unsigned char, 30>;
DigitBins decodeBins(const PrefixTable& prefixes, const AccessTable& access);

/// The bins in the registry; a table that cannot be read has no rows.
DigitBins readDigitBins();

} // namespace cdrsim
