#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>

namespace zpo {

/// Owns a file descriptor.
class UniqueFd {
  public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : fd_(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fd_(other.release()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept;
    ~UniqueFd() { reset(); }

    int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }
    /// Returns the descriptor and no longer owns it.
    int release() { return std::exchange(fd_, -1); }
    void reset();

  private:
    int fd_ = -1;
};

/// The directory that an absolute path lies in.
std::string directoryOf(const std::string& path);

/// Opens a file with close-on-exec; retries an interrupted call. On failure the result is not open and errno says why.
UniqueFd openFile(const std::string& path, int flags, mode_t mode = 0);

/// Reads the whole file from its start. Returns 0 or an errno; EFBIG when it holds more than `limit` bytes.
int readFile(int fd, std::size_t limit, std::string& content);
int readFile(const std::string& path, std::size_t limit, std::string& content);

/// Writes all bytes at the descriptor's position. Returns 0 or an errno.
int writeAll(int fd, std::string_view bytes);

/// Replaces the content of the file at an absolute path atomically: a reader sees the old or the new one, also after a
/// power cut. Keeps owner and permissions of an existing file, otherwise creates it with `mode`. Returns 0, or an errno
/// with the file unchanged.
int replaceFile(const std::string& path, std::string_view content, mode_t mode);

/// Creates the directory unless it exists; its parent must exist. Returns 0 or an errno.
int ensureDirectory(const std::string& path);

/// Whether the file system of the path has no room for this user; false when that cannot be told.
bool isDiskFull(const std::string& path);

/// Makes the directory's entries durable. Best effort: some file systems cannot.
void syncDirectory(const std::string& path);

/// An exclusive lock on a file between processes and threads, held until destruction or the process's death. The file
/// stays.
class FileLock {
  public:
    FileLock() = default;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    /// Takes the lock, creating the file if needed; waits at most `timeout`. Returns 0 or an errno, ETIMEDOUT when the
    /// lock was not free in time.
    int acquire(const std::string& path, std::chrono::milliseconds timeout);

  private:
    UniqueFd fd_;
};

} // namespace zpo
