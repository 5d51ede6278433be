// Sole owners of an object or of an array made with new.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

/// Owns an object and deletes it. Cannot be copied.
template <class X>
class AutoPtr {
  public:
    typedef X element_type;

    explicit AutoPtr(X* p = nullptr) : ptr_(p) {}
    ~AutoPtr() { delete ptr_; }
    /// Deletes the present object and owns p instead.
    AutoPtr& operator=(X* p) {
        reset(p);
        return *this;
    }
    X& operator*() const { return *ptr_; }
    X* operator->() const { return ptr_; }
    /// The object, still owned.
    X* get() const { return ptr_; }
    /// Hands the object over to the caller.
    X* release() {
        X* p = ptr_;
        ptr_ = nullptr;
        return p;
    }
    /// Deletes the present object, unless it is p, and owns p instead.
    void reset(X* p = nullptr) {
        if (p != ptr_) {
            delete ptr_;
            ptr_ = p;
        }
    }

  private:
    AutoPtr(const AutoPtr&);
    AutoPtr& operator=(const AutoPtr&);

    X* ptr_;
};

/// Owns an array made with new[] and deletes it. Cannot be copied.
template <class X>
class AutoPtrVec {
  public:
    typedef X element_type;

    explicit AutoPtrVec(X* p = nullptr) : ptr_(p) {}
    ~AutoPtrVec() { delete[] ptr_; }
    /// Deletes the present array and owns p instead.
    AutoPtrVec& operator=(X* p) {
        reset(p);
        return *this;
    }
    X& operator*() const { return *ptr_; }
    X* operator->() const { return ptr_; }
    /// Element i, unchecked.
    X& operator[](unsigned i) { return ptr_[i]; }
    const X& operator[](unsigned i) const { return ptr_[i]; }
    /// The array, still owned.
    X* get() const { return ptr_; }
    /// Hands the array over to the caller.
    X* release() {
        X* p = ptr_;
        ptr_ = nullptr;
        return p;
    }
    /// Deletes the present array, unless it is p, and owns p instead.
    void reset(X* p = nullptr) {
        if (p != ptr_) {
            delete[] ptr_;
            ptr_ = p;
        }
    }

  private:
    AutoPtrVec(const AutoPtrVec&);
    AutoPtrVec& operator=(const AutoPtrVec&);

    X* ptr_;
};

} // namespace OpenWBEM
