#include "OW_CIMOMHandleIFC.hpp"

#include "OW_CIM.hpp"
#include "OW_CIMFeatures.hpp"
#include "OW_Enumeration.hpp"
#include "OW_ResultHandlers.hpp"

namespace OpenWBEM {

CIMOMHandleIFC::~CIMOMHandleIFC() = default;

CIMFeatures CIMOMHandleIFC::getServerFeatures() {
    OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, "getServerFeatures");
}

void CIMOMHandleIFC::exportIndication(const String&, const CIMInstance&) {
    OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, "exportIndication");
}

StringEnumeration CIMOMHandleIFC::enumClassNamesE(const String& ns, const String& className,
                                                  WBEMFlags::EDeepFlag deep) {
    StringEnumeration results;
    StringEnumBuilder handler(results);
    enumClassNames(ns, className, handler, deep);
    return results;
}

StringArray CIMOMHandleIFC::enumClassNamesA(const String& ns, const String& className, WBEMFlags::EDeepFlag deep) {
    StringArray results;
    StringArrayBuilder handler(results);
    enumClassNames(ns, className, handler, deep);
    return results;
}

CIMClassEnumeration CIMOMHandleIFC::enumClassE(const String& ns, const String& className, WBEMFlags::EDeepFlag deep,
                                               WBEMFlags::ELocalOnlyFlag localOnly,
                                               WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) {
    CIMClassEnumeration results;
    CIMClassEnumBuilder handler(results);
    enumClass(ns, className, handler, deep, localOnly, includeQualifiers, includeClassOrigin);
    return results;
}

CIMClassArray CIMOMHandleIFC::enumClassA(const String& ns, const String& className, WBEMFlags::EDeepFlag deep,
                                         WBEMFlags::ELocalOnlyFlag localOnly,
                                         WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                         WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) {
    CIMClassArray results;
    CIMClassArrayBuilder handler(results);
    enumClass(ns, className, handler, deep, localOnly, includeQualifiers, includeClassOrigin);
    return results;
}

CIMObjectPathEnumeration CIMOMHandleIFC::enumInstanceNamesE(const String& ns, const String& className) {
    CIMObjectPathEnumeration results;
    CIMObjectPathEnumBuilder handler(results);
    enumInstanceNames(ns, className, handler);
    return results;
}

CIMObjectPathArray CIMOMHandleIFC::enumInstanceNamesA(const String& ns, const String& className) {
    CIMObjectPathArray results;
    CIMObjectPathArrayBuilder handler(results);
    enumInstanceNames(ns, className, handler);
    return results;
}

CIMInstanceEnumeration CIMOMHandleIFC::enumInstancesE(const String& ns, const String& className,
                                                      WBEMFlags::EDeepFlag deep, WBEMFlags::ELocalOnlyFlag localOnly,
                                                      WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                      WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                      const StringArray* propertyList) {
    CIMInstanceEnumeration results;
    CIMInstanceEnumBuilder handler(results);
    enumInstances(ns, className, handler, deep, localOnly, includeQualifiers, includeClassOrigin, propertyList);
    return results;
}

CIMInstanceArray CIMOMHandleIFC::enumInstancesA(const String& ns, const String& className, WBEMFlags::EDeepFlag deep,
                                                WBEMFlags::ELocalOnlyFlag localOnly,
                                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                const StringArray* propertyList) {
    CIMInstanceArray results;
    CIMInstanceArrayBuilder handler(results);
    enumInstances(ns, className, handler, deep, localOnly, includeQualifiers, includeClassOrigin, propertyList);
    return results;
}

CIMQualifierTypeEnumeration CIMOMHandleIFC::enumQualifierTypesE(const String& ns) {
    CIMQualifierTypeEnumeration results;
    CIMQualifierTypeEnumBuilder handler(results);
    enumQualifierTypes(ns, handler);
    return results;
}

CIMQualifierTypeArray CIMOMHandleIFC::enumQualifierTypesA(const String& ns) {
    CIMQualifierTypeArray results;
    CIMQualifierTypeArrayBuilder handler(results);
    enumQualifierTypes(ns, handler);
    return results;
}

CIMObjectPathEnumeration CIMOMHandleIFC::associatorNamesE(const String& ns, const CIMObjectPath& path,
                                                          const String& assocClass, const String& resultClass,
                                                          const String& role, const String& resultRole) {
    CIMObjectPathEnumeration results;
    CIMObjectPathEnumBuilder handler(results);
    associatorNames(ns, path, handler, assocClass, resultClass, role, resultRole);
    return results;
}

CIMObjectPathArray CIMOMHandleIFC::associatorNamesA(const String& ns, const CIMObjectPath& path,
                                                    const String& assocClass, const String& resultClass,
                                                    const String& role, const String& resultRole) {
    CIMObjectPathArray results;
    CIMObjectPathArrayBuilder handler(results);
    associatorNames(ns, path, handler, assocClass, resultClass, role, resultRole);
    return results;
}

