// The operations of a CIM object manager.

#pragma once

#include "OW_CIMFwd.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_IfcsFwd.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_String.hpp"
#include "OW_WBEMFlags.hpp"
#include "OW_config.h"

namespace OpenWBEM {

struct CIMFeatures;

/// Access to a CIM object manager, in the same process or another. ns is the namespace, such as "root/cimv2". A null
/// propertyList asks for all properties, an empty one for none. Failures are thrown as CIMException with the
/// operation's status code, NOT_SUPPORTED for what an implementation does not offer. The enumerating operations pass
/// their results to the handler one by one; the variants with E and A at the end of the name collect them.
class OW_VISIBILITY_DEFAULT OW_COMMON_API CIMOMHandleIFC : public IntrusiveCountableBase {
  public:
    ~CIMOMHandleIFC() override;

    /// Ends the connection, if there is one.
    virtual void close() = 0;

    /// Names of the subclasses of className; of the classes without a superclass for an empty className.
    virtual void enumClassNames(const String& ns, const String& className, StringResultHandlerIFC& result,
                                WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP) = 0;
    virtual StringEnumeration enumClassNamesE(const String& ns, const String& className,
                                              WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP);
    virtual StringArray enumClassNamesA(const String& ns, const String& className,
                                        WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP);

    /// The same classes themselves.
    virtual void
    enumClass(const String& ns, const String& className, CIMClassResultHandlerIFC& result,
              WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP,
              WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
              WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
              WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN) = 0;
    virtual CIMClassEnumeration
    enumClassE(const String& ns, const String& className, WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP,
               WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
               WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN);
    virtual CIMClassArray
    enumClassA(const String& ns, const String& className, WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP,
               WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
               WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN);

    /// Paths of the instances of className and of its subclasses.
    virtual void enumInstanceNames(const String& ns, const String& className,
                                   CIMObjectPathResultHandlerIFC& result) = 0;
    virtual CIMObjectPathEnumeration enumInstanceNamesE(const String& ns, const String& className);
    virtual CIMObjectPathArray enumInstanceNamesA(const String& ns, const String& className);

    /// The same instances themselves.
    virtual void
    enumInstances(const String& ns, const String& className, CIMInstanceResultHandlerIFC& result,
                  WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP,
                  WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                  WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                  WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                  const StringArray* propertyList = nullptr) = 0;
    virtual CIMInstanceEnumeration
    enumInstancesE(const String& ns, const String& className, WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP,
                   WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                   WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                   WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                   const StringArray* propertyList = nullptr);
    virtual CIMInstanceArray
    enumInstancesA(const String& ns, const String& className, WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP,
                   WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                   WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                   WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                   const StringArray* propertyList = nullptr);

    /// All declared qualifiers of the namespace.
    virtual void enumQualifierTypes(const String& ns, CIMQualifierTypeResultHandlerIFC& result) = 0;
    virtual CIMQualifierTypeEnumeration enumQualifierTypesE(const String& ns);
    virtual CIMQualifierTypeArray enumQualifierTypesA(const String& ns);

    /// Paths of the objects that are associated with path; empty texts do not restrict.
    virtual void associatorNames(const String& ns, const CIMObjectPath& path, CIMObjectPathResultHandlerIFC& result,
                                 const String& assocClass = "", const String& resultClass = "", const String& role = "",
                                 const String& resultRole = "") = 0;
    virtual CIMObjectPathEnumeration associatorNamesE(const String& ns, const CIMObjectPath& path,
                                                      const String& assocClass = "", const String& resultClass = "",
                                                      const String& role = "", const String& resultRole = "");
    virtual CIMObjectPathArray associatorNamesA(const String& ns, const CIMObjectPath& path,
                                                const String& assocClass = "", const String& resultClass = "",
                                                const String& role = "", const String& resultRole = "");

    /// The same objects themselves; path is that of an instance.
    virtual void associators(const String& ns, const CIMObjectPath& path, CIMInstanceResultHandlerIFC& result,
                             const String& assocClass = "", const String& resultClass = "", const String& role = "",
                             const String& resultRole = "",
                             WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                             WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                             const StringArray* propertyList = nullptr) = 0;
    virtual CIMInstanceEnumeration
    associatorsE(const String& ns, const CIMObjectPath& path, const String& assocClass = "",
                 const String& resultClass = "", const String& role = "", const String& resultRole = "",
                 WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                 WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                 const StringArray* propertyList = nullptr);
    virtual CIMInstanceArray
    associatorsA(const String& ns, const CIMObjectPath& path, const String& assocClass = "",
                 const String& resultClass = "", const String& role = "", const String& resultRole = "",
                 WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                 WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                 const StringArray* propertyList = nullptr);

