// Interface of a C++ provider that answers all reads from one function.

#pragma once

#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Names, instances and single instances all come out of doSimpleEnumInstances(). Derive from
/// CppReadOnlyInstanceProviderIFC too if nothing can be changed.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppSimpleInstanceProviderIFC : public virtual CppInstanceProviderIFC {
  public:
    enum EPropertiesFlag { E_ALL_PROPERTIES, E_KEY_PROPERTIES_ONLY };

    /// Hands all instances of cimClass to result, keys included. Others than the key properties are needed with
    /// E_ALL_PROPERTIES only. The caller cuts the results down to what the client wants. When one instance is sought,
    /// result.handle() throws once it is found: let that pass.
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
