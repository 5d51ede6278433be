#include "EventWatch.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace zpo {
namespace {

constexpr int longestSleepMs = 3000;
constexpr int sleepWithoutWatchMs = 500; // inotify instances are limited
constexpr std::uint32_t selfGone = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_UNMOUNT;

std::string nearestExisting(std::string path) {
    while (path != "/" && access(path.c_str(), F_OK) != 0) {
        const auto slash = path.rfind('/');
        path = slash == 0 ? "/" : path.substr(0, slash);
    }
    return path;
}

} // namespace

void announceEvent(const std::string& directory) {
    // Closing a file that was open for writing is what the watchers see. Should it fail, they look within seconds.
    openFile(directory + "/registry.notify", O_WRONLY | O_CREAT | O_NONBLOCK, 0660);
}

void EventWatch::arm() {
    if (inotify_) {
        return;
    }
    std::string watched;
    for (std::string found = nearestExisting(directory_); found != watched; found = nearestExisting(directory_)) {
        watched = found; // a directory that appears meanwhile is found by looking once more
        inotify_ = UniqueFd(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
        watchesDirectory_ = watched == directory_;
        const std::uint32_t events = watchesDirectory_ ? IN_CLOSE_WRITE : IN_CREATE;
        if (!inotify_ || inotify_add_watch(inotify_.get(), watched.c_str(),
                                           events | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF) < 0) {
            inotify_.reset();
            return;
        }
    }
}

// Takes the events that have come; false when the watch has lost its directory.
bool EventWatch::drain() {
    alignas(inotify_event) char buffer[4096];
    bool intact = true;
    for (ssize_t size = 0; (size = read(inotify_.get(), buffer, sizeof buffer)) > 0;) {
        for (ssize_t offset = 0; offset < size;) {
            inotify_event event{};
            std::memcpy(&event, buffer + offset, sizeof event);
            intact = intact && (event.mask & selfGone) == 0;
            offset += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    return intact;
}

bool EventWatch::wait() {
    pollfd sources[] = {{stopFd_, POLLIN, 0}, {inotify_.get(), POLLIN, 0}};
    const int ready = poll(sources, 2, inotify_ ? longestSleepMs : sleepWithoutWatchMs);
    if (sources[0].revents != 0) {
        return false;
    }
    // After a long silence, too, the directory may be another one than the one watched.
    const bool intact = inotify_ && drain();
    if (!intact || !watchesDirectory_ || ready == 0) {
        inotify_.reset();
    }
    return true;
}

} // namespace zpo
