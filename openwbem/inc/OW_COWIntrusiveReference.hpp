// Counted pointer that copies the object before a shared one is changed. All value types of the library hold one.

#pragma once

#include "OW_COWIntrusiveCountableBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

namespace COWIntrusiveReferenceDetail {
/// Throws the exception for the use of a null reference: an Exception with the message "NULL COWReference
/// dereferenced".
[[noreturn]] OW_VISIBILITY_DEFAULT void throwNull();
} // namespace COWIntrusiveReferenceDetail

/// Makes the copy for a writer that shares obj; overload it for a class without clone(). The caller owns the result.
template <class T>
inline T* COWIntrusiveReferenceClone(const T* obj) {
    return obj->clone();
}

/// Shares a T that derives from COWIntrusiveCountableBase. Reading goes through the const operators; the non-const
/// ones first give this reference an object of its own if others share it. Dereferencing a null reference throws.
/// Different references to one object may be used by different threads at once; one reference may not.
template <class T>
class COWIntrusiveReference {
  private:
    T* m_pObj;

  public:
    typedef T element_type;
    typedef T* COWIntrusiveReference::*safe_bool;

    /// A null reference.
    COWIntrusiveReference() : m_pObj(nullptr) {}
    /// Refers to p, which may be null. With addRef false it takes over a count that p already carries.
    explicit COWIntrusiveReference(T* p, bool addRef = true) : m_pObj(p) {
        if (m_pObj && addRef) {
            COWIntrusiveReferenceAddRef(m_pObj);
        }
    }
    COWIntrusiveReference(const COWIntrusiveReference& arg) : m_pObj(arg.m_pObj) {
        if (m_pObj) {
            COWIntrusiveReferenceAddRef(m_pObj);
        }
    }
    /// Takes the reference over; arg is null afterwards.
    COWIntrusiveReference(COWIntrusiveReference&& arg) noexcept : m_pObj(arg.m_pObj) { arg.m_pObj = nullptr; }
    template <class U>
    COWIntrusiveReference(const COWIntrusiveReference<U>& arg) : m_pObj(arg.m_pObj) {
        if (m_pObj) {
            COWIntrusiveReferenceAddRef(m_pObj);
        }
    }
    ~COWIntrusiveReference() {
        if (m_pObj) {
            COWIntrusiveReferenceRelease(m_pObj);
        }
    }
    /// Copies or takes over what it is given.
    COWIntrusiveReference& operator=(COWIntrusiveReference arg) noexcept {
        swap(arg);
        return *this;
    }
    COWIntrusiveReference& operator=(T* newObj) {
        COWIntrusiveReference(newObj).swap(*this);
        return *this;
    }

    /// For writing: the object, un-shared.
    T* operator->() { return writable(); }
    T& operator*() { return *writable(); }
    /// For reading: the object, possibly shared.
    const T* operator->() const { return checked(); }
    const T& operator*() const { return *checked(); }
    /// The object without un-sharing, null for a null reference. Do not write through it.
    T* getPtr() const { return m_pObj; }

    /// True when not null.
    operator safe_bool() const { return m_pObj ? &COWIntrusiveReference::m_pObj : nullptr; }
    bool operator!() const { return !m_pObj; }
    bool isNull() const OW_DEPRECATED { return m_pObj == nullptr; }

    void swap(COWIntrusiveReference& arg) {
        T* p = m_pObj;
        m_pObj = arg.m_pObj;
        arg.m_pObj = p;
    }

    /// A reference to the same object as a U; null when it is none.
    template <class U>
    COWIntrusiveReference<U> cast_to() const {
        return COWIntrusiveReference<U>(dynamic_cast<U*>(m_pObj));
    }

  private:
    T* checked() const {
        if (!m_pObj) {
            COWIntrusiveReferenceDetail::throwNull();
        }
        return m_pObj;
    }
    T* writable() {
        T* shared = checked();
        if (!COWIntrusiveReferenceUnique(shared)) {
            // The old object is let go only after the copy exists: an exception from the copying changes nothing.
            COWIntrusiveReference(COWIntrusiveReferenceClone(static_cast<const T*>(shared))).swap(*this);
        }
        return m_pObj;
    }

    template <class U>
    friend class COWIntrusiveReference;
};

/// Two references are equal when they share one object.
template <class T, class U>
inline bool operator==(const COWIntrusiveReference<T>& a, const COWIntrusiveReference<U>& b) {
    return a.getPtr() == b.getPtr();
}
template <class T, class U>
inline bool operator!=(const COWIntrusiveReference<T>& a, const COWIntrusiveReference<U>& b) {
    return a.getPtr() != b.getPtr();
}
/// Orders by address, for use as a key.
template <class T, class U>
inline bool operator<(const COWIntrusiveReference<T>& a, const COWIntrusiveReference<U>& b) {
    return static_cast<const void*>(a.getPtr()) < static_cast<const void*>(b.getPtr());
}

template <class T>
inline void swap(COWIntrusiveReference<T>& a, COWIntrusiveReference<T>& b) {
    a.swap(b);
}

} // namespace OpenWBEM
