#include "Settings.hpp"

#include "Characters.hpp"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits.h>

namespace zpo {
namespace {

// Leaves room for the names of the files inside.
constexpr std::size_t kMaxDirectory = PATH_MAX - 256;

bool isUsableDirectory(const std::string& path) {
    return path.front() == '/' && path.size() <= kMaxDirectory && std::none_of(path.begin(), path.end(), isControl);
}

std::optional<std::string> directory(const char* variable, const char* fallback) {
    const char* value = secure_getenv(variable);
    if (value == nullptr || *value == '\0') {
        return fallback;
    }
    std::string path(value, strnlen(value, kMaxDirectory + 1));
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back(); // what lies above it is found by the last slash
    }
    return isUsableDirectory(path) ? std::optional(path) : std::nullopt;
}

std::optional<std::uint64_t> number(const char* variable, std::uint64_t fallback, std::uint64_t least,
                                    std::uint64_t most) {
    const char* value = secure_getenv(variable);
    if (value == nullptr || *value == '\0') {
        return fallback;
    }
    const char* end = value + std::strlen(value);
    std::uint64_t result = 0;
    const auto parsed = std::from_chars(value, end, result);
    const bool usable = parsed.ec == std::errc() && parsed.ptr == end && result >= least && result <= most;
    return usable ? std::optional(result) : std::nullopt;
}

std::optional<std::uint64_t> scaled(std::optional<std::uint64_t> value, std::uint64_t unit) {
    return value ? std::optional(*value * unit) : std::nullopt;
}

} // namespace

Settings readSettings() {
    Settings result;
    result.stateDirectory = directory("ZPO_STATE_DIR", "/var/lib/zpo");
    result.logDirectory = directory("ZPO_LOG_DIR", "/var/log/zpo");
    result.crontabDirectory = directory("ZPO_CRONTAB_DIR", "");
    result.sunday = number("ZPO_CRONTAB_SUNDAY", 7, 0, 7);
    if (result.sunday && *result.sunday != 0 && *result.sunday != 7) {
        result.sunday.reset();
    }
    result.registryBytes = scaled(number("ZPO_REGISTRY_MB", 16, 1, 1024), std::uint64_t{1} << 20U);
    result.logBytes = scaled(number("ZPO_LOG_KB", 1024, 16, 65536), std::uint64_t{1} << 10U);
    result.lockSeconds = number("ZPO_LOCK_TIMEOUT", 5, 1, 60);
    return result;
}

const Settings& settings() {
    // Never destroyed: the library's thread and late callers may read it while the process exits.
    static const Settings* const current = new Settings(readSettings());
    return *current;
}

} // namespace zpo
