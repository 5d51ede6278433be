#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zpo {

/// The operations behind ZpoDiagRegisterModule, ZpoDiagAddLogEntry and ZpoDiagDeregisterModule; see there.
std::uint32_t registerModule(const char* moduleFile, const char* component, const char* moduleName, const char* logFile,
                             std::uint32_t* handle);
std::uint32_t addLogEntry(std::uint32_t handle, std::int32_t category, std::int32_t level, std::int32_t identifier,
                          const char* text);
std::uint32_t deregisterModule(std::uint32_t handle);

/// Writes an entry of the library itself to ZpoShared.log; a failure is ignored.
void logInternal(std::int32_t level, const std::string& text) noexcept;

/// The text as it stands in a log line: control characters and backslashes escaped, the rest as it is.
std::string escapeLogText(std::string_view text);

} // namespace zpo
