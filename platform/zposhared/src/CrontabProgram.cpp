#include "CrontabBackend.hpp"
#include "Files.hpp"
#include "ZpoShared.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
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
constexpr std::size_t kMaxMessages = std::size_t{64} << 10U;
constexpr int kKilled = -1;
constexpr int kLost = -2; // the host process has reaped the child itself

struct Outcome {
    int error = 0;    // an errno when the program could not be run or its output not be read
    int exitCode = 0; // or kKilled, kLost
    std::string output, messages;
};

// A memory file instead of a pipe: nothing to pump, and no SIGPIPE when the program ends early.
UniqueFd memoryFile(const std::string& content) {
    UniqueFd fd(memfd_create("crontab", MFD_CLOEXEC));
    if (fd && (writeAll(fd.get(), content) != 0 || lseek(fd.get(), 0, SEEK_SET) != 0)) {
        fd.reset();
    }
    return fd;
}

/// A stream that the program writes to. Reading never blocks, and stops beyond the limit.
class Stream {
  public:
    explicit Stream(std::size_t limit) : limit_(limit) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) == 0) {
            reader_ = UniqueFd(ends[0]);
            writer_ = UniqueFd(ends[1]);
            fcntl(ends[0], F_SETFL, O_NONBLOCK);
        }
    }

    bool isOpen() const { return static_cast<bool>(reader_); }
    int reader() const { return reader_.get(); }
    const UniqueFd& writer() const { return writer_; }
    void closeWriter() { writer_.reset(); }
    bool isTooLong() const { return text.size() > limit_; }

    /// Takes what is there.
    void take() {
        char bytes[16384];
        while (reader_ && !isTooLong()) {
            const ssize_t count = read(reader_.get(), bytes, sizeof bytes);
            if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
                return;
            }
            if (count <= 0) {
                reader_.reset();
            }
            text.append(bytes, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        }
    }

    std::string text;

  private:
    const std::size_t limit_;
    UniqueFd reader_, writer_;
};

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

// Reads until the program ends, and kills one that takes too long or writes too much. Processes that it leaves behind
// are not waited for.
void readToEnd(pid_t child, Stream& output, Stream& messages) {
    const UniqueFd handle(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
    const auto deadline = std::chrono::steady_clock::now() + kLongestRun;
    while (handle || output.isOpen() || messages.isOpen()) {
        pollfd waited[] = {{handle.get(), POLLIN, 0}, {output.reader(), POLLIN, 0}, {messages.reader(), POLLIN, 0}};
        const auto left = deadline - std::chrono::steady_clock::now();
        const int ready = poll(waited, 3, std::max(0, static_cast<int>(left / std::chrono::milliseconds(1))));
        output.take();
        messages.take();
        if (ready > 0 && waited[0].revents != 0) {
            return;
        }
        if (left <= left.zero() || output.isTooLong() || messages.isTooLong()) {
            kill(child, SIGKILL);
            return;
        }
    }
}

int exitCodeOf(pid_t child) {
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
    Stream output(kMaxCrontabBytes);
    Stream messages(kMaxMessages);
    if (!in || !output.isOpen() || !messages.isOpen()) {
        outcome.error = EMFILE;
        return outcome;
    }
    SpawnSetup setup;
    setup.standard(STDIN_FILENO, in);
    setup.standard(STDOUT_FILENO, output.writer());
    setup.standard(STDERR_FILENO, messages.writer());
    pid_t child = -1;
    outcome.error = setup.run(child, argument);
    if (outcome.error != 0) {
        return outcome;
    }
    output.closeWriter();
    messages.closeWriter();
    readToEnd(child, output, messages);
    outcome.exitCode = exitCodeOf(child);
    outcome.error = output.isTooLong() ? EFBIG : 0;
    outcome.output = std::move(output.text);
    outcome.messages = std::move(messages.text);
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
        // crontab refuses a table whose last line lacks its line feed.
        const bool ended = table.empty() || table.back() == '\n';
        if (table.size() + (ended ? 0 : 1) > kMaxCrontabBytes) {
            return ZPO_SCHED_TABLE_TOO_LARGE;
        }
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
