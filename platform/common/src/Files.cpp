#include "Files.hpp"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace zpo {
namespace {

// The kernel's own wait for a file lock has no limit, so a bounded wait polls, in growing steps.
constexpr std::chrono::microseconds kShortestStep{50};
constexpr std::chrono::microseconds kLongestStep{1000};
constexpr off_t kTurnByte = 0;
constexpr off_t kLockByte = 1;

// Returns 0 or an errno, EAGAIN when another process or thread holds the lock.
int setLock(int fd, short type, off_t byte) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    return fcntl(fd, F_OFD_SETLK, &lock) == 0 ? 0 : errno;
}

// Returns 0 or an errno, ETIMEDOUT after the deadline.
int waitForLock(int fd, off_t byte, std::chrono::steady_clock::time_point deadline) {
    const auto start = std::chrono::steady_clock::now();
    int error = setLock(fd, F_WRLCK, byte);
    while (error == EAGAIN || error == EACCES) {
        const auto now = std::chrono::steady_clock::now();
        if (now >= deadline) {
            return ETIMEDOUT;
        }
        std::this_thread::sleep_for(
            std::clamp<std::chrono::nanoseconds>((now - start) / 8, kShortestStep, kLongestStep));
        error = setLock(fd, F_WRLCK, byte);
    }
    return error;
}

// Cron daemons skip names that contain a dot.
std::string temporaryName(const std::string& path) {
    return directoryOf(path) + "/.new." + path.substr(path.rfind('/') + 1) + ".XXXXXX";
}

int keepOwner(int fd, const std::string& path, mode_t mode) {
    struct stat old {};
    if (lstat(path.c_str(), &old) != 0 || !S_ISREG(old.st_mode)) {
        return fchmod(fd, mode) == 0 ? 0 : errno;
    }
    if ((old.st_uid != geteuid() || old.st_gid != getegid()) && fchown(fd, old.st_uid, old.st_gid) != 0) {
        return errno;
    }
    return fchmod(fd, old.st_mode & 07777U) == 0 ? 0 : errno;
}

int fillAndRename(int fd, const std::string& temporary, const std::string& path, std::string_view content,
                  mode_t mode) {
    if (const int error = keepOwner(fd, path, mode)) {
        return error;
    }
    if (const int error = writeAll(fd, content)) {
        return error;
    }
    if (fsync(fd) != 0 || rename(temporary.c_str(), path.c_str()) != 0) {
        return errno;
    }
    return 0;
}

} // namespace

std::string directoryOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

UniqueFd& UniqueFd::operator=(UniqueFd&& other) noexcept {
    if (this != &other) {
        reset();
        fd_ = other.release();
    }
    return *this;
}

void UniqueFd::reset() {
    if (fd_ >= 0) {
        close(release());
    }
}

UniqueFd openFile(const std::string& path, int flags, mode_t mode) {
    int fd = -1;
    do {
        fd = open(path.c_str(), flags | O_CLOEXEC, mode);
    } while (fd < 0 && errno == EINTR);
    return UniqueFd(fd);
}

int readFile(int fd, std::size_t limit, std::string& content) {
    content.clear();
    char chunk[16384];
    for (;;) {
        const ssize_t count = pread(fd, chunk, sizeof chunk, static_cast<off_t>(content.size()));
        if (count == 0) {
            return 0;
        }
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count > 0) {
            content.append(chunk, static_cast<std::size_t>(count));
        }
        if (content.size() > limit) {
            return EFBIG;
        }
    }
}

int readFile(const std::string& path, std::size_t limit, std::string& content) {
    content.clear();
    // Non-blocking, so that a FIFO in the file's place does not block the caller.
    const UniqueFd fd = openFile(path, O_RDONLY | O_NONBLOCK);
    return fd ? readFile(fd.get(), limit, content) : errno;
}

int writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(fd, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return 0;
}

int replaceFile(const std::string& path, std::string_view content, mode_t mode) {
    std::string temporary = temporaryName(path);
    const UniqueFd fd(mkostemp(temporary.data(), O_CLOEXEC));
    if (!fd) {
        return errno;
    }
    const int error = fillAndRename(fd.get(), temporary, path, content, mode);
    if (error != 0) {
        unlink(temporary.c_str());
        return error;
    }
    syncDirectory(directoryOf(path));
    return 0;
}

bool isDiskFull(const std::string& path) {
    struct statvfs disk {};
    return statvfs(path.c_str(), &disk) == 0 && disk.f_bavail == 0;
}

int ensureDirectory(const std::string& path) {
    if (mkdir(path.c_str(), 0755) == 0 || errno == EEXIST) {
        return 0;
    }
    const int error = errno;
    struct stat found {};
    return stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode) ? 0 : error;
}

void syncDirectory(const std::string& path) {
    if (const UniqueFd fd = openFile(path, O_RDONLY | O_DIRECTORY)) {
        fsync(fd.get());
    }
}

FileLock::~FileLock() {
    if (fd_) {
        setLock(fd_.get(), F_UNLCK, kLockByte); // closing alone would leave it to a child forked meanwhile
    }
}

// Two bytes of the file are locked: whoever holds the turn byte gets the lock next. So a process that takes the lock
// again and again cannot starve the others.
int FileLock::acquire(const std::string& path, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    fd_ = openFile(path, O_RDWR | O_CREAT, 0660);
    int error = fd_ ? waitForLock(fd_.get(), kTurnByte, deadline) : errno;
    if (error == 0) {
        error = waitForLock(fd_.get(), kLockByte, deadline);
        setLock(fd_.get(), F_UNLCK, kTurnByte);
    }
    if (error != 0) {
        fd_.reset();
    }
    return error;
}

} // namespace zpo
