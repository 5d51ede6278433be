// The counter inside every counted object.

#pragma once

#include "OW_AtomicOps.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_COMMON_API RefCount {
  public:
    /// One owner.
    RefCount() : count_(1) {}
    RefCount(Atomic_t count) : count_(count) {}
    /// The copy starts with the present number of owners.
    RefCount(const RefCount& other) : count_(other.get()) {}
    RefCount& operator=(const RefCount&) = delete;
    /// Adds one owner.
    void inc() { AtomicInc(count_); }
    /// Removes one owner; true when it was the last.
    bool decAndTest() { return AtomicDecAndTest(count_); }
    /// Number of owners at this moment.
    int get() const { return AtomicGet(count_); }

  private:
    Atomic_t count_;
};

} // namespace OpenWBEM
