#include "cimserver/Process.hpp"

#include "cimserver/common/Log.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <utility>

namespace cimserver {
namespace {

constexpr const char* kComponent = "cimserverd";
constexpr const char* kLockFile = "cimserverd.lock";

int signalPipe = -1; // global, because the signal handler needs it

void onSignal(int number) {
    const int saved = errno;
    const auto byte = static_cast<unsigned char>(number);
    // A full pipe means that more than enough signals are waiting.
    [[maybe_unused]] const auto written = ::write(signalPipe, &byte, 1);
    errno = saved;
}

void ignore(int) {}

void handle(int number, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(number, &action, nullptr);
}

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

Descriptor lockIn(const std::filesystem::path& directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    const auto file = (directory / kLockFile).string();
    Descriptor lock(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0640));
    if (lock.get() < 0) {
        fail("cannot use the state directory " + directory.string());
    }
    if (::flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
        std::string holder;
        std::getline(std::ifstream(file), holder);
        throw StateInUse("the state directory " + directory.string() + " is in use by another server, process " +
                         holder);
    }
    const auto text = std::to_string(::getpid()) + "\n";
    if (::ftruncate(lock.get(), 0) != 0 || ::write(lock.get(), text.data(), text.size()) < 0) {
        fail("cannot write " + file);
    }
    return lock;
}

} // namespace

Signals::Signals() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        fail("cannot make a pipe");
    }
    ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
    read_ = Descriptor(ends[0]);
    signalPipe = ends[1]; // stays open: a signal may come at any time
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGUSR1}) {
        handle(number, onSignal);
    }
    handle(SIGPIPE, ignore);
}

int Signals::next(std::chrono::milliseconds limit) {
    pollfd wanted{read_.get(), POLLIN, 0};
    if (::poll(&wanted, 1, static_cast<int>(limit.count())) != 1) { // also when interrupted: the next call finds it
        return 0;
    }
    unsigned char number = 0;
    while (::read(read_.get(), &number, 1) != 1) {
    }
    return number;
}

Descriptor redirectStandardOutput(const std::string& where) {
    std::fflush(stdout);
    Descriptor own(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3));
    if (where == "inherit") {
        return own;
    }
    const std::string file = where == "null" ? "/dev/null" : where;
    const Descriptor target(::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0640));
    if (target.get() < 0 || ::dup2(target.get(), STDOUT_FILENO) < 0) {
        fail("cannot write the providers' output to " + file);
    }
    // Line-buffered, so that each line appears when it is printed. With the old buffer glibc would keep the old mode.
    static char buffer[BUFSIZ];
    std::setvbuf(stdout, buffer, _IOLBF, sizeof buffer);
    return own;
}

StateLock::StateLock(std::filesystem::path directory)
    : directory_(std::move(directory)), lock_(directory_.empty() ? Descriptor() : lockIn(directory_)) {}

bool StateLock::isCurrent() const {
    return isFileAt(lock_.get(), (directory_ / kLockFile).c_str());
}

void StateLock::follow() noexcept {
    try {
        if (directory_.empty() || isCurrent()) {
            return;
        }
        lock_ = lockIn(directory_);
        failing_ = false;
        log::write(log::Level::Info, kComponent, "the state directory was replaced; locked the new one");
    } catch (const std::exception& error) {
        if (!std::exchange(failing_, true)) {
            log::write(log::Level::Error, kComponent, error.what());
        }
    }
}

void writeFile(const std::filesystem::path& file, const std::string& text) {
    const auto fresh = file.string() + ".new";
    std::ofstream out(fresh);
    out << text;
    out.close();
    if (!out || ::rename(fresh.c_str(), file.c_str()) != 0) {
        fail("cannot write " + file.string());
    }
}

} // namespace cimserver
