// Atomic operations on counters that are shared between threads.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

// The compiler's own operations: this header is part of every other, and <atomic> would double what each of them costs.
typedef int Atomic_t;

/// Adds one.
inline void AtomicInc(Atomic_t& v) {
    __atomic_fetch_add(&v, 1, __ATOMIC_RELAXED);
}

/// Subtracts one; true when that made the counter 0. All that other threads did before their own decrement is then
/// visible.
inline bool AtomicDecAndTest(Atomic_t& v) {
    return __atomic_fetch_sub(&v, 1, __ATOMIC_ACQ_REL) == 1;
}

/// The present value. A reader that finds 1 sees all that former owners wrote.
inline int AtomicGet(const Atomic_t& v) {
    return __atomic_load_n(&v, __ATOMIC_ACQUIRE);
}

} // namespace OpenWBEM