CIMInstanceEnumeration CIMOMHandleIFC::associatorsE(const String& ns, const CIMObjectPath& path,
                                                    const String& assocClass, const String& resultClass,
                                                    const String& role, const String& resultRole,
                                                    WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                    const StringArray* propertyList) {
    CIMInstanceEnumeration results;
    CIMInstanceEnumBuilder handler(results);
    associators(ns, path, handler, assocClass, resultClass, role, resultRole, includeQualifiers, includeClassOrigin,
                propertyList);
    return results;
}

CIMInstanceArray CIMOMHandleIFC::associatorsA(const String& ns, const CIMObjectPath& path, const String& assocClass,
                                              const String& resultClass, const String& role, const String& resultRole,
                                              WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                              WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                              const StringArray* propertyList) {
    CIMInstanceArray results;
    CIMInstanceArrayBuilder handler(results);
    associators(ns, path, handler, assocClass, resultClass, role, resultRole, includeQualifiers, includeClassOrigin,
                propertyList);
    return results;
}

CIMClassEnumeration CIMOMHandleIFC::associatorsClassesE(const String& ns, const CIMObjectPath& path,
                                                        const String& assocClass, const String& resultClass,
                                                        const String& role, const String& resultRole,
                                                        WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                        WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                        const StringArray* propertyList) {
    CIMClassEnumeration results;
    CIMClassEnumBuilder handler(results);
    associatorsClasses(ns, path, handler, assocClass, resultClass, role, resultRole, includeQualifiers,
                       includeClassOrigin, propertyList);
    return results;
}

CIMClassArray CIMOMHandleIFC::associatorsClassesA(const String& ns, const CIMObjectPath& path, const String& assocClass,
                                                  const String& resultClass, const String& role,
                                                  const String& resultRole,
                                                  WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                  WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                  const StringArray* propertyList) {
    CIMClassArray results;
    CIMClassArrayBuilder handler(results);
    associatorsClasses(ns, path, handler, assocClass, resultClass, role, resultRole, includeQualifiers,
                       includeClassOrigin, propertyList);
    return results;
}

CIMObjectPathEnumeration CIMOMHandleIFC::referenceNamesE(const String& ns, const CIMObjectPath& path,
                                                         const String& resultClass, const String& role) {
    CIMObjectPathEnumeration results;
    CIMObjectPathEnumBuilder handler(results);
    referenceNames(ns, path, handler, resultClass, role);
    return results;
}

CIMObjectPathArray CIMOMHandleIFC::referenceNamesA(const String& ns, const CIMObjectPath& path,
                                                   const String& resultClass, const String& role) {
    CIMObjectPathArray results;
    CIMObjectPathArrayBuilder handler(results);
    referenceNames(ns, path, handler, resultClass, role);
    return results;
}

CIMInstanceEnumeration CIMOMHandleIFC::referencesE(const String& ns, const CIMObjectPath& path,
                                                   const String& resultClass, const String& role,
                                                   WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                   WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                   const StringArray* propertyList) {
    CIMInstanceEnumeration results;
    CIMInstanceEnumBuilder handler(results);
    references(ns, path, handler, resultClass, role, includeQualifiers, includeClassOrigin, propertyList);
    return results;
}

CIMInstanceArray CIMOMHandleIFC::referencesA(const String& ns, const CIMObjectPath& path, const String& resultClass,
                                             const String& role, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                             WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                             const StringArray* propertyList) {
    CIMInstanceArray results;
    CIMInstanceArrayBuilder handler(results);
    references(ns, path, handler, resultClass, role, includeQualifiers, includeClassOrigin, propertyList);
    return results;
}

CIMClassEnumeration CIMOMHandleIFC::referencesClassesE(const String& ns, const CIMObjectPath& path,
                                                       const String& resultClass, const String& role,
                                                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                       WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                       const StringArray* propertyList) {
    CIMClassEnumeration results;
    CIMClassEnumBuilder handler(results);
    referencesClasses(ns, path, handler, resultClass, role, includeQualifiers, includeClassOrigin, propertyList);
    return results;
}

CIMClassArray CIMOMHandleIFC::referencesClassesA(const String& ns, const CIMObjectPath& path, const String& resultClass,
                                                 const String& role,
                                                 WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                 WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                 const StringArray* propertyList) {
    CIMClassArray results;
    CIMClassArrayBuilder handler(results);
    referencesClasses(ns, path, handler, resultClass, role, includeQualifiers, includeClassOrigin, propertyList);
    return results;
}

CIMInstanceEnumeration CIMOMHandleIFC::execQueryE(const String& ns, const String& query, const String& queryLanguage) {
    CIMInstanceEnumeration results;
    CIMInstanceEnumBuilder handler(results);
    execQuery(ns, handler, query, queryLanguage);
    return results;
}

CIMInstanceArray CIMOMHandleIFC::execQueryA(const String& ns, const String& query, const String& queryLanguage) {
    CIMInstanceArray results;
    CIMInstanceArrayBuilder handler(results);
    execQuery(ns, handler, query, queryLanguage);
    return results;
}

} // namespace OpenWBEM
