// The module's entries in the platform's diagnostic log "CdrOAM.log".
#pragma once

#include <cstdint>

#pragma GCC visibility push(default)
extern "C" {
/// Handle of the diagnostic registration; 0 until the instance holder has registered the module.
extern std::uint32_t zpoHandle;
/// Text of the latest control-character warning, always NUL-terminated. Shared by all readers.
extern char controlLogBuffer[256];
}
#pragma GCC visibility pop

/// Logs "<operation> error = <code>" as an error. Returns the status of the platform's log call.
std::uint32_t writeError(const char* operation, unsigned long code);

namespace cdroam {

/// The platform's log levels.
enum LogLevel : std::int32_t { LogNotice = 1, LogWarning = 2, LogError = 4 };

/// Registers the module with the platform's diagnostics and keeps the handle. A failure is ignored.
void registerDiagnostics();
/// Ends the registration.
void deregisterDiagnostics();

/// Adds one entry. Returns the platform's status.
std::uint32_t addLogEntry(LogLevel level, const char* text);

/// Formats like printf and adds the entry; the text is cut at 1023 bytes. Returns the platform's status.
std::uint32_t logFormatted(LogLevel level, const char* format, ...) __attribute__((format(printf, 2, 3)));

/// Logs "<operation> error = <code>" at the level given.
std::uint32_t logFailure(LogLevel level, const char* operation, unsigned long code);

/// Warns that the stored text of the entry named by `label` holds control characters.
void logControlCharacters(const char* label);

} // namespace cdroam
