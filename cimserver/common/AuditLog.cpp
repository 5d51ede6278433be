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
#include <chrono>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>

namespace cimserver::audit {

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kSyslog = "/dev/log";
constexpr timeval kSyslogPatience{1, 0};

/// The record with what is known of its state. The functions return 0 or an error number.
class Record {
  public:
    explicit Record(const Settings& from)
        : path_(from.target == "syslog" ? kSyslog : from.target), optional_(from.optional) {}

    int open();
    /// Writes a line, or with an empty one only tries whether it could. False when the change must not be made.
    bool write(const std::string& line, bool sync);
    const std::string& path() const { return path_; }
    bool failing() const { return missing_ > 0; }

  private:
    int connect();
    int append(const std::string& line);
    int appendAll(const std::string& line, bool sync);
    int send(const std::string& line) const;
    bool isMoved() const;

    const std::string path_;
    const bool optional_;
    std::mutex mutex_; ///< guards the members below
    Descriptor fd_;
    bool socket_ = false;
    bool torn_ = false;                ///< the file ends in the middle of a line
    std::atomic<unsigned> missing_{0}; ///< lines since the last that was written
};

int Record::open() {
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
    const bool read = ::fstat(fresh.get(), &state) == 0 && ::pread(fresh.get(), &last, 1, state.st_size - 1) == 1;
    torn_ = read && last != '\n';
    fd_ = std::move(fresh);
    return 0;
}

int Record::connect() {
    sockaddr_un address{AF_UNIX, {}};
    path_.copy(address.sun_path, sizeof address.sun_path - 1);
    Descriptor fresh(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ::setsockopt(fresh.get(), SOL_SOCKET, SO_SNDTIMEO, &kSyslogPatience, sizeof kSyslogPatience);
    if (::connect(fresh.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return errno;
    }
    fd_ = std::move(fresh);
    return 0;
}

/// A record that was moved away, or removed, is begun anew.
bool Record::isMoved() const {
    return !isFileAt(fd_.get(), path_.c_str());
}

int Record::send(const std::string& line) const {
    // Syslog adds the time.
    const auto text = "<" + std::to_string(LOG_AUTHPRIV | LOG_NOTICE) + ">cimserverd[" + std::to_string(::getpid()) +
                      "]: audit " + line;
    return ::send(fd_.get(), text.data(), text.size(), MSG_NOSIGNAL) < 0 ? errno : 0;
}

int Record::append(const std::string& line) {
    if (socket_) {
        const int error = send(line);
        return error == 0 || open() != 0 ? error : send(line); // the other end may have been started anew
    }
    if (const int error = isMoved() ? open() : 0) {
        return error;
    }
    const auto text = (torn_ ? "\n" : "") + utcNow("%Y-%m-%dT%H:%M:%S+00:00 audit ") + line + "\n";
    const auto written = ::write(fd_.get(), text.data(), text.size());
    const bool whole = written == static_cast<ssize_t>(text.size());
    torn_ = !whole && (torn_ || written > 0);
    return whole ? 0 : written < 0 ? errno : ENOSPC;
}

int Record::appendAll(const std::string& line, bool sync) {
    // The gap is part of the record.
    int result = missing_ == 0 ? 0 : append(std::to_string(missing_.load()) + " lines are missing here");
    if (result == 0 && !line.empty()) {
        result = append(line);
    }
    const bool synced = !sync || socket_ || ::fdatasync(fd_.get()) == 0 || errno == EINVAL; // EINVAL: no disk behind it
    return result != 0 || synced ? result : errno;
}

bool Record::write(const std::string& line, bool sync) {
    const std::lock_guard lock(mutex_);
    const int result = appendAll(line, sync);
    if ((result == 0) == failing()) {
        log::write(result == 0 ? log::Level::Info : log::Level::Error, "audit",
                   result == 0 ? "writing " + path_ + " again"
                               : "cannot write " + path_ + ": " + std::strerror(result));
    }
    missing_ = result == 0 ? 0 : missing_ + (line.empty() ? 0U : 1U);
    return result == 0 || optional_;
}

std::unique_ptr<Record> record;

/// The refused requests of each user within a minute.
class Refusals {
  public:
    /// True when there is to be a line for one more.
    bool add(const std::string& user, Clock::time_point now) {
        const std::lock_guard lock(mutex_);
        auto& count = counts_.try_emplace(user, Count{now, 0}).first->second;
        return ++count.requests <= kMostRefusals;
    }
    /// The users whose minute is over, with the number of requests that have no line.
    std::map<std::string, unsigned long> takeEnded(Clock::time_point now) {
        std::map<std::string, unsigned long> ended;
        const std::lock_guard lock(mutex_);
        for (auto one = counts_.begin(); one != counts_.end();) {
            const bool over = now - one->second.begun >= std::chrono::minutes(1);
            if (over && one->second.requests > kMostRefusals) {
                ended[one->first] = one->second.requests - kMostRefusals;
            }
            one = over ? counts_.erase(one) : std::next(one);
        }
        return ended;
    }

  private:
    struct Count {
        Clock::time_point begun;
        unsigned long requests;
    };
    std::mutex mutex_;
    std::map<std::string, Count> counts_;
};

Refusals refusals;

} // namespace

void configure(const Settings& settings) {
    record = settings.target.empty() ? nullptr : std::make_unique<Record>(settings);
    if (const int error = record ? record->open() : 0) {
        throw std::runtime_error("cannot write the audit record " + record->path() + ": " + std::strerror(error));
    }
}

bool isKept() {
    return record != nullptr;
}

bool begin(const std::string& line) {
    return !record || record->write(line + " -> begun", true);
}

void end(const std::string& line) {
    record ? static_cast<void>(record->write(line, false)) : log::audit(line);
}

void refused(const std::string& user, const std::string& line) {
    if (refusals.add(user, Clock::now())) {
        end(line);
    }
}

void sumUp(std::chrono::steady_clock::time_point now) {
    for (const auto& [user, count] : refusals.takeEnded(now)) {
        end("user=" + user + " -> " + std::to_string(count) + " more requests were refused within a minute");
    }
}

std::string problem() {
    if (record && record->failing()) {
        record->write("", false);
    }
    return record && record->failing() ? "the audit record cannot be written" : "";
}

} // namespace cimserver::audit
