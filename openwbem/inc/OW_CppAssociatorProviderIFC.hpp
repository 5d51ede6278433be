// Interface of a C++ provider for associations.

#pragma once

#include "OW_AssociatorProviderInfo.hpp"
#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_ResultHandlerIFC.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Serves association classes, whose instances it also provides. Empty class names and roles do not restrict; the
/// provider applies the others itself. objectName may not exist. Calls may come from several threads at once.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppAssociatorProviderIFC : public virtual CppInstanceProviderIFC {
  public:
    ~CppAssociatorProviderIFC() override;
    /// Reports the association classes; by default none, so that the schema's Provider qualifiers decide.
    virtual void getAssociatorProviderInfo(AssociatorProviderInfo& info);
    /// Passes the objects that assocClass associates with objectName to result.
    virtual void associators(const ProviderEnvironmentIFCRef& env, CIMInstanceResultHandlerIFC& result,
                             const String& ns, const CIMObjectPath& objectName, const String& assocClass,
                             const String& resultClass, const String& role, const String& resultRole,
                             WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                             WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                             const StringArray* propertyList) = 0;
    /// Passes the paths of the same objects to result.
    virtual void associatorNames(const ProviderEnvironmentIFCRef& env, CIMObjectPathResultHandlerIFC& result,
                                 const String& ns, const CIMObjectPath& objectName, const String& assocClass,
                                 const String& resultClass, const String& role, const String& resultRole) = 0;
    /// Passes the instances of association class resultClass that refer to objectName to result.
    virtual void references(const ProviderEnvironmentIFCRef& env, CIMInstanceResultHandlerIFC& result, const String& ns,
                            const CIMObjectPath& objectName, const String& resultClass, const String& role,
                            WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                            WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList) = 0;
    /// Passes the paths of the same instances to result.
    virtual void referenceNames(const ProviderEnvironmentIFCRef& env, CIMObjectPathResultHandlerIFC& result,
                                const String& ns, const CIMObjectPath& objectName, const String& resultClass,
                                const String& role) = 0;
    /// This object.
    CppAssociatorProviderIFC* getAssociatorProvider() override;
};

typedef SharedLibraryReference<IntrusiveReference<CppAssociatorProviderIFC>> CppAssociatorProviderIFCRef;

} // namespace OpenWBEM
