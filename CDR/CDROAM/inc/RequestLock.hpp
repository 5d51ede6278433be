// One request at a time.
#pragma once

namespace cdroam {

/// Held for the length of a request, of a restore notification, and while the managed objects are made or deleted. The
/// platform calls the module on a thread of its own, and an object manager may let several requests in at once: the
/// objects behind take no locks. A thread that holds it may take it again.
class RequestLock {
  public:
    RequestLock();
    RequestLock(const RequestLock&) = delete;
    RequestLock& operator=(const RequestLock&) = delete;
    ~RequestLock();
};

/// Lets others in while it lives: for what takes long and touches nothing of the module. The calling thread has what it
/// held of the RequestLock again afterwards; for a thread that holds nothing it does nothing.
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
