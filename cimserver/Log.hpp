// The server's log: one line an entry with time, level, component and text; control characters are escaped.
#ifndef CIMSERVER_LOG_HPP
#define CIMSERVER_LOG_HPP

#include <string_view>

namespace cimserver::log {

enum class Level { Debug, Info, Warning, Error, Fatal };

/// Writes one entry; from any thread. Never throws.
void write(Level level, std::string_view component, std::string_view text) noexcept;

/// True when an entry of this level would be written, so that a costly text is only built when needed.
bool enabled(Level level) noexcept;

/// An audit line: always written whatever the level is. The caller keeps secrets out of the text.
void audit(std::string_view text) noexcept;

} // namespace cimserver::log

#endif
