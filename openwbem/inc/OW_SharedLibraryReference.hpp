// Reference to an object whose code lies in a shared library.

#pragma once

#include "OW_SharedLibrary.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Holds a T, itself a counted reference, and the library with the object's code: the library stays loaded until after
/// the object is gone.
template <class T>
class SharedLibraryReference {
  private:
    SharedLibraryRef m_sharedLib; // before m_obj, so that it is released after it
    T m_obj;

  public:
    typedef typename T::element_type element_type;
    typedef T SharedLibraryReference::*safe_bool;

    /// Null: no object and no library.
    SharedLibraryReference() {}
    /// libRef may be null for an object that needs no library.
    SharedLibraryReference(const SharedLibraryRef& libRef, const T& obj) : m_sharedLib(libRef), m_obj(obj) {}
    SharedLibraryReference(const SharedLibraryRef& libRef, element_type* obj) : m_sharedLib(libRef), m_obj(obj) {}
    SharedLibraryReference(const SharedLibraryReference& arg) : m_sharedLib(arg.m_sharedLib), m_obj(arg.m_obj) {}
    template <class U>
    SharedLibraryReference(const SharedLibraryReference<U>& arg) : m_sharedLib(arg.getLibRef()), m_obj(arg.get()) {}
    SharedLibraryReference& operator=(const SharedLibraryReference& arg) {
        // The former object goes first, its library last.
        const SharedLibraryRef formerLib(m_sharedLib);
        m_sharedLib = arg.m_sharedLib;
        m_obj = arg.m_obj;
        return *this;
    }

    element_type* operator->() const { return m_obj.operator->(); }
    element_type& operator*() const { return *m_obj; }
    T get() const { return m_obj; }
    SharedLibraryRef getLibRef() const { return m_sharedLib; }

    /// True when there is an object.
    operator safe_bool() const { return m_obj ? &SharedLibraryReference::m_obj : nullptr; }
    bool operator!() const { return !m_obj; }
    bool isNull() const OW_DEPRECATED { return !m_obj; }
    /// Releases the object, then the library.
    void setNull() { *this = SharedLibraryReference(); }

    /// A reference to the same object as a U, itself a counted reference; null when it is none.
    template <class U>
    SharedLibraryReference<U> cast_to() const {
        const U obj(m_obj.template cast_to<typename U::element_type>());
        return obj ? SharedLibraryReference<U>(m_sharedLib, obj) : SharedLibraryReference<U>();
    }
};

} // namespace OpenWBEM
