// Access to statistics, which the transfer programs write into the registry. An absent entry is no failure; a failed
// read is logged and gives 100.
#pragma once

#include "DiagnosticLog.hpp"
#include "Registry.hpp"

namespace cdroam {

struct TextStatistic {
    Entry entry;
    const char* accessor; ///< as the log names it
    const char* label;    ///< as the warning about control characters names it
    std::string unread;   ///< what an absent entry and a failed read show
};

/// Reads a text into the cache and shows it; a text with control characters, and an empty one, is logged and shows
/// empty.
int readStatistic(const TextStatistic& statistic, Text& cache, std::string& value);

/// Reads a number; an absent entry shows 0 and is not created. `Kind` as in Registry.hpp.
template <class Kind, class Value>
int readStatistic(const Entry& entry, const char* accessor, typename Kind::Cache& cache, Value& value) {
    const std::uint32_t status = Kind::load(entry, cache);
    if (status == 0) {
        Kind::decode(cache, value);
        return Success;
    }
    Kind::zero(value);
    if (status == ZPO_REG_ENTRY_NOT_FOUND) {
        return Success;
    }
    (void)writeError(accessor, status);
    return ReadFailed;
}

} // namespace cdroam
