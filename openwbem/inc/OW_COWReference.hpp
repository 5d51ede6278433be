// Counted pointer to any object; copies the object before a shared one is changed.

#pragma once

#include "OW_Reference.hpp"
#include "OW_config.h"
#include <list>
#include <map>
#include <vector>

namespace OpenWBEM {

/// Makes the copy for a writer that shares obj; overloads serve the standard containers. The caller owns the result.
template <class T>
inline T* COWReferenceClone(T* obj) {
    return obj->clone();
}
template <class T, class A>
inline std::vector<T, A>* COWReferenceClone(std::vector<T, A>* obj) {
    return new std::vector<T, A>(*obj);
}
template <class T, class A>
inline std::list<T, A>* COWReferenceClone(std::list<T, A>* obj) {
    return new std::list<T, A>(*obj);
}
template <class K, class V, class C, class A>
inline std::map<K, V, C, A>* COWReferenceClone(std::map<K, V, C, A>* obj) {
    return new std::map<K, V, C, A>(*obj);
}

/// Shares a T. Reading goes through the const operators; the non-const ones first give this reference an object of its
/// own if others share it. Dereferencing a null reference throws NULLReferenceException.
template <class T>
class COWReference {
  private:
    T* m_pObj;
    RefCount* m_pCount; // null exactly when m_pObj is

  public:
    typedef T element_type;
    typedef T* COWReference::*safe_bool;

    /// A null reference.
    COWReference() : m_pObj(nullptr), m_pCount(nullptr) {}
    /// Takes ownership of ptr, which may be null.
    explicit COWReference(T* ptr) : m_pObj(ptr), m_pCount(ReferenceDetail::newCount(ptr)) {}
    COWReference(const COWReference& arg) : m_pObj(arg.m_pObj), m_pCount(arg.m_pCount) { addRef(); }
    COWReference(COWReference&& arg) noexcept : m_pObj(arg.m_pObj), m_pCount(arg.m_pCount) {
        arg.m_pObj = nullptr;
        arg.m_pCount = nullptr;
    }
    template <class U>
    COWReference(const COWReference<U>& arg) : m_pObj(arg.m_pObj), m_pCount(arg.m_pCount) {
        addRef();
    }
    ~COWReference() { ReferenceDetail::release(m_pObj, m_pCount); }
    COWReference& operator=(const COWReference& arg) {
        COWReference copy(arg);
        swap(copy);
        return *this;
    }
    COWReference& operator=(COWReference&& arg) noexcept {
        COWReference(static_cast<COWReference&&>(arg)).swap(*this);
        return *this;
    }
    COWReference& operator=(T* newObj) {
        COWReference(newObj).swap(*this);
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
    operator safe_bool() const { return m_pObj ? &COWReference::m_pObj : nullptr; }
    bool operator!() const { return !m_pObj; }
    bool isNull() const OW_DEPRECATED { return m_pObj == nullptr; }

    void swap(COWReference& arg) {
        T* obj = m_pObj;
        RefCount* count = m_pCount;
        m_pObj = arg.m_pObj;
        m_pCount = arg.m_pCount;
        arg.m_pObj = obj;
        arg.m_pCount = count;
    }

    /// A reference to the same object as a U; null when it is none.
    template <class U>
    COWReference<U> cast_to() const {
        COWReference<U> result;
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
    T* writable() {
        checked();
        if (m_pCount->get() > 1) {
            COWReference(COWReferenceClone(m_pObj)).swap(*this);
        }
        return m_pObj;
    }

    template <class U>
    friend class COWReference;
};

/// Two references are equal when they share one object.
template <class T, class U>
inline bool operator==(const COWReference<T>& a, const COWReference<U>& b) {
    return a.getPtr() == b.getPtr();
}
template <class T, class U>
inline bool operator!=(const COWReference<T>& a, const COWReference<U>& b) {
    return a.getPtr() != b.getPtr();
}
/// Orders by address, for use as a key.
template <class T, class U>
inline bool operator<(const COWReference<T>& a, const COWReference<U>& b) {
    return static_cast<const void*>(a.getPtr()) < static_cast<const void*>(b.getPtr());
}

template <class T>
inline void swap(COWReference<T>& a, COWReference<T>& b) {
    a.swap(b);
}

} // namespace OpenWBEM
