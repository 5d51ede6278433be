// Interface of a C++ provider that completes the instances of another.

#pragma once

#include "OW_Array.hpp"
#include "OW_CppProviderBaseIFC.hpp"
#include "OW_SecondaryInstanceProviderInfo.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_WBEMFlags.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Adds values to instances that the main provider of a class or the manager's own store delivers.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppSecondaryInstanceProviderIFC : public virtual CppProviderBaseIFC {
  public:
    ~CppSecondaryInstanceProviderIFC() override;
    /// Reports the classes.
    virtual void getSecondaryInstanceProviderInfo(SecondaryInstanceProviderInfo& info) = 0;
    /// Completes the instances in place before they go to the client. By default nothing changes.
    virtual void filterInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                                 CIMInstanceArray& instances, WBEMFlags::ELocalOnlyFlag localOnly,
                                 WBEMFlags::EDeepFlag deep, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                 WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                                 const CIMClass& requestedClass, const CIMClass& cimClass);
#ifndef OW_DISABLE_INSTANCE_MANIPULATION
    /// Called after an instance was created, modified or deleted. An exception becomes the client's error, although
    /// nothing is undone. By default nothing happens.
    virtual void createInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMInstance& cimInstance);
    virtual void modifyInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                const CIMInstance& modifiedInstance, const CIMInstance& previousInstance,
                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* propertyList,
                                const CIMClass& theClass);
    virtual void deleteInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& cop);
#endif
    /// This object.
    CppSecondaryInstanceProviderIFC* getSecondaryInstanceProvider() override;
};

typedef SharedLibraryReference<IntrusiveReference<CppSecondaryInstanceProviderIFC>> CppSecondaryInstanceProviderIFCRef;
// The misspelling is the interface's.
typedef Array<CppSecondaryInstanceProviderIFCRef> CppSeconaryInstanceProviderIFCRefArray;

} // namespace OpenWBEM
