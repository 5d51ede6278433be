// Whether the server can do its work now: what a request for /ready is answered.
#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace cimserver {

/// How long the ready command may take.
constexpr std::chrono::milliseconds kLongestReadyCommand{5000};

/// All members may be called from any thread. A check runs on a thread of its own, one at a time; its result is good
/// for a second, so that nobody can make the server check all the time.
class Readiness {
  public:
    using Answer = std::function<void(const std::string& problems)>;

    /// `command` is run for each check (see runProgram) and must succeed; empty: none. `problems` gives what else is
    /// wrong, a line each; called on the checking thread.
    Readiness(std::string command, std::function<std::string()> problems)
        : command_(std::move(command)), problems_(std::move(problems)) {}
    ~Readiness() { stop(); }
    Readiness(const Readiness&) = delete;
    Readiness& operator=(const Readiness&) = delete;

    /// Calls `answer` with what is wrong, a line each, now or after a check, on any thread.
    void ask(Answer answer);
    /// Returns when no check is under way, after at most some seconds. Requests after that are answered "stopping".
    void stop();

  private:
    using Clock = std::chrono::steady_clock;

    void check();

    const std::string command_;
    const std::function<std::string()> problems_;
    std::mutex mutex_; ///< guards the members below
    std::vector<Answer> waiting_;
    std::string result_;
    Clock::time_point checked_{};
    bool checking_ = false;
    bool stopped_ = false;
    std::thread thread_;
};

} // namespace cimserver
