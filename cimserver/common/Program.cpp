#include "cimserver/common/Program.hpp"

#include "cimserver/common/Descriptor.hpp"
#include "cimserver/common/Text.hpp"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>
#include <vector>

namespace cimserver {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr std::size_t kMostOutput = 4096; // the rest is read and dropped
constexpr Milliseconds kEndStep{5};

/// Starts the command with its outputs in `output`. Returns 0 or an error number.
int start(const std::string& command, int output, pid_t& child) {
    std::vector<std::string> words;
    for (const auto word : split(command, ' ')) {
        words.emplace_back(word);
    }
    std::vector<char*> arguments;
    std::transform(words.begin(), words.end(), std::back_inserter(arguments),
                   [](std::string& word) { return word.data(); });
    arguments.push_back(nullptr);
    if (words.empty()) {
        return ENOENT;
    }
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
    const int error = ::posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    return error;
}

/// Reads until the program has closed its end. False when it has not by `end`.
bool readAll(int fd, Clock::time_point end, std::string& text) {
    char piece[1024];
    for (;;) {
        const auto left = std::chrono::ceil<Milliseconds>(end - Clock::now());
        pollfd wanted{fd, POLLIN, 0};
        const int ready = left <= Milliseconds(0) ? 0 : ::poll(&wanted, 1, static_cast<int>(left.count()));
        if (ready == 0) {
            return false;
        }
        if (ready < 0) { // by a signal: a read could take longer than until the end
            continue;
        }
        const auto count = ::read(fd, piece, sizeof piece);
        if (count == 0) {
            return true;
        }
        const auto size = count > 0 ? static_cast<std::size_t>(count) : 0;
        text.append(piece, std::min(size, kMostOutput - std::min(kMostOutput, text.size())));
    }
}

/// Its exit status; -1 when a signal ended it, it had to be killed, or another thread of the process has waited for it.
int finish(pid_t child, Clock::time_point end) {
    int status = 0;
    pid_t ended = 0;
    while ((ended = ::waitpid(child, &status, WNOHANG)) == 0) {
        if (Clock::now() > end) {
            ::kill(child, SIGKILL);
            ::waitpid(child, &status, 0);
            return -1;
        }
        std::this_thread::sleep_for(kEndStep);
    }
    return ended == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string lastLine(std::string_view text) {
    text = trimmed(text);
    const auto lines = split(text, '\n');
    return lines.empty() ? std::string() : std::string(trimmed(lines.back()));
}

} // namespace

ProgramResult runProgram(const std::string& command, Milliseconds limit) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return {false, command + ": " + std::strerror(errno)};
    }
    const Descriptor reader(ends[0]);
    Descriptor writer(ends[1]);
    pid_t child = -1;
    if (const int error = start(command, writer.get(), child)) {
        return {false, command + ": " + std::strerror(error)};
    }
    writer = Descriptor();
    std::string text;
    const auto end = Clock::now() + limit;
    const bool ended = readAll(reader.get(), end, text);
    const int status = finish(child, ended ? end : Clock::time_point());
    if (!ended) {
        return {false, command + ": has not ended after " + std::to_string(limit.count()) + " ms"};
    }
    const auto line = lastLine(text);
    return {status == 0,
            line.empty() && status != 0 ? command + ": has failed with status " + std::to_string(status) : line};
}

} // namespace cimserver
