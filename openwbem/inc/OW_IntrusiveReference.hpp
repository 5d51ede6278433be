// Counted pointer to objects that carry their own count.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

/// Shares ownership of a T. Works with every T for which IntrusiveReferenceAddRef(T*) and IntrusiveReferenceRelease(T*)
/// are found by argument-dependent lookup, such as classes derived from IntrusiveCountableBase.
/// Different references to one object may be used by different threads at once; one reference may not.
/// Dereferencing a null reference is undefined.
template <class T>
class IntrusiveReference {
  private:
    T* object_;

  public:
    typedef T element_type;
    typedef T* IntrusiveReference::*safe_bool;

    /// A null reference.
    IntrusiveReference() : object_(nullptr) {}
    /// Refers to p, which may be null. With addRef false it takes over a count that p already carries.
    IntrusiveReference(T* p, bool addRef = true) : object_(p) {
        if (object_ && addRef) {
            IntrusiveReferenceAddRef(object_);
        }
    }
    IntrusiveReference(const IntrusiveReference& arg) : object_(arg.object_) {
        if (object_) {
            IntrusiveReferenceAddRef(object_);
        }
    }
    template <class U>
    IntrusiveReference(const IntrusiveReference<U>& arg) : object_(arg.getPtr()) {
        if (object_) {
            IntrusiveReferenceAddRef(object_);
        }
    }
    /// Takes the reference over; arg is null afterwards.
    IntrusiveReference(IntrusiveReference&& arg) noexcept : object_(arg.object_) { arg.object_ = nullptr; }
    ~IntrusiveReference() {
        if (object_) {
            IntrusiveReferenceRelease(object_);
        }
    }
    /// Copies or takes over what it is given.
    IntrusiveReference& operator=(IntrusiveReference arg) noexcept {
        swap(arg);
        return *this;
    }
    template <class U>
    IntrusiveReference& operator=(const IntrusiveReference<U>& arg) {
        IntrusiveReference copy(arg);
        swap(copy);
        return *this;
    }
    IntrusiveReference& operator=(T* newObj) {
        IntrusiveReference(newObj).swap(*this);
        return *this;
    }

    /// The object, still owned by the references; null for a null reference.
    T* getPtr() const { return object_; }
    T& operator*() const { return *object_; }
    T* operator->() const { return object_; }

    /// True when not null.
    operator safe_bool() const { return object_ ? &IntrusiveReference::object_ : nullptr; }
    bool operator!() const { return !object_; }
    bool isNull() const OW_DEPRECATED { return object_ == nullptr; }

    void swap(IntrusiveReference& arg) {
        T* p = object_;
        object_ = arg.object_;
        arg.object_ = p;
    }

    /// A reference to the same object as a U; null when it is not a U.
    template <class U>
    IntrusiveReference<U> cast_to() const {
        return IntrusiveReference<U>(dynamic_cast<U*>(object_));
    }
};

template <class T, class U>
inline bool operator==(const IntrusiveReference<T>& a, const IntrusiveReference<U>& b) {
    return a.getPtr() == b.getPtr();
}
template <class T, class U>
inline bool operator!=(const IntrusiveReference<T>& a, const IntrusiveReference<U>& b) {
    return a.getPtr() != b.getPtr();
}
template <class T>
inline bool operator==(const IntrusiveReference<T>& a, T* b) {
    return a.getPtr() == b;
}
template <class T>
inline bool operator!=(const IntrusiveReference<T>& a, T* b) {
    return a.getPtr() != b;
}
template <class T>
inline bool operator==(T* a, const IntrusiveReference<T>& b) {
    return a == b.getPtr();
}
template <class T>
inline bool operator!=(T* a, const IntrusiveReference<T>& b) {
    return a != b.getPtr();
}
/// Orders by address, for use as a key.
template <class T, class U>
inline bool operator<(const IntrusiveReference<T>& a, const IntrusiveReference<U>& b) {
    return static_cast<const void*>(a.getPtr()) < static_cast<const void*>(b.getPtr());
}

template <class T>
inline void swap(IntrusiveReference<T>& a, IntrusiveReference<T>& b) {
    a.swap(b);
}

template <class T, class U>
inline IntrusiveReference<T> static_pointer_cast(const IntrusiveReference<U>& p) {
    return IntrusiveReference<T>(static_cast<T*>(p.getPtr()));
}
template <class T, class U>
inline IntrusiveReference<T> const_pointer_cast(const IntrusiveReference<U>& p) {
    return IntrusiveReference<T>(const_cast<T*>(p.getPtr()));
}
template <class T, class U>
inline IntrusiveReference<T> dynamic_pointer_cast(const IntrusiveReference<U>& p) {
    return p.template cast_to<T>();
}

} // namespace OpenWBEM
