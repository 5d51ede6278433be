// One request at a time.
#pragma once

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

} // namespace cdroam
