#include "LogSink.hpp"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <sys/stat.h>

namespace zpo {
namespace {

constexpr std::size_t kOlderFiles = 2;
constexpr std::chrono::seconds kRotationPatience{1};

[[noreturn]] void fail(const std::string& what) {
    throw spdlog::spdlog_ex(what, errno);
}

std::string numbered(const std::string& path, std::size_t number) {
    return spdlog::sinks::rotating_file_sink_st::calc_filename(path, number);
}

} // namespace

LogSink::LogSink(std::string path, std::uint64_t maxBytes) : path_(std::move(path)), maxBytes_(maxBytes) {
    set_formatter(std::make_unique<spdlog::pattern_formatter>("%Y-%m-%dT%H:%M:%S.%e%z %n[%P] %v"));
}

void LogSink::open() {
    constexpr mode_t kMode = 0640;
    constexpr int kFlags = O_WRONLY | O_APPEND | O_CREAT | O_NOCTTY | O_NONBLOCK;
    fd_ = openFile(path_, kFlags, kMode);
    if (!fd_ && errno == ENOENT && ensureDirectory(directoryOf(path_)) == 0) {
        fd_ = openFile(path_, kFlags, kMode);
    }
    if (!fd_) {
        fail(path_);
    }
}

bool LogSink::isCurrent() const {
    struct stat mine {};
    struct stat present {};
    return fd_ && fstat(fd_.get(), &mine) == 0 && stat(path_.c_str(), &present) == 0 && mine.st_ino == present.st_ino &&
           mine.st_dev == present.st_dev;
}

void LogSink::rotate(std::size_t lineLength) {
    struct stat status {};
    const auto isFull = [&] {
        return fstat(fd_.get(), &status) == 0 && status.st_size > 0 &&
               static_cast<std::uint64_t>(status.st_size) + lineLength > maxBytes_;
    };
    if (!isFull()) {
        return;
    }
    FileLock lock;
    if (lock.acquire(path_ + ".lock", kRotationPatience) != 0) {
        return; // better an overlong file than a lost line
    }
    if (isCurrent()) { // otherwise another process has just rotated it
        for (std::size_t number = kOlderFiles; number > 0; --number) {
            static_cast<void>(std::rename(numbered(path_, number - 1).c_str(), numbered(path_, number).c_str()));
        }
    }
    open();
}

void LogSink::append(const spdlog::memory_buf_t& line) {
    const int error = writeAll(fd_.get(), {line.data(), line.size()});
    lineIsOpen_ = error != 0;
    if (error != 0) {
        errno = error;
        fail(path_);
    }
}

void LogSink::sink_it_(const spdlog::details::log_msg& message) {
    spdlog::memory_buf_t line;
    if (lineIsOpen_) {
        line.push_back('\n');
    }
    formatter_->format(message, line);
    if (!isCurrent()) {
        open();
    }
    rotate(line.size());
    append(line);
}

} // namespace zpo
