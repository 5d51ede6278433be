// Interface of a C++ provider that serves all reads with one function.

#pragma once

#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// All reads, of names, instances and single instances, use doSimpleEnumInstances(). Derive from
/// CppReadOnlyInstanceProviderIFC too if nothing can be changed.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppSimpleInstanceProviderIFC : public virtual CppInstanceProviderIFC {
  public:
    enum EPropertiesFlag { E_ALL_PROPERTIES, E_KEY_PROPERTIES_ONLY };

    /// Passes all instances of cimClass to result, keys included. Properties other than keys are needed with
    /// E_ALL_PROPERTIES only. The caller filters the results for the client. When one instance is sought,
    /// result.handle() throws once it is found: let that exception pass.
    virtual void doSimpleEnumInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMClass& cimClass,
                                       CIMInstanceResultHandlerIFC& result, EPropertiesFlag propertiesFlag) = 0;

    void enumInstanceNames(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                           CIMObjectPathResultHandlerIFC& result, const CIMClass& cimClass) override;
    void enumInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                       CIMInstanceResultHandlerIFC& result, WBEMFlags::ELocalOnlyFlag localOnly,
                       WBEMFlags::EDeepFlag deep, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                       WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                       const CIMClass& requestedClass, const CIMClass& cimClass) override;
    CIMInstance getInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& instanceName,
                            WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                            WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                            const CIMClass& cimClass) override;
};

} // namespace OpenWBEM
