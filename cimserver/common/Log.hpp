// The server's log: one line per entry with time, level, component and text; control characters are escaped. Where
// standard error goes to the journal, a line begins with its priority in place of time and level: the journal keeps
// both.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cimserver::log {

enum class Level { Debug, Info, Warning, Error, Fatal };

/// Where entries go. Until configure() is called they go to standard error from level Info on.
struct Settings {
    std::string file; ///< empty: standard error
    Level level = Level::Info;
    std::size_t maxBytes =
        std::size_t{10} * 1024 * 1024; ///< a file of this size is renamed (X.log to X.1.log) and begun anew
    std::size_t keep = 5;              ///< how many renamed files stay
};

/// Whether standard error goes to the journal.
bool isJournal() noexcept;

/// Applies the settings; call before other threads log. Throws std::runtime_error when the file cannot be written.
void configure(const Settings& settings);

/// Opens the log file anew, for it may have been moved away; from any thread. A new file has the mode of the old one.
/// When there is none to be opened, the old one stays in use.
void reopen() noexcept;

/// To be called now and then: does the same when the path no longer leads to the file in use.
void follow() noexcept;

/// Writes one entry; from any thread. Never throws.
void write(Level level, std::string_view component, std::string_view text) noexcept;

/// The text with control characters escaped, as entries show them.
std::string escaped(std::string_view text);

/// True when an entry of this level would be written: lets callers build a costly text only when needed.
bool enabled(Level level) noexcept;

/// Writes an audit line, whatever the level. The caller keeps secrets out of the text.
void audit(std::string_view text) noexcept;

} // namespace cimserver::log
