// Atomic operations on counters that are shared between threads.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

// The compiler's own operations: every other header includes this one, and <atomic> would double their compile time.
typedef int Atomic_t;

/// Adds one.
inline void AtomicInc(Atomic_t& v) {
    __atomic_fetch_add(&v, 1, __ATOMIC_RELAXED);
}

/// Subtracts one; true when that made the counter 0. What other threads did before their own decrements is then
/// visible.
inline bool AtomicDecAndTest(Atomic_t& v) {
    return __atomic_fetch_sub(&v, 1, __ATOMIC_ACQ_REL) == 1;
}

/// The present value. A reader that finds 1 sees everything that former owners wrote.
inline int AtomicGet(const Atomic_t& v) {
    return __atomic_load_n(&v, __ATOMIC_ACQUIRE);
}

} // namespace OpenWBEM
