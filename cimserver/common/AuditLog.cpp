#include "cimserver/common/AuditLog.hpp"

#include "cimserver/common/Descriptor.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/common/Text.hpp"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <memory>
#include <mutex>
#include <stdexcept>

namespace cimserver::audit {

namespace {

constexpr const char* kSyslog = "/dev/log";
constexpr const char* kProgram = "cimserverd";
constexpr timeval kSyslogPatience{1, 0};

/// Where the record goes. The functions return 0 or an error number.
class Target {
  public:
    explicit Target(const std::string& name) : path_(name == "syslog" ? kSyslog : name) {}

    int open();
    /// Appends a line, whole or, when the disk is full, as something that the next line does not run into.
    int append(const std::string& line);
    /// Waits until the lines are on disk.
    int sync() const;
    const std::string& path() const { return path_; }

  private:
    int connect();
    int send(const std::string& line) const;
    bool isMoved() const;

    const std::string path_;
    Descriptor fd_;
    bool socket_ = false;
    bool torn_ = false; ///< the file ends in the middle of a line
};

int Target::open() {
    struct stat state {};
    // Once a socket, always one: while syslog is started anew there is none.
    socket_ = socket_ || path_ == kSyslog || (::stat(path_.c_str(), &state) == 0 && S_ISSOCK(state.st_mode));
    if (socket_) {
        return connect();
    }
    Descriptor fresh(::open(path_.c_str(), O_RDWR | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0640));
    if (fresh.get() < 0) {
        return errno;
    }
    char last = '\n';
    torn_ = ::fstat(fresh.get(), &state) == 0 && state.st_size > 0 &&
            ::pread(fresh.get(), &last, 1, state.st_size - 1) == 1 && last != '\n';
    fd_ = std::move(fresh);
    return 0;
}

int Target::connect() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path_.size() >= sizeof address.sun_path) {
        return ENAMETOOLONG;
    }
    path_.copy(address.sun_path, path_.size());
    Descriptor fresh(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ::setsockopt(fresh.get(), SOL_SOCKET, SO_SNDTIMEO, &kSyslogPatience, sizeof kSyslogPatience);
    if (::connect(fresh.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return errno;
    }
    fd_ = std::move(fresh);
    return 0;
}

/// A record that was moved away, or removed, is begun anew.
bool Target::isMoved() const {
    struct stat mine {};
    struct stat named {};
    return fd_.get() < 0 || ::fstat(fd_.get(), &mine) != 0 || ::stat(path_.c_str(), &named) != 0 ||
           mine.st_ino != named.st_ino || mine.st_dev != named.st_dev;
}

int Target::send(const std::string& line) const {
    // Syslog adds the time.
    const auto text = "<" + std::to_string(LOG_AUTHPRIV | LOG_NOTICE) + ">" + kProgram + "[" +
                      std::to_string(::getpid()) + "]: audit " + line;
    return ::send(fd_.get(), text.data(), text.size(), MSG_NOSIGNAL) < 0 ? errno : 0;
}

int Target::append(const std::string& line) {
    if (socket_) {
        const int error = send(line);
        return error == 0 || open() != 0 ? error : send(line); // the other end may have been started anew
    }
    if (isMoved()) {
        if (const int error = open()) {
            return error;
        }
    }
    const auto text = (torn_ ? "\n" : "") + utcNow("%Y-%m-%dT%H:%M:%S+00:00 audit ") + line + "\n";
    const auto written = ::write(fd_.get(), text.data(), text.size());
    if (written == static_cast<ssize_t>(text.size())) {
        torn_ = false;
        return 0;
    }
    torn_ = torn_ || written > 0;
    return written < 0 ? errno : ENOSPC;
}

int Target::sync() const {
    const bool done = socket_ || ::fdatasync(fd_.get()) == 0 || errno == EINVAL || errno == EROFS; // no disk behind it
    return done ? 0 : errno;
}

/// The target with what is known of its state.
struct Record {
    explicit Record(const Settings& from) : target(from.target), optional(from.optional) {}

    bool write(std::string_view line, bool sync);
    std::string problem();

    std::mutex mutex;
    Target target;
    const bool optional;
    std::atomic<unsigned> missing{0}; ///< lines since the last that was written
    int error = 0;                    ///< why

  private:
    int tell(std::string_view line, bool sync);
};

std::unique_ptr<Record> record;

int Record::tell(std::string_view line, bool sync) {
    int result = 0;
    if (missing > 0) { // the gap is part of the record
        result = target.append(std::to_string(missing.load()) + " lines are missing here: " + std::strerror(error));
    }
    result = result == 0 && !line.empty() ? target.append(std::string(line)) : result;
    return result == 0 && sync ? target.sync() : result;
}

bool Record::write(std::string_view line, bool sync) {
    const std::lock_guard lock(mutex);
    const int result = tell(line, sync);
    if (result != 0 && missing == 0) {
        log::write(log::Level::Error, "audit", "cannot write " + target.path() + ": " + std::strerror(result));
    } else if (result == 0 && missing > 0) {
        log::write(log::Level::Info, "audit", "can write " + target.path() + " again");
    }
    error = result;
    missing = result == 0 ? 0 : missing + (line.empty() ? 0U : 1U);
    return result == 0;
}

std::string Record::problem() {
    if (missing == 0) { // without the lock: a thread may hold it as long as the disk takes
        return "";
    }
    return write("", false) ? "" : "the audit record cannot be written";
}

} // namespace

void configure(const Settings& settings) {
    record = settings.target.empty() ? nullptr : std::make_unique<Record>(settings);
    if (const int error = record ? record->target.open() : 0) {
        throw std::runtime_error("cannot write the audit record " + record->target.path() + ": " +
                                 std::strerror(error));
    }
}

bool begin(std::string_view line) noexcept {
    try {
        return !record || record->write(std::string(line) + " -> begun", true) || record->optional;
    } catch (...) {
        return record->optional;
    }
}

void end(std::string_view line) noexcept {
    try {
        if (record) {
            record->write(line, false);
        } else {
            log::audit(line);
        }
    } catch (...) { // out of memory: the line is lost
    }
}

std::string problem() noexcept {
    try {
        return record ? record->problem() : "";
    } catch (...) {
        return "out of memory";
    }
}

} // namespace cimserver::audit
