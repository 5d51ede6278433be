// Interface of a C++ provider that serves all association operations with one function.

#pragma once

#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// All four association functions use doReferences(). They ask the object manager for the association class and, in
/// associators(), for the objects at the other ends.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppSimpleAssociatorProviderIFC : public CppAssociatorProviderIFC {
  public:
    void associators(const ProviderEnvironmentIFCRef& env, CIMInstanceResultHandlerIFC& result, const String& ns,
                     const CIMObjectPath& objectName, const String& assocClass, const String& resultClass,
                     const String& role, const String& resultRole, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                     WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList) override;
    void associatorNames(const ProviderEnvironmentIFCRef& env, CIMObjectPathResultHandlerIFC& result, const String& ns,
                         const CIMObjectPath& objectName, const String& assocClass, const String& resultClass,
                         const String& role, const String& resultRole) override;
    void references(const ProviderEnvironmentIFCRef& env, CIMInstanceResultHandlerIFC& result, const String& ns,
                    const CIMObjectPath& objectName, const String& resultClass, const String& role,
                    WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList) override;
    void referenceNames(const ProviderEnvironmentIFCRef& env, CIMObjectPathResultHandlerIFC& result, const String& ns,
                        const CIMObjectPath& objectName, const String& resultClass, const String& role) override;

  protected:
    /// Passes the instances of assocClass that refer to objectName in the given role to result. An empty text does not
    /// restrict; resultClass and resultRole are empty when references are asked for.
    virtual void doReferences(const ProviderEnvironmentIFCRef& env, CIMInstanceResultHandlerIFC& result,
                              const String& ns, const CIMObjectPath& objectName, const CIMClass& assocClass,
                              const String& resultClass, const String& role, const String& resultRole) = 0;
};

} // namespace OpenWBEM
