// Access to settings that report by status: 0, or 100 and 101 when the registry fails, which is logged.
#pragma once

#include "DiagnosticLog.hpp"
#include "Registry.hpp"

namespace cdroam {

/// Reads a setting into the cache and shows it; a failed read shows the zero of its kind. `Kind` as in Registry.hpp.
template <class Kind, class Value>
int readSetting(const char* accessor, const Entry& entry, typename Kind::Cache& cache, Value& value) {
    const std::uint32_t status = Kind::load(entry, cache);
    if (status != 0) {
        (void)writeError(accessor, status);
        Kind::zero(value);
        return ReadFailed;
    }
    Kind::decode(cache, value);
    return Success;
}

/// Writes a setting. The cache takes the value first: it holds it also when the write fails.
template <class Kind, class Value>
int writeSetting(const char* accessor, const Entry& entry, typename Kind::Cache& cache, const Value& value) {
    cache = Kind::encode(value);
    const std::uint32_t status = Kind::store(entry, cache);
    if (status != 0) {
        (void)writeError(accessor, status);
        return WriteFailed;
    }
    return Success;
}

} // namespace cdroam
