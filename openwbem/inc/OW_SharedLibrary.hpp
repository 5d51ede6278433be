// A loaded shared library.

#pragma once

#include "OW_IntrusiveCountableBase.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_String.hpp"
#include "OW_config.h"
#include <cstring>

namespace OpenWBEM {

/// Keeps a library loaded as long as it lives. Code that loads libraries derives from it and unloads in the destructor.
class OW_VISIBILITY_DEFAULT OW_COMMON_API SharedLibrary : public IntrusiveCountableBase {
  public:
    SharedLibrary() {}
    ~SharedLibrary() override;

    /// Sets function to the exported function of that name. FunctionType is a pointer to a function of the right type;
    /// nothing can check that. False, and no change, if the library exports none.
    template <class FunctionType>
    bool getFunctionPointer(const String& functionName, FunctionType& function) const {
        static_assert(sizeof(FunctionType) == sizeof(void*), "a pointer to a function is wanted");
        void* address = nullptr;
        if (!doGetFunctionPointer(functionName, &address)) {
            return false;
        }
        std::memcpy(&function, &address, sizeof(function));
        return true;
    }

  protected:
    /// Sets *address to the exported symbol; false if there is none.
    virtual bool doGetFunctionPointer(const String& functionName, void** address) const = 0;
};

typedef IntrusiveReference<SharedLibrary> SharedLibraryRef;

} // namespace OpenWBEM
