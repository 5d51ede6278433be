// Sole owners of an object or of an array made with new.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

/// Deletes its object when it goes. Cannot be copied.
template <class X>
class AutoPtr {
  public:
    typedef X element_type;

    explicit AutoPtr(X* p = nullptr) : m_ptr(p) {}
    ~AutoPtr() { delete m_ptr; }
    /// Deletes the present object and owns p instead.
    AutoPtr& operator=(X* p) {
        reset(p);
        return *this;
    }
    X& operator*() const { return *m_ptr; }
    X* operator->() const { return m_ptr; }
    /// The object, still owned.
    X* get() const { return m_ptr; }
    /// Hands the object over to the caller.
    X* release() {
        X* p = m_ptr;
        m_ptr = nullptr;
        return p;
    }
    /// Deletes the present object, unless it is p, and owns p instead.
    void reset(X* p = nullptr) {
        if (p != m_ptr) {
            delete m_ptr;
            m_ptr = p;
        }
    }

  private:
    AutoPtr(const AutoPtr&);
    AutoPtr& operator=(const AutoPtr&);

    X* m_ptr;
};

/// Deletes its array (made with new[]) when it goes. Cannot be copied.
template <class X>
class AutoPtrVec {
  public:
    typedef X element_type;

    explicit AutoPtrVec(X* p = nullptr) : m_ptr(p) {}
    ~AutoPtrVec() { delete[] m_ptr; }
    /// Deletes the present array and owns p instead.
    AutoPtrVec& operator=(X* p) {
        reset(p);
        return *this;
    }
    X& operator*() const { return *m_ptr; }
    X* operator->() const { return m_ptr; }
    /// Element i, unchecked.
    X& operator[](unsigned i) { return m_ptr[i]; }
    const X& operator[](unsigned i) const { return m_ptr[i]; }
    /// The array, still owned.
    X* get() const { return m_ptr; }
    /// Hands the array over to the caller.
    X* release() {
        X* p = m_ptr;
        m_ptr = nullptr;
        return p;
    }
    /// Deletes the present array, unless it is p, and owns p instead.
    void reset(X* p = nullptr) {
        if (p != m_ptr) {
            delete[] m_ptr;
            m_ptr = p;
        }
    }

  private:
    AutoPtrVec(const AutoPtrVec&);
    AutoPtrVec& operator=(const AutoPtrVec&);

    X* m_ptr;
};

} // namespace OpenWBEM
