// Texts for a terminal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cdrctl {

/// The text with control characters, which a terminal could obey, and broken UTF-8 replaced.
std::string printable(std::string_view text);

/// Columns as wide as their longest cell, two blanks between them; the last column is not filled up.
class Table {
  public:
    void row(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
    bool empty() const { return rows_.empty(); }
    /// Each row on a line of its own behind `indent`.
    std::string text(const std::string& indent = "") const;

  private:
    std::vector<std::vector<std::string>> rows_;
};

/// A bar of `width` characters, `share` of it (0 to 1) filled.
std::string bar(double share, unsigned width);

/// A number of bytes for people: "17", "3.4 kB", "1.2 GB".
std::string bytesText(double bytes);

/// The least number of insertions, deletions and replacements that make one of the other, ignoring case.
std::size_t editDistance(std::string_view a, std::string_view b);

} // namespace cdrctl
