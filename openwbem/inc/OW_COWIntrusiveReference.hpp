// Counted pointer that copies the object before a shared one is changed. All value types of the library hold one.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

namespace COWIntrusiveReferenceDetail {
/// Throws the exception for the use of a null reference: an Exception with the message "NULL COWReference
/// dereferenced".
[[noreturn]] OW_VISIBILITY_DEFAULT void throwNull();
} // namespace COWIntrusiveReferenceDetail

/// Shares a T. Works with every T for which COWIntrusiveReferenceAddRef(T*), ...Release(T*), ...Unique(T*) and
/// ...Clone(T*) are found by argument-dependent lookup, such as classes derived from COWIntrusiveCountableBase. The
/// const operators are for reading; the non-const ones first give this reference an object of its own if others share
/// it. Dereferencing a null reference throws. Different references to one object may be used by different threads at
/// once; one reference may not.
template <class T>
class COWIntrusiveReference {
  private:
    T* object_;

  public:
    typedef T element_type;
    typedef T* COWIntrusiveReference::*unspecified_bool_type;

    /// A null reference.
    COWIntrusiveReference() : object_(nullptr) {}
    /// Refers to p, which may be null. With addRef false it takes over a count that p already carries.
    COWIntrusiveReference(T* p, bool addRef = true) : object_(p) {
        if (object_ && addRef) {
            COWIntrusiveReferenceAddRef(object_);
        }
    }
    COWIntrusiveReference(const COWIntrusiveReference& arg) : object_(arg.object_) {
        if (object_) {
            COWIntrusiveReferenceAddRef(object_);
        }
    }
    /// Takes the reference over; arg is null afterwards.
    COWIntrusiveReference(COWIntrusiveReference&& arg) noexcept : object_(arg.object_) { arg.object_ = nullptr; }
    template <class U>
    COWIntrusiveReference(const COWIntrusiveReference<U>& arg) : object_(arg.object_) {
        if (object_) {
            COWIntrusiveReferenceAddRef(object_);
        }
    }
    ~COWIntrusiveReference() {
        if (object_) {
            COWIntrusiveReferenceRelease(object_);
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
    /// The object without un-sharing, null for a null reference.
    const T* getPtr() const { return object_; }

    /// True when not null.
    operator unspecified_bool_type() const { return object_ ? &COWIntrusiveReference::object_ : nullptr; }
    bool operator!() const { return !object_; }

    void swap(COWIntrusiveReference& arg) {
        T* p = object_;
        object_ = arg.object_;
        arg.object_ = p;
    }

  private:
    T* checked() const {
        if (!object_) {
            COWIntrusiveReferenceDetail::throwNull();
        }
        return object_;
    }
    T* writable() {
        T* shared = checked();
        if (!COWIntrusiveReferenceUnique(shared)) {
            // The old object is released only after the copy exists: an exception from copying changes nothing.
            COWIntrusiveReference(COWIntrusiveReferenceClone(shared)).swap(*this);
        }
        return object_;
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
template <class T>
inline bool operator==(const COWIntrusiveReference<T>& a, const T* b) {
    return a.getPtr() == b;
}
template <class T>
inline bool operator!=(const COWIntrusiveReference<T>& a, const T* b) {
    return a.getPtr() != b;
}
template <class T>
inline bool operator==(const T* a, const COWIntrusiveReference<T>& b) {
    return a == b.getPtr();
}
template <class T>
inline bool operator!=(const T* a, const COWIntrusiveReference<T>& b) {
    return a != b.getPtr();
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
