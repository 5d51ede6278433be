#include "OW_CIMOMHandleIFC.hpp"

#include "OW_CIM.hpp"
#include "OW_CIMFeatures.hpp"
#include "OW_Enumeration.hpp"
#include "OW_ResultHandlers.hpp"

namespace OpenWBEM {

CIMOMHandleIFC::~CIMOMHandleIFC() = default;

namespace {

/// Collects what an operation passes to its result handler, which is a Builder.
template <class Results, class Builder, class Operation>
Results collected(Operation operation) {
    Results results;
    Builder handler(results);
    operation(handler);
    return results;
}

} // namespace

CIMFeatures CIMOMHandleIFC::getServerFeatures() {
    OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, "getServerFeatures");
}

void CIMOMHandleIFC::exportIndication(const String&, const CIMInstance&) {
    OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, "exportIndication");
}

StringEnumeration CIMOMHandleIFC::enumClassNamesE(const String& ns, const String& className,
                                                  WBEMFlags::EDeepFlag deep) {
    return collected<StringEnumeration, StringEnumBuilder>(
        [&](StringEnumBuilder& handler) { enumClassNames(ns, className, handler, deep); });
}

StringArray CIMOMHandleIFC::enumClassNamesA(const String& ns, const String& className, WBEMFlags::EDeepFlag deep) {
    return collected<StringArray, StringArrayBuilder>(
        [&](StringArrayBuilder& handler) { enumClassNames(ns, className, handler, deep); });
}

CIMClassEnumeration CIMOMHandleIFC::enumClassE(const String& ns, const String& className, WBEMFlags::EDeepFlag deep,
                                               WBEMFlags::ELocalOnlyFlag localOnly,
                                               WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                               WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) {
    return collected<CIMClassEnumeration, CIMClassEnumBuilder>([&](CIMClassEnumBuilder& handler) {
        enumClass(ns, className, handler, deep, localOnly, includeQualifiers, includeClassOrigin);
    });
}

CIMClassArray CIMOMHandleIFC::enumClassA(const String& ns, const String& className, WBEMFlags::EDeepFlag deep,
                                         WBEMFlags::ELocalOnlyFlag localOnly,
                                         WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                         WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) {
    return collected<CIMClassArray, CIMClassArrayBuilder>([&](CIMClassArrayBuilder& handler) {
        enumClass(ns, className, handler, deep, localOnly, includeQualifiers, includeClassOrigin);
    });
}

CIMObjectPathEnumeration CIMOMHandleIFC::enumInstanceNamesE(const String& ns, const String& className) {
    return collected<CIMObjectPathEnumeration, CIMObjectPathEnumBuilder>(
        [&](CIMObjectPathEnumBuilder& handler) { enumInstanceNames(ns, className, handler); });
}

CIMObjectPathArray CIMOMHandleIFC::enumInstanceNamesA(const String& ns, const String& className) {
    return collected<CIMObjectPathArray, CIMObjectPathArrayBuilder>(
        [&](CIMObjectPathArrayBuilder& handler) { enumInstanceNames(ns, className, handler); });
}

CIMInstanceEnumeration CIMOMHandleIFC::enumInstancesE(const String& ns, const String& className,
                                                      WBEMFlags::EDeepFlag deep, WBEMFlags::ELocalOnlyFlag localOnly,
                                                      WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                      WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                      const StringArray* propertyList) {
    return collected<CIMInstanceEnumeration, CIMInstanceEnumBuilder>([&](CIMInstanceEnumBuilder& handler) {
        enumInstances(ns, className, handler, deep, localOnly, includeQualifiers, includeClassOrigin, propertyList);
    });
}

CIMInstanceArray CIMOMHandleIFC::enumInstancesA(const String& ns, const String& className, WBEMFlags::EDeepFlag deep,
                                                WBEMFlags::ELocalOnlyFlag localOnly,
                                                WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                const StringArray* propertyList) {
    return collected<CIMInstanceArray, CIMInstanceArrayBuilder>([&](CIMInstanceArrayBuilder& handler) {
        enumInstances(ns, className, handler, deep, localOnly, includeQualifiers, includeClassOrigin, propertyList);
    });
}

CIMQualifierTypeEnumeration CIMOMHandleIFC::enumQualifierTypesE(const String& ns) {
    return collected<CIMQualifierTypeEnumeration, CIMQualifierTypeEnumBuilder>(
        [&](CIMQualifierTypeEnumBuilder& handler) { enumQualifierTypes(ns, handler); });
}

CIMQualifierTypeArray CIMOMHandleIFC::enumQualifierTypesA(const String& ns) {
    return collected<CIMQualifierTypeArray, CIMQualifierTypeArrayBuilder>(
        [&](CIMQualifierTypeArrayBuilder& handler) { enumQualifierTypes(ns, handler); });
}

CIMObjectPathEnumeration CIMOMHandleIFC::associatorNamesE(const String& ns, const CIMObjectPath& path,
                                                          const String& assocClass, const String& resultClass,
                                                          const String& role, const String& resultRole) {
    return collected<CIMObjectPathEnumeration, CIMObjectPathEnumBuilder>([&](CIMObjectPathEnumBuilder& handler) {
        associatorNames(ns, path, handler, assocClass, resultClass, role, resultRole);
    });
}

CIMObjectPathArray CIMOMHandleIFC::associatorNamesA(const String& ns, const CIMObjectPath& path,
                                                    const String& assocClass, const String& resultClass,
                                                    const String& role, const String& resultRole) {
    return collected<CIMObjectPathArray, CIMObjectPathArrayBuilder>([&](CIMObjectPathArrayBuilder& handler) {
        associatorNames(ns, path, handler, assocClass, resultClass, role, resultRole);
    });
}

