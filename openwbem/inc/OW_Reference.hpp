// Counted pointer to any object. The count is held beside the object.

#pragma once

#include "OW_Exception.hpp"
#include "OW_RefCount.hpp"
#include "OW_config.h"

namespace OpenWBEM {

OW_DECLARE_APIEXCEPTION(NULLReference, OW_COMMON_API)

namespace ReferenceDetail {
/// Throws NULLReferenceException with the message "NULL Reference dereferenced".
[[noreturn]] OW_VISIBILITY_DEFAULT void throwNull();

/// The counter for a new owner of obj; null for a null obj. obj is deleted if there is no memory for a counter.
template <class T>
inline RefCount* newCount(T* obj) {
    try {
        return obj ? new RefCount(1) : nullptr;
    } catch (...) {
        delete obj;
        throw;
    }
}

/// Gives one owner up and deletes object and counter with the last.
template <class T>
inline void release(T* obj, RefCount* count) {
    if (count && count->decAndTest()) {
        delete count;
        delete obj;
    }
}
} // namespace ReferenceDetail

/// Shares ownership of a T. Different references to one object may be used by different threads at once; one reference
/// may not. Dereferencing a null reference throws NULLReferenceException.
template <class T>
class Reference {
  private:
    T* m_pObj;
    RefCount* m_pCount; // null exactly when m_pObj is

  public:
    typedef T element_type;
    typedef T* Reference::*safe_bool;

    /// A null reference.
    Reference() : m_pObj(nullptr), m_pCount(nullptr) {}
    /// Takes ownership of ptr, which may be null.
    explicit Reference(T* ptr) : m_pObj(ptr), m_pCount(ReferenceDetail::newCount(ptr)) {}
    Reference(const Reference& arg) : m_pObj(arg.m_pObj), m_pCount(arg.m_pCount) { addRef(); }
    Reference(Reference&& arg) noexcept : m_pObj(arg.m_pObj), m_pCount(arg.m_pCount) {
        arg.m_pObj = nullptr;
        arg.m_pCount = nullptr;
    }
    template <class U>
    Reference(const Reference<U>& arg) : m_pObj(arg.m_pObj), m_pCount(arg.m_pCount) {
        addRef();
    }
    ~Reference() { ReferenceDetail::release(m_pObj, m_pCount); }
    Reference& operator=(const Reference& arg) {
        Reference copy(arg);
        swap(copy);
        return *this;
    }
    Reference& operator=(Reference&& arg) noexcept {
        Reference(static_cast<Reference&&>(arg)).swap(*this);
        return *this;
    }
    template <class U>
    Reference& operator=(const Reference<U>& arg) {
        Reference copy(arg);
        swap(copy);
        return *this;
    }
    Reference& operator=(T* newObj) {
        Reference(newObj).swap(*this);
        return *this;
    }

    T* operator->() const { return checked(); }
    T& operator*() const { return *checked(); }
    /// The object, still owned by the references; null for a null reference.
    T* getPtr() const { return m_pObj; }

    /// True when not null.
    operator safe_bool() const { return m_pObj ? &Reference::m_pObj : nullptr; }
    bool operator!() const { return !m_pObj; }
    bool isNull() const OW_DEPRECATED { return m_pObj == nullptr; }

    void swap(Reference& arg) {
        T* obj = m_pObj;
        RefCount* count = m_pCount;
        m_pObj = arg.m_pObj;
        m_pCount = arg.m_pCount;
        arg.m_pObj = obj;
        arg.m_pCount = count;
    }

    /// A reference to the same object as a U; null when it is none.
    template <class U>
    Reference<U> cast_to() const {
        Reference<U> result;
        result.m_pObj = dynamic_cast<U*>(m_pObj);
        if (result.m_pObj) {
            result.m_pCount = m_pCount;
            result.addRef();
        }
        return result;
    }

  private:
    void addRef() {
        if (m_pCount) {
            m_pCount->inc();
        }
    }
    T* checked() const {
        if (!m_pObj) {
            ReferenceDetail::throwNull();
        }
        return m_pObj;
    }

    template <class U>
    friend class Reference;
};

template <class T, class U>
inline bool operator==(const Reference<T>& a, const Reference<U>& b) {
    return a.getPtr() == b.getPtr();
}
template <class T, class U>
inline bool operator!=(const Reference<T>& a, const Reference<U>& b) {
    return a.getPtr() != b.getPtr();
}
/// Orders by address, for use as a key.
template <class T, class U>
inline bool operator<(const Reference<T>& a, const Reference<U>& b) {
    return static_cast<const void*>(a.getPtr()) < static_cast<const void*>(b.getPtr());
}

template <class T>
inline void swap(Reference<T>& a, Reference<T>& b) {
    a.swap(b);
}

} // namespace OpenWBEM
