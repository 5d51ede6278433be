#include "EventWatch.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zpo {
namespace {

constexpr std::chrono::milliseconds kSleepWithoutWatch{500}; // when no inotify instance is left
constexpr std::uint32_t kNameEvents = IN_CREATE | IN_DELETE | IN_MOVED_TO | IN_MOVED_FROM;
constexpr std::uint32_t kFileEvents = IN_CLOSE_WRITE | IN_MOVED_TO; // announced, or replaced as a file

std::string nearestExisting(std::string path) {
    while (path != "/" && access(path.c_str(), F_OK) != 0) {
        path = directoryOf(path);
    }
    return path;
}

} // namespace

void announceEvent(const std::string& directory) {
    // Watchers notice the close of a file that was open for writing. If this fails, they look within seconds anyway.
    openFile(directory + "/registry.notify", O_WRONLY | O_CREAT | O_NONBLOCK, 0660);
}

// The parent directory is watched too: inotify is silent about a directory removed while files in it are open.
bool EventWatch::watch(const std::string& found) {
    inotify_ = UniqueFd(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    struct stat status {};
    if (!inotify_ || stat(found.c_str(), &status) != 0 ||
        inotify_add_watch(inotify_.get(), directoryOf(found).c_str(), kNameEvents) < 0 ||
        inotify_add_watch(inotify_.get(), found.c_str(), found == directory_ ? kFileEvents : kNameEvents) < 0) {
        inotify_.reset();
        return false;
    }
    device_ = status.st_dev;
    inode_ = status.st_ino;
    return true;
}

void EventWatch::arm() {
    if (inotify_) {
        return;
    }
    std::string watched;
    for (std::string found = nearestExisting(directory_); found != watched; found = nearestExisting(directory_)) {
        watched = found; // and look again: a nearer one may have appeared meanwhile
        if (!watch(found)) {
            return;
        }
    }
}

bool EventWatch::watchesDirectory() const {
    struct stat status {};
    return stat(directory_.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_;
}

bool EventWatch::wait() {
    pollfd sources[] = {{stopFd_, POLLIN, 0}, {inotify_.get(), POLLIN, 0}};
    poll(sources, 2, static_cast<int>((inotify_ ? longestSleep_ : kSleepWithoutWatch).count()));
    if (sources[0].revents != 0) {
        return false;
    }
    char events[4096];
    while (inotify_ && read(inotify_.get(), events, sizeof events) > 0) {
        continue; // which events does not matter
    }
    if (!watchesDirectory()) {
        inotify_.reset();
    }
    return true;
}

} // namespace zpo
