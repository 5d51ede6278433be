// The counter inside every counted object.

#pragma once

#include "OW_AtomicOps.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_COMMON_API RefCount {
  public:
    explicit RefCount(int count = 0) : m_count(count) {}
    /// Adds one owner.
    void inc() { AtomicInc(m_count); }
    /// Removes one owner; true when it was the last.
    bool decAndTest() { return AtomicDecAndTest(m_count); }
    /// Number of owners at this moment.
    int get() const { return AtomicGet(m_count); }

  private:
    RefCount(const RefCount&);
    RefCount& operator=(const RefCount&);

    Atomic_t m_count;
};

} // namespace OpenWBEM
