// Interface of a C++ provider for methods.

#pragma once

#include "OW_CppProviderBaseIFC.hpp"
#include "OW_MethodProviderInfo.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Serves the methods of its classes. Calls are exclusive, unless the object manager is configured otherwise.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppMethodProviderIFC : public virtual CppProviderBaseIFC {
  public:
    ~CppMethodProviderIFC() override;
    /// Reports classes and methods; by default none, so that the schema's Provider qualifiers decide.
    virtual void getMethodProviderInfo(MethodProviderInfo& info);
    /// Invokes the method and returns its return value, which may be null. in holds all input parameters in the order
    /// of the class, null where the client sent none; out holds all output parameters with their names, to be given
    /// values. methodName and the names in path have the client's spelling.
    virtual CIMValue invokeMethod(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& path,
                                  const String& methodName, const CIMParamValueArray& in, CIMParamValueArray& out) = 0;
    /// This object.
    CppMethodProviderIFC* getMethodProvider() override;
};

typedef SharedLibraryReference<IntrusiveReference<CppMethodProviderIFC>> CppMethodProviderIFCRef;

} // namespace OpenWBEM
