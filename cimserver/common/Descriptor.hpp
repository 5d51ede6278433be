// Owns a file descriptor, and tells whether its file has been moved away.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace cimserver {

class Descriptor {
  public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    int get() const { return fd_; }

  private:
    int fd_;
};

/// Whether the path still leads to the file that is open as `fd`; false for -1.
inline bool isFileAt(int fd, const char* path) {
    struct stat open {};
    struct stat named {};
    return ::fstat(fd, &open) == 0 && ::stat(path, &named) == 0 && open.st_ino == named.st_ino &&
           open.st_dev == named.st_dev;
}

} // namespace cimserver
