#include "CrontabBackend.hpp"
#include "Files.hpp"
#include "ZpoShared.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zpo {
namespace {

constexpr std::chrono::seconds kLongestRun{10};
constexpr int kKilled = -1;
constexpr int kLost = -2; // the host process has reaped the child itself

struct Outcome {
    int error = 0;    // an errno when the program could not be run or its output not be read
    int exitCode = 0; // or kKilled, kLost
    std::string output, messages;
};

// Memory files instead of pipes: nothing to pump, and no SIGPIPE when the program ends early.
UniqueFd memoryFile(const std::string& content) {
    UniqueFd fd(memfd_create("crontab", MFD_CLOEXEC));
    if (fd && (writeAll(fd.get(), content) != 0 || lseek(fd.get(), 0, SEEK_SET) != 0)) {
        fd.reset();
    }
    return fd;
}

class SpawnSetup {
  public:
    SpawnSetup() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawnattr_init(&attributes_);
        sigset_t all;
        sigfillset(&all);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
    ~SpawnSetup() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }

    void standard(int number, const UniqueFd& fd) { posix_spawn_file_actions_adddup2(&actions_, fd.get(), number); }

    // Returns 0 or an errno. A set-user-ID program does not search its caller's PATH for crontab.
    int run(pid_t& child, const char* argument) {
        char name[] = "crontab";
        char path[] = "PATH=/usr/bin:/bin";
        char locale[] = "LC_ALL=C"; // the message for a missing table is recognised
        std::string option(argument);
        char* arguments[] = {name, option.data(), nullptr};
        std::string search = "PATH=";
        const char* given = getauxval(AT_SECURE) == 0 ? getenv("PATH") : nullptr;
        search = given != nullptr ? search + given : path;
        char* environment[] = {search.data(), locale, nullptr};
        return given != nullptr
                   ? posix_spawnp(&child, name, &actions_, &attributes_, arguments, environment)
                   : posix_spawn(&child, "/usr/bin/crontab", &actions_, &attributes_, arguments, environment);
    }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

// Waits for the program to end, and kills one that takes too long.
int waitFor(pid_t child) {
    const UniqueFd handle(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
    pollfd ended{handle.get(), POLLIN, 0};
    const auto deadline = std::chrono::steady_clock::now() + kLongestRun;
    int ready = -1;
    while (handle && ready < 0) { // again after a signal
        const auto left = deadline - std::chrono::steady_clock::now();
        ready = poll(&ended, 1, std::max(0, static_cast<int>(left / std::chrono::milliseconds(1))));
    }
    if (ready == 0) {
        kill(child, SIGKILL);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return kLost;
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kKilled;
}

Outcome runCrontab(const char* argument, const std::string& input) {
    Outcome outcome;
    const UniqueFd in = memoryFile(input);
    const UniqueFd out = memoryFile("");
    const UniqueFd messages = memoryFile("");
    if (!in || !out || !messages) {
        outcome.error = EMFILE;
        return outcome;
    }
    SpawnSetup setup;
    setup.standard(STDIN_FILENO, in);
    setup.standard(STDOUT_FILENO, out);
    setup.standard(STDERR_FILENO, messages);
    pid_t child = -1;
    outcome.error = setup.run(child, argument);
    if (outcome.error != 0) {
        return outcome;
    }
    outcome.exitCode = waitFor(child);
    outcome.error = readFile(out.get(), kMaxCrontabBytes, outcome.output);
    readFile(messages.get(), 4096, outcome.messages);
    return outcome;
}

// ZPO_OK unless the program could not be run or wrote too much.
std::uint32_t statusOf(const Outcome& outcome) {
    switch (outcome.error) {
    case 0:
        return ZPO_OK;
    case EFBIG:
        return ZPO_SCHED_TABLE_TOO_LARGE;
    case ENOENT:
    case EACCES:
    case ENOEXEC:
    case ENOTDIR:
        return ZPO_SCHED_NO_PROGRAM;
    default:
        return ZPO_SCHED_NO_RESOURCES;
    }
}

bool saysMissing(const std::string& messages) {
    return messages.find("no crontab for") != std::string::npos ||
           messages.find("No such file or directory") != std::string::npos;
}

class CrontabProgram final : public CrontabBackend {
  public:
    std::uint32_t read(std::string& table) override {
        Outcome outcome = runCrontab("-l", "");
        const std::uint32_t status = statusOf(outcome);
        if (status != ZPO_OK) {
            return status;
        }
        if (outcome.exitCode != 0 && saysMissing(outcome.messages)) {
            return ZPO_OK;
        }
        table = std::move(outcome.output);
        return succeeded(outcome) ? ZPO_OK : ZPO_SCHED_NOT_READABLE;
    }

    std::uint32_t write(const std::string& table) override {
        if (table.size() > kMaxCrontabBytes) {
            return ZPO_SCHED_TABLE_TOO_LARGE;
        }
        // crontab refuses a table whose last line lacks its line feed.
        const bool ended = table.empty() || table.back() == '\n';
        const Outcome outcome = runCrontab("-", ended ? table : table + '\n');
        const std::uint32_t status = statusOf(outcome);
        return status != ZPO_OK || succeeded(outcome) ? status : ZPO_SCHED_NOT_WRITABLE;
    }

  private:
    // When the exit code is lost, no message means success.
    static bool succeeded(const Outcome& outcome) {
        return outcome.exitCode == 0 || (outcome.exitCode == kLost && outcome.messages.empty());
    }
};

} // namespace

std::unique_ptr<CrontabBackend> makeCrontabProgram() {
    return std::make_unique<CrontabProgram>();
}

} // namespace zpo
