// The audit record: who changed what. A file or syslog of its own; without either, lines of the log.
#pragma once

#include <chrono>
#include <string>

namespace cimserver::audit {

struct Settings {
    std::string target;    ///< a file, "syslog", or a socket that is listened to like syslog's; empty: the log
    bool optional = false; ///< changes that cannot be recorded are made all the same
};

/// Opens the record; call before other threads write to it. Throws std::runtime_error when it cannot be written.
void configure(const Settings& settings);

/// Whether there is a record beside the log.
bool isKept();

/// Records a change that is about to be made; in a file it is on disk when this returns. False when the change must not
/// be made because it cannot be recorded. Does nothing when the log has the record: it cannot tell.
bool begin(const std::string& line);

/// Records how a request ended.
void end(const std::string& line);

/// Lines for refused requests of one user in a minute.
constexpr unsigned kMostRefusals = 60;
/// Records a request of the user that was refused before anything was begun. After kMostRefusals lines in a minute the
/// user's further ones are only counted, and the count is recorded afterwards: nobody may fill the disk with them.
void refused(const std::string& user, const std::string& line);
/// To be called now and then: records the counts whose minute is over.
void sumUp(std::chrono::steady_clock::time_point now);

/// What prevents the record from being written, as a line for monitoring; empty when nothing does.
std::string problem();

} // namespace cimserver::audit