CIMInstanceEnumeration CIMOMHandleIFC::associatorsE(const String& ns, const CIMObjectPath& path,
                                                    const String& assocClass, const String& resultClass,
                                                    const String& role, const String& resultRole,
                                                    WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                    const StringArray* propertyList) {
    return collected<CIMInstanceEnumeration, CIMInstanceEnumBuilder>([&](CIMInstanceEnumBuilder& handler) {
        associators(ns, path, handler, assocClass, resultClass, role, resultRole, includeQualifiers, includeClassOrigin,
                    propertyList);
    });
}

CIMInstanceArray CIMOMHandleIFC::associatorsA(const String& ns, const CIMObjectPath& path, const String& assocClass,
                                              const String& resultClass, const String& role, const String& resultRole,
                                              WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                              WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                              const StringArray* propertyList) {
    return collected<CIMInstanceArray, CIMInstanceArrayBuilder>([&](CIMInstanceArrayBuilder& handler) {
        associators(ns, path, handler, assocClass, resultClass, role, resultRole, includeQualifiers, includeClassOrigin,
                    propertyList);
    });
}

CIMClassEnumeration CIMOMHandleIFC::associatorsClassesE(const String& ns, const CIMObjectPath& path,
                                                        const String& assocClass, const String& resultClass,
                                                        const String& role, const String& resultRole,
                                                        WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                        WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                        const StringArray* propertyList) {
    return collected<CIMClassEnumeration, CIMClassEnumBuilder>([&](CIMClassEnumBuilder& handler) {
        associatorsClasses(ns, path, handler, assocClass, resultClass, role, resultRole, includeQualifiers,
                           includeClassOrigin, propertyList);
    });
}

CIMClassArray CIMOMHandleIFC::associatorsClassesA(const String& ns, const CIMObjectPath& path, const String& assocClass,
                                                  const String& resultClass, const String& role,
                                                  const String& resultRole,
                                                  WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                  WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                  const StringArray* propertyList) {
    return collected<CIMClassArray, CIMClassArrayBuilder>([&](CIMClassArrayBuilder& handler) {
        associatorsClasses(ns, path, handler, assocClass, resultClass, role, resultRole, includeQualifiers,
                           includeClassOrigin, propertyList);
    });
}

CIMObjectPathEnumeration CIMOMHandleIFC::referenceNamesE(const String& ns, const CIMObjectPath& path,
                                                         const String& resultClass, const String& role) {
    return collected<CIMObjectPathEnumeration, CIMObjectPathEnumBuilder>(
        [&](CIMObjectPathEnumBuilder& handler) { referenceNames(ns, path, handler, resultClass, role); });
}

CIMObjectPathArray CIMOMHandleIFC::referenceNamesA(const String& ns, const CIMObjectPath& path,
                                                   const String& resultClass, const String& role) {
    return collected<CIMObjectPathArray, CIMObjectPathArrayBuilder>(
        [&](CIMObjectPathArrayBuilder& handler) { referenceNames(ns, path, handler, resultClass, role); });
}

CIMInstanceEnumeration CIMOMHandleIFC::referencesE(const String& ns, const CIMObjectPath& path,
                                                   const String& resultClass, const String& role,
                                                   WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                   WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                   const StringArray* propertyList) {
    return collected<CIMInstanceEnumeration, CIMInstanceEnumBuilder>([&](CIMInstanceEnumBuilder& handler) {
        references(ns, path, handler, resultClass, role, includeQualifiers, includeClassOrigin, propertyList);
    });
}

CIMInstanceArray CIMOMHandleIFC::referencesA(const String& ns, const CIMObjectPath& path, const String& resultClass,
                                             const String& role, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                             WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                             const StringArray* propertyList) {
    return collected<CIMInstanceArray, CIMInstanceArrayBuilder>([&](CIMInstanceArrayBuilder& handler) {
        references(ns, path, handler, resultClass, role, includeQualifiers, includeClassOrigin, propertyList);
    });
}

CIMClassEnumeration CIMOMHandleIFC::referencesClassesE(const String& ns, const CIMObjectPath& path,
                                                       const String& resultClass, const String& role,
                                                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                       WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                       const StringArray* propertyList) {
    return collected<CIMClassEnumeration, CIMClassEnumBuilder>([&](CIMClassEnumBuilder& handler) {
        referencesClasses(ns, path, handler, resultClass, role, includeQualifiers, includeClassOrigin, propertyList);
    });
}

CIMClassArray CIMOMHandleIFC::referencesClassesA(const String& ns, const CIMObjectPath& path, const String& resultClass,
                                                 const String& role,
                                                 WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                 WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                 const StringArray* propertyList) {
    return collected<CIMClassArray, CIMClassArrayBuilder>([&](CIMClassArrayBuilder& handler) {
        referencesClasses(ns, path, handler, resultClass, role, includeQualifiers, includeClassOrigin, propertyList);
    });
}

CIMInstanceEnumeration CIMOMHandleIFC::execQueryE(const String& ns, const String& query, const String& queryLanguage) {
    return collected<CIMInstanceEnumeration, CIMInstanceEnumBuilder>(
        [&](CIMInstanceEnumBuilder& handler) { execQuery(ns, handler, query, queryLanguage); });
}

CIMInstanceArray CIMOMHandleIFC::execQueryA(const String& ns, const String& query, const String& queryLanguage) {
    return collected<CIMInstanceArray, CIMInstanceArrayBuilder>(
        [&](CIMInstanceArrayBuilder& handler) { execQuery(ns, handler, query, queryLanguage); });
}

} // namespace OpenWBEM
