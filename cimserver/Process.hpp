// What the server does to its process: signals, standard output, the lock of its state directory.
#pragma once

#include "cimserver/common/Descriptor.hpp"

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace cimserver {

/// Delivers SIGTERM, SIGINT, SIGHUP and SIGUSR1 by next(), and ignores SIGPIPE. Uses handlers, because programs that
/// providers start would inherit a signal mask or SIG_IGN. One object at a time.
class Signals {
  public:
    Signals();
    /// Waits for the next signal and returns its number; 0 when there is none within `limit`.
    int next(std::chrono::milliseconds limit);

  private:
    Descriptor read_;
};

/// Sends what providers print to `where`: a file, "null" or "inherit". Returns the original standard output, kept
/// from providers. Throws std::runtime_error naming the file.
Descriptor redirectStandardOutput(const std::string& where);

/// Another process has locked the state directory; the text names both.
class StateInUse : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Creates the directory if needed and locks it as long as the object lives.
class StateLock {
  public:
    /// Throws StateInUse when another process holds it, and std::runtime_error when it cannot be used. Without a
    /// directory nothing is locked.
    explicit StateLock(std::filesystem::path directory);

    /// To be called now and then: locks the directory anew when it was moved away, replaced or restored. What happens
    /// is logged once.
    void follow() noexcept;

  private:
    bool isCurrent() const;

    const std::filesystem::path directory_;
    Descriptor lock_;
    bool failing_ = false;
};

/// Replaces the file; readers see the old or the new content. Throws std::runtime_error naming it.
void writeFile(const std::filesystem::path& file, const std::string& text);

} // namespace cimserver
