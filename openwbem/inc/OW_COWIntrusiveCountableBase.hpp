// Base of the objects that COWIntrusiveReference counts.

#pragma once

#include "OW_RefCount.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Carries the number of references. A new object, also one made by copying, has none; assignment leaves the number
/// alone. A class D derived from it offers `D* clone()`, const or not, to COWIntrusiveReference.
class OW_VISIBILITY_DEFAULT OW_COMMON_API COWIntrusiveCountableBase {
  protected:
    COWIntrusiveCountableBase() : count_(0) {}
    COWIntrusiveCountableBase(const COWIntrusiveCountableBase&) : count_(0) {}
    COWIntrusiveCountableBase& operator=(const COWIntrusiveCountableBase&) { return *this; }
    virtual ~COWIntrusiveCountableBase();

    /// A copy of the counter.
    RefCount getRefCount() const { return count_; }

  private:
    RefCount count_;
    friend void COWIntrusiveReferenceAddRef(COWIntrusiveCountableBase* p);
    friend void COWIntrusiveReferenceRelease(COWIntrusiveCountableBase* p);
    friend bool COWIntrusiveReferenceUnique(COWIntrusiveCountableBase* p);
};

/// Adds a reference to the object; p is not null.
inline void COWIntrusiveReferenceAddRef(COWIntrusiveCountableBase* p) {
    p->count_.inc();
}

/// Removes a reference from the object and deletes it with the last one; p is not null.
inline void COWIntrusiveReferenceRelease(COWIntrusiveCountableBase* p) {
    if (p->count_.decAndTest()) {
        delete p;
    }
}

/// True when the caller's reference is the only one; p is not null.
inline bool COWIntrusiveReferenceUnique(COWIntrusiveCountableBase* p) {
    return p->count_.get() == 1;
}

/// Makes the copy for a writer that shares obj; overload it for a class without clone(). The caller owns the result.
template <class T>
inline T* COWIntrusiveReferenceClone(T* obj) {
    return obj->clone();
}

} // namespace OpenWBEM
