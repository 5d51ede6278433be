// Interface of a C++ provider for instances.

#pragma once

#include "OW_CppProviderBaseIFC.hpp"
#include "OW_InstanceProviderInfo.hpp"
#include "OW_ResultHandlerIFC.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_WBEMFlags.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Serves the instances of its classes. Reads may be called by several threads at once; modify, create and delete calls
/// are exclusive, unless the object manager is configured otherwise. ns is the namespace of the request; that of a path
/// may be empty. A null propertyList asks for all properties, an empty one for none. cimClass is complete, with
/// inherited properties and qualifiers. What a provider returns may go to the client unchanged.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppInstanceProviderIFC : public virtual CppProviderBaseIFC {
  public:
    ~CppInstanceProviderIFC() override;
    /// Reports the classes; by default none, so that the schema's Provider qualifiers decide.
    virtual void getInstanceProviderInfo(InstanceProviderInfo& info);
    /// Passes the path of each instance of className to result.
    virtual void enumInstanceNames(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                                   CIMObjectPathResultHandlerIFC& result, const CIMClass& cimClass) = 0;
    /// Passes each instance of className to result. requestedClass is the class that the client asked for, cimClass
    /// that of className. By default calls getInstance() for each name from enumInstanceNames() at once and passes the
    /// result on; an exception ends the enumeration.
    virtual void enumInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                               CIMInstanceResultHandlerIFC& result, WBEMFlags::ELocalOnlyFlag localOnly,
                               WBEMFlags::EDeepFlag deep, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                               const CIMClass& requestedClass, const CIMClass& cimClass);
    /// The instance of that name; throws NOT_FOUND if there is none. Keys may be missing or null.
    virtual CIMInstance getInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                    const CIMObjectPath& instanceName, WBEMFlags::ELocalOnlyFlag localOnly,
                                    WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                    const StringArray* propertyList, const CIMClass& cimClass) = 0;
#ifndef OW_DISABLE_INSTANCE_MANIPULATION
    /// Creates the instance and returns its path; null lets the object manager build the path from the instance.
    virtual CIMObjectPath createInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                         const CIMInstance& cimInstance) = 0;
    /// Gives the instance the values of modifiedInstance. With a propertyList only the listed properties are to be
    /// changed; without one a property that the client did not send may look like one sent as null or with the class
    /// default.
    virtual void modifyInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                const CIMInstance& modifiedInstance, const CIMInstance& previousInstance,
                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* propertyList,
                                const CIMClass& theClass) = 0;
    /// Deletes the instance; throws NOT_FOUND if there is none.
    virtual void deleteInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& cop) = 0;
#endif
    /// This object.
    CppInstanceProviderIFC* getInstanceProvider() override;
};

typedef SharedLibraryReference<IntrusiveReference<CppInstanceProviderIFC>> CppInstanceProviderIFCRef;

} // namespace OpenWBEM
