// Reference to an object whose code lies in a shared library.

#pragma once

#include "OW_SharedLibrary.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Holds a T, itself a counted reference, and the library with the object's code, which stays loaded until after the
/// object is destroyed.
template <class T>
class SharedLibraryReference {
  private:
    SharedLibraryRef library_; // before obj_, so that it is released after it
    T obj_;

  public:
    typedef typename T::element_type element_type;
    typedef T SharedLibraryReference::*safe_bool;

    /// Null: no object and no library.
    SharedLibraryReference() {}
    /// libRef may be null for an object that needs no library.
    SharedLibraryReference(const SharedLibraryRef& libRef, const T& obj) : library_(libRef), obj_(obj) {}
    SharedLibraryReference(const SharedLibraryRef& libRef, element_type* obj) : library_(libRef), obj_(obj) {}
    SharedLibraryReference(const SharedLibraryReference& arg) : library_(arg.library_), obj_(arg.obj_) {}
    template <class U>
    SharedLibraryReference(const SharedLibraryReference<U>& arg) : library_(arg.getLibRef()), obj_(arg.get()) {}
    SharedLibraryReference& operator=(const SharedLibraryReference& arg) {
        // The former object goes first, its library last.
        const SharedLibraryRef formerLib(library_);
        library_ = arg.library_;
        obj_ = arg.obj_;
        return *this;
    }

    element_type* operator->() const { return obj_.operator->(); }
    element_type& operator*() const { return *obj_; }
    T get() const { return obj_; }
    SharedLibraryRef getLibRef() const { return library_; }

    /// True when there is an object.
    operator safe_bool() const { return obj_ ? &SharedLibraryReference::obj_ : nullptr; }
    bool operator!() const { return !obj_; }
    bool isNull() const OW_DEPRECATED { return !obj_; }
    /// Releases the object, then the library.
    void setNull() { *this = SharedLibraryReference(); }

    /// The same object as a U, which is a counted reference; null when the object is not of that type.
    template <class U>
    SharedLibraryReference<U> cast_to() const {
        const U obj(obj_.template cast_to<typename U::element_type>());
        return obj ? SharedLibraryReference<U>(library_, obj) : SharedLibraryReference<U>();
    }
};

} // namespace OpenWBEM
