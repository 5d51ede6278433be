// Interface of a C++ provider that answers all reads from one function.

#pragma once

#include "OW_CppReadOnlyInstanceProviderIFC.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Names, instances and single instances all come out of doSimpleEnumInstances(). Changes are refused unless
/// overridden.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppSimpleInstanceProviderIFC
    : public virtual CppReadOnlyInstanceProviderIFC {
  public:
    ~CppSimpleInstanceProviderIFC() override;
    enum EPropertiesFlag { E_ALL_PROPERTIES, E_KEY_PROPERTIES_ONLY };

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

  protected:
    /// Hands all instances of cimClass to result, keys included. Others than the key properties are needed with
    /// E_ALL_PROPERTIES only. The results are cut down to what the client wants by the caller.
    virtual void doSimpleEnumInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMClass& cimClass,
                                       CIMInstanceResultHandlerIFC& result, EPropertiesFlag propertiesFlag) = 0;
};

typedef SharedLibraryReference<IntrusiveReference<CppSimpleInstanceProviderIFC>> CppSimpleInstanceProviderIFCRef;

} // namespace OpenWBEM
