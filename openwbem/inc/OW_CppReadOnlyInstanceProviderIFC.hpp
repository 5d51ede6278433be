// Interface of a C++ provider for instances that cannot be changed.

#ifndef OW_CPP_READ_ONLY_INSTANCE_PROVIDER_IFC_HPP_INCLUDE_GUARD_
#define OW_CPP_READ_ONLY_INSTANCE_PROVIDER_IFC_HPP_INCLUDE_GUARD_

#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Refuses to create, modify and delete instances with CIMException::NOT_SUPPORTED.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppReadOnlyInstanceProviderIFC : public virtual CppInstanceProviderIFC {
  public:
    virtual ~CppReadOnlyInstanceProviderIFC();
#ifndef OW_DISABLE_INSTANCE_MANIPULATION
    virtual CIMObjectPath createInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                         const CIMInstance& cimInstance);
    virtual void modifyInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                const CIMInstance& modifiedInstance, const CIMInstance& previousInstance,
                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* propertyList,
                                const CIMClass& theClass);
    virtual void deleteInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& cop);
#endif
};

typedef SharedLibraryReference<IntrusiveReference<CppReadOnlyInstanceProviderIFC>> CppReadOnlyInstanceProviderIFCRef;

} // namespace OpenWBEM

#endif
