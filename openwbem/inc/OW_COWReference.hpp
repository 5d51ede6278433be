// Counted pointer to any object; copies the object before a shared one is changed.

#pragma once

#include "OW_Reference.hpp"
#include "OW_config.h"
#include <list>
#include <map>
#include <vector>

namespace OpenWBEM {

OW_DECLARE_APIEXCEPTION(NULLCOWReference, OW_COMMON_API)

namespace COWReferenceDetail {
/// Throws NULLCOWReferenceException with the message "NULL COWReference dereferenced".
[[noreturn]] OW_VISIBILITY_DEFAULT void throwNull();
} // namespace COWReferenceDetail

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

/// Shares a T. The const operators are for reading; the non-const ones first give this reference an object of its own
/// if others share it. Dereferencing a null reference throws NULLCOWReferenceException.
template <class T>
class COWReference {
  private:
    Reference<T> object_;

  public:
    typedef T element_type;
    typedef Reference<T> COWReference::*safe_bool;

    /// A null reference.
    COWReference() {}
    /// Takes ownership of ptr, which may be null.
    explicit COWReference(T* ptr) : object_(ptr) {}
    template <class U>
    COWReference(const COWReference<U>& arg) : object_(arg.object_) {}
    COWReference& operator=(T* newObj) {
        object_ = newObj;
        return *this;
    }

    /// For writing: the object, un-shared.
    T* operator->() { return writable(); }
    T& operator*() { return *writable(); }
    /// For reading: the object, possibly shared.
    const T* operator->() const { return checked(); }
    const T& operator*() const { return *checked(); }
    /// The object without un-sharing, null for a null reference.
    const T* getPtr() const { return object_.getPtr(); }

    /// True when not null.
    operator safe_bool() const { return object_ ? &COWReference::object_ : nullptr; }
    bool operator!() const { return !object_; }
    bool isNull() const OW_DEPRECATED { return !object_; }

    void swap(COWReference& arg) { object_.swap(arg.object_); }

    /// A reference to the same object as a U; null when it is not a U.
    template <class U>
    COWReference<U> cast_to() const {
        COWReference<U> result;
        result.object_ = object_.template cast_to<U>();
        return result;
    }

  private:
    T* checked() const {
        if (!object_) {
            COWReferenceDetail::throwNull();
        }
        return object_.getPtr();
    }
    T* writable() {
        T* const object = checked();
        if (object_.isShared()) {
            object_ = COWReferenceClone(object);
        }
        return object_.getPtr();
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