    /// The same for the path of a class.
    virtual void
    associatorsClasses(const String& ns, const CIMObjectPath& path, CIMClassResultHandlerIFC& result,
                       const String& assocClass = "", const String& resultClass = "", const String& role = "",
                       const String& resultRole = "",
                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                       WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                       const StringArray* propertyList = nullptr) = 0;
    virtual CIMClassEnumeration
    associatorsClassesE(const String& ns, const CIMObjectPath& path, const String& assocClass = "",
                        const String& resultClass = "", const String& role = "", const String& resultRole = "",
                        WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                        WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                        const StringArray* propertyList = nullptr);
    virtual CIMClassArray
    associatorsClassesA(const String& ns, const CIMObjectPath& path, const String& assocClass = "",
                        const String& resultClass = "", const String& role = "", const String& resultRole = "",
                        WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                        WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                        const StringArray* propertyList = nullptr);

    /// Paths of the associations that refer to path; empty texts do not restrict.
    virtual void referenceNames(const String& ns, const CIMObjectPath& path, CIMObjectPathResultHandlerIFC& result,
                                const String& resultClass = "", const String& role = "") = 0;
    virtual CIMObjectPathEnumeration referenceNamesE(const String& ns, const CIMObjectPath& path,
                                                     const String& resultClass = "", const String& role = "");
    virtual CIMObjectPathArray referenceNamesA(const String& ns, const CIMObjectPath& path,
                                               const String& resultClass = "", const String& role = "");

    /// The same associations themselves; path is that of an instance.
    virtual void references(const String& ns, const CIMObjectPath& path, CIMInstanceResultHandlerIFC& result,
                            const String& resultClass = "", const String& role = "",
                            WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                            WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                            const StringArray* propertyList = nullptr) = 0;
    virtual CIMInstanceEnumeration
    referencesE(const String& ns, const CIMObjectPath& path, const String& resultClass = "", const String& role = "",
                WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                const StringArray* propertyList = nullptr);
    virtual CIMInstanceArray
    referencesA(const String& ns, const CIMObjectPath& path, const String& resultClass = "", const String& role = "",
                WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                const StringArray* propertyList = nullptr);

    /// The same for the path of a class.
    virtual void
    referencesClasses(const String& ns, const CIMObjectPath& path, CIMClassResultHandlerIFC& result,
                      const String& resultClass = "", const String& role = "",
                      WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                      WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                      const StringArray* propertyList = nullptr) = 0;
    virtual CIMClassEnumeration
    referencesClassesE(const String& ns, const CIMObjectPath& path, const String& resultClass = "",
                       const String& role = "",
                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                       WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                       const StringArray* propertyList = nullptr);
    virtual CIMClassArray
    referencesClassesA(const String& ns, const CIMObjectPath& path, const String& resultClass = "",
                       const String& role = "",
                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                       WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                       const StringArray* propertyList = nullptr);

    /// The instances that a query selects.
    virtual void execQuery(const String& ns, CIMInstanceResultHandlerIFC& result, const String& query,
                           const String& queryLanguage) = 0;
    virtual CIMInstanceEnumeration execQueryE(const String& ns, const String& query, const String& queryLanguage);
    virtual CIMInstanceArray execQueryA(const String& ns, const String& query, const String& queryLanguage);

    /// Classes.
    virtual CIMClass getClass(const String& ns, const String& className,
                              WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                              WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
                              WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                              const StringArray* propertyList = nullptr) = 0;
    virtual void createClass(const String& ns, const CIMClass& cimClass) = 0;
    virtual void modifyClass(const String& ns, const CIMClass& cimClass) = 0;
    virtual void deleteClass(const String& ns, const String& className) = 0;

    /// Instances.
    virtual CIMInstance
    getInstance(const String& ns, const CIMObjectPath& instanceName,
                WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                const StringArray* propertyList = nullptr) = 0;
    /// Returns the path of the new instance.
    virtual CIMObjectPath createInstance(const String& ns, const CIMInstance& instance) = 0;
    virtual void modifyInstance(const String& ns, const CIMInstance& modifiedInstance,
                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
                                const StringArray* propertyList = nullptr) = 0;
    virtual void deleteInstance(const String& ns, const CIMObjectPath& path) = 0;

    /// Single properties and methods.
    virtual CIMValue getProperty(const String& ns, const CIMObjectPath& instanceName, const String& propertyName) = 0;
    virtual void setProperty(const String& ns, const CIMObjectPath& instanceName, const String& propertyName,
                             const CIMValue& newValue) = 0;
    /// Returns the method's return value; the output parameters are put into outParams.
    virtual CIMValue invokeMethod(const String& ns, const CIMObjectPath& path, const String& methodName,
                                  const CIMParamValueArray& inParams, CIMParamValueArray& outParams) = 0;

    /// Declared qualifiers.
    virtual CIMQualifierType getQualifierType(const String& ns, const String& qualifierName) = 0;
    virtual void setQualifierType(const String& ns, const CIMQualifierType& qualifierType) = 0;
    virtual void deleteQualifierType(const String& ns, const String& qualifierName) = 0;

    /// What the object manager can do. NOT_SUPPORTED unless overridden.
    virtual CIMFeatures getServerFeatures();
    /// Passes an indication to the object manager. NOT_SUPPORTED unless overridden.
    virtual void exportIndication(const String& ns, const CIMInstance& indication);
};

} // namespace OpenWBEM
