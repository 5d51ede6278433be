// Base of the objects that COWIntrusiveReference counts.

#pragma once

#include "OW_RefCount.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Carries the number of references. A new object, also one made by copying, has none; assignment leaves the number
/// alone. A class derived from it offers `D* clone() const` to COWIntrusiveReference.
class OW_VISIBILITY_DEFAULT OW_COMMON_API COWIntrusiveCountableBase {
  protected:
    COWIntrusiveCountableBase() {}
    COWIntrusiveCountableBase(const COWIntrusiveCountableBase&) {}
    COWIntrusiveCountableBase& operator=(const COWIntrusiveCountableBase&) { return *this; }
    virtual ~COWIntrusiveCountableBase();

  private:
    mutable RefCount m_usecount;
    friend void COWIntrusiveReferenceAddRef(const COWIntrusiveCountableBase* p);
    friend void COWIntrusiveReferenceRelease(const COWIntrusiveCountableBase* p);
    friend bool COWIntrusiveReferenceUnique(const COWIntrusiveCountableBase* p);
};

/// Adds a reference to the object; p is not null.
inline void COWIntrusiveReferenceAddRef(const COWIntrusiveCountableBase* p) {
    p->m_usecount.inc();
}

/// Takes a reference away from the object and deletes it with the last one; p is not null.
inline void COWIntrusiveReferenceRelease(const COWIntrusiveCountableBase* p) {
    if (p->m_usecount.decAndTest()) {
        delete p;
    }
}

/// True when the caller's reference is the only one; p is not null.
inline bool COWIntrusiveReferenceUnique(const COWIntrusiveCountableBase* p) {
    return p->m_usecount.get() == 1;
}

} // namespace OpenWBEM
