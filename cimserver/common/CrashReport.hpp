// What a crash leaves behind: a line that names the signal and the work under way, and a stack. Both go to standard
// error and to the log file.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace cimserver::crash {

/// Reports SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGSYS and SIGABRT from now on, and lets them have their default effect
/// afterwards: the process ends, with a core dump where these are enabled. A line of the stack is MODULE+OFFSET, as
/// addr2line takes it. `logFile` may be empty.
void install(const std::string& logFile);

/// From now on a crash ends the process at once. Before, that is at the start, it waits a second, so that one that is
/// started again at once does not take the processor by crashing over and over.
void startIsOver();

/// As long as it lives, a crash names the words, joined, as the work of the calling thread; those of the innermost
/// count. A crash in another thread names the work of all. Holds no secrets: the words are written as they are, but for
/// control characters. Also makes sure that the thread can report the overflow of its stack.
class Task {
  public:
    Task(std::initializer_list<std::string_view> words);
    ~Task();
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;

  private:
    std::size_t entry_; ///< of a table; its size when too many are under way: a crash then does not name this one
    std::size_t outer_;
};

} // namespace cimserver::crash
