#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zpo {

/// The platform's settings, from the environment. An empty optional means that the variable has an unusable value: what
/// needs it fails, instead of quietly using the default.
struct Settings {
    std::optional<std::string> stateDirectory;   ///< ZPO_STATE_DIR
    std::optional<std::string> logDirectory;     ///< ZPO_LOG_DIR
    std::optional<std::string> crontabDirectory; ///< ZPO_CRONTAB_DIR; empty: use the crontab program
    std::optional<std::uint64_t> sunday;         ///< ZPO_CRONTAB_SUNDAY: how a crontab line names the day 7, 7 or 0
    std::optional<std::uint64_t> registryBytes;  ///< ZPO_REGISTRY_MB, largest size of the registry in bytes
    std::optional<std::uint64_t> logBytes;       ///< ZPO_LOG_KB, size at which a log is rotated, in bytes
    std::optional<std::uint64_t> lockSeconds;    ///< ZPO_LOCK_TIMEOUT, longest wait for another process's lock
};

/// Reads the settings from the environment, or the defaults alone in a set-user-ID program.
Settings readSettings();

/// The process's settings, read at the first call.
const Settings& settings();

} // namespace zpo
