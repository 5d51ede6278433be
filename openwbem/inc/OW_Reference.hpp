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

template <class T>
class COWReference;

/// Shares ownership of a T. Different references to one object may be used by different threads at once; one reference
/// may not. Dereferencing a null reference throws NULLReferenceException.
template <class T>
class Reference {
  private:
    T* object_;
    RefCount* count_; // null exactly when object_ is

  public:
    typedef T element_type;
    typedef T* Reference::*safe_bool;

    /// A null reference.
    Reference() : object_(nullptr), count_(nullptr) {}
    /// Takes ownership of ptr, which may be null.
    explicit Reference(T* ptr) : object_(ptr), count_(ReferenceDetail::newCount(ptr)) {}
    Reference(const Reference& arg) : object_(arg.object_), count_(arg.count_) { addRef(); }
    Reference(Reference&& arg) noexcept : object_(arg.object_), count_(arg.count_) {
        arg.object_ = nullptr;
        arg.count_ = nullptr;
    }
    template <class U>
    Reference(const Reference<U>& arg) : object_(arg.object_), count_(arg.count_) {
        addRef();
    }
    ~Reference() { ReferenceDetail::release(object_, count_); }
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

    /// Shares the count of arg, which must own the same object, instead of its own one.
    template <class U>
    void useRefCountOf(const Reference<U>& arg) {
        RefCount* const former = count_;
        count_ = arg.count_;
        addRef();
        if (former && former->decAndTest()) {
            delete former;
        }
    }

    T* operator->() const { return checked(); }
    T& operator*() const { return *checked(); }
    /// The object, still owned by the references; null for a null reference.
    T* getPtr() const { return object_; }

    /// True when not null.
    operator safe_bool() const { return object_ ? &Reference::object_ : nullptr; }
    bool operator!() const { return !object_; }
    bool isNull() const OW_DEPRECATED { return object_ == nullptr; }

    void swap(Reference& arg) {
        T* obj = object_;
        RefCount* count = count_;
        object_ = arg.object_;
        count_ = arg.count_;
        arg.object_ = obj;
        arg.count_ = count;
    }

    /// A reference to the same object as a U; null when it is not a U.
    template <class U>
    Reference<U> cast_to() const {
        Reference<U> result;
        result.object_ = dynamic_cast<U*>(object_);
        if (result.object_) {
            result.count_ = count_;
            result.addRef();
        }
        return result;
    }

  private:
    bool isShared() const { return count_ && count_->get() > 1; }
    void addRef() {
        if (count_) {
            count_->inc();
        }
    }
    T* checked() const {
        if (!object_) {
            ReferenceDetail::throwNull();
        }
        return object_;
    }

    template <class U>
    friend class Reference;
    template <class U>
    friend class COWReference;
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
