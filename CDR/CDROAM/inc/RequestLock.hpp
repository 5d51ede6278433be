// Serialises requests where the object manager does not.
#pragma once

#ifdef CDR_SERIALIZE_REQUESTS
#include <mutex>
#endif

namespace cdroam {

/// Held for the length of a request or a restore notification. An OpenWBEM 3.0.3 object manager runs reads concurrently
/// in one provider, whose objects take no locks: a module built for it has CDR_SERIALIZE_REQUESTS defined and lets one
/// in at a time; a thread that is in may enter again. Otherwise it is nothing.
class RequestLock {
#ifdef CDR_SERIALIZE_REQUESTS
  public:
    RequestLock() : lock_(mutex()) {}

  private:
    static std::recursive_mutex& mutex();
    std::lock_guard<std::recursive_mutex> lock_;
#else
  public:
    RequestLock() {}
#endif
};

} // namespace cdroam
