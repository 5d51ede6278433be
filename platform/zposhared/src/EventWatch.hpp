#pragma once

#include "Files.hpp"

#include <chrono>
#include <string>

namespace zpo {

/// Tells all processes that an event has been counted in the registry: opens `directory`/registry.notify for writing
/// and closes it, which wakes every EventWatch.
void announceEvent(const std::string& directory);

/// Waits for announcements in a directory, which need not exist yet and may be replaced: until it exists, the nearest
/// existing directory above it is watched.
class EventWatch {
  public:
    /// `stopFd` becomes readable when waiting is to end; the caller keeps it. A wait sleeps at most `longestSleep`.
    EventWatch(std::string directory, int stopFd, std::chrono::milliseconds longestSleep = std::chrono::seconds(3))
        : directory_(std::move(directory)), stopFd_(stopFd), longestSleep_(longestSleep) {}

    /// Starts watching unless it already does: an announcement from now on ends the next wait.
    void arm();

    /// Sleeps until something may have been announced, or for the longest sleep: an announcer may die between counting
    /// and announcing. False when waiting is to end.
    bool wait();

  private:
    bool watch(const std::string& found);
    bool watchesDirectory() const;

    const std::string directory_;
    const int stopFd_;
    const std::chrono::milliseconds longestSleep_;
    UniqueFd inotify_; ///< not open: arm() is due
    dev_t device_ = 0; ///< with inode_: the directory that is watched
    ino_t inode_ = 0;
};

} // namespace zpo
