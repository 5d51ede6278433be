// Atomic operations on counters that are shared between threads.

#ifndef OW_ATOMIC_OPS_HPP_INCLUDE_GUARD_
#define OW_ATOMIC_OPS_HPP_INCLUDE_GUARD_

#include "OW_config.h"
#include <atomic>

namespace OpenWBEM {

typedef std::atomic<int> Atomic_t;

/// Adds one.
inline void AtomicInc(Atomic_t& v) {
    v.fetch_add(1, std::memory_order_relaxed);
}

/// Subtracts one; true when that made the counter 0. All that other threads did before their own decrement is then
/// visible.
inline bool AtomicDecAndTest(Atomic_t& v) {
    return v.fetch_sub(1, std::memory_order_acq_rel) == 1;
}

/// The present value. A reader that finds 1 sees all that former owners wrote.
inline int AtomicGet(const Atomic_t& v) {
    return v.load(std::memory_order_acquire);
}

} // namespace OpenWBEM

#endif
