// One request at a time, and which of them may run while a change waits for the platform.
#pragma once

#include <optional>

namespace cdroam {

/// Held during a request, during a restore notification, and while the managed objects are made or deleted. Needed
/// because the platform calls the module on a thread of its own, an object manager may run several requests at once,
/// and the managed objects take no locks. A thread that holds it may take it again.
class RequestLock {
  public:
    RequestLock();
    RequestLock(const RequestLock&) = delete;
    RequestLock& operator=(const RequestLock&) = delete;
    ~RequestLock();
};

/// Releases the calling thread's RequestLocks for its lifetime and takes them again afterwards: for long work that
/// touches nothing of the module. Has no effect in a thread that holds none.
class RequestPause {
  public:
    RequestPause();
    RequestPause(const RequestPause&) = delete;
    RequestPause& operator=(const RequestPause&) = delete;
    ~RequestPause();

  private:
    unsigned held_;
};

/// Held while properties are modified or statistics cleared, while a restore is followed up, and while the managed
/// objects are deleted. While the platform makes a change it may wait for another process, so a change pauses there
/// (WritePause) and reads go on; other changes must not come in between its writes. Taken inside a RequestLock, which
/// is released while this one is awaited. A thread that holds it may take it again.
class ChangeLock {
  public:
    /// Changes of a single value that need nothing of one another may run together.
    enum class Sharing { Alone, Together };

    explicit ChangeLock(Sharing sharing);
    ChangeLock(const ChangeLock&) = delete;
    ChangeLock& operator=(const ChangeLock&) = delete;
    ~ChangeLock();
};

/// A RequestPause around a call of the platform that changes something. Has no effect in a thread that holds no
/// ChangeLock: a read that creates a missing entry keeps its place in an enumeration.
class WritePause {
  public:
    WritePause();

  private:
    std::optional<RequestPause> pause_;
};

} // namespace cdroam
