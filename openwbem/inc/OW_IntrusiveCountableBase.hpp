// Base of the objects that IntrusiveReference counts.

#pragma once

#include "OW_RefCount.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Carries the number of references. A new object, also one made by copying, has none; assignment leaves the number
/// alone. The object must have been made with new: releasing the last reference deletes it.
class OW_VISIBILITY_DEFAULT OW_COMMON_API IntrusiveCountableBase {
  protected:
    IntrusiveCountableBase() : count_(0) {}
    IntrusiveCountableBase(const IntrusiveCountableBase&) : count_(0) {}
    IntrusiveCountableBase& operator=(const IntrusiveCountableBase&) { return *this; }
    virtual ~IntrusiveCountableBase();

  private:
    mutable RefCount count_;
    friend void IntrusiveReferenceAddRef(const IntrusiveCountableBase* p);
    friend void IntrusiveReferenceRelease(const IntrusiveCountableBase* p);
};

/// Adds a reference to the object; p is not null.
inline void IntrusiveReferenceAddRef(const IntrusiveCountableBase* p) {
    p->count_.inc();
}

/// Removes a reference from the object and deletes it with the last one; p is not null.
inline void IntrusiveReferenceRelease(const IntrusiveCountableBase* p) {
    if (p->count_.decAndTest()) {
        delete p;
    }
}

} // namespace OpenWBEM
