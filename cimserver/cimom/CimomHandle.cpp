#include "cimserver/cimom/CimomHandle.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimom {

void CimomHandle::notOffered(const char* what) {
    throw CimError(Status::NotSupported, what);
}

Cimom& CimomHandle::cimom() const {
    const std::shared_ptr<Cimom*> alive = cimom_.lock();
    if (!alive) {
        throw CimError(Status::Failed, "The server has ended");
    }
    return **alive;
}

void CimomHandle::enumClassNames(const String& ns, const String& className, StringResultHandlerIFC& result, Deep deep) {
    for (const CIMClass* const found : cimom().subclassesOf(ns, className, deep == WBEMFlags::E_DEEP)) {
        result.handle(found->getName());
    }
}

void CimomHandle::enumClass(const String& ns, const String& className, CIMClassResultHandlerIFC& result, Deep deep,
                            LocalOnly localOnly, Qualifiers includeQualifiers, Origin includeClassOrigin) {
    for (const CIMClass* const found : cimom().subclassesOf(ns, className, deep == WBEMFlags::E_DEEP)) {
        result.handle(found->clone(localOnly, includeQualifiers, includeClassOrigin));
    }
}

CIMClass CimomHandle::getClass(const String& ns, const String& className, LocalOnly localOnly,
                               Qualifiers includeQualifiers, Origin includeClassOrigin,
                               const StringArray* propertyList) {
    const bool none = propertyList != nullptr && propertyList->empty();
    return cimom()
        .classOf(ns, className)
        .clone(localOnly, includeQualifiers, includeClassOrigin,
               propertyList != nullptr ? *propertyList : StringArray(), none);
}

void CimomHandle::enumQualifierTypes(const String& ns, CIMQualifierTypeResultHandlerIFC& result) {
    for (const CIMQualifierType* const type : cimom().repository().qualifierTypes(ns)) {
        result.handle(*type);
    }
}

CIMQualifierType CimomHandle::getQualifierType(const String& ns, const String& qualifierName) {
    return cimom().qualifierType(ns, qualifierName);
}

void CimomHandle::enumInstanceNames(const String& ns, const String& className, CIMObjectPathResultHandlerIFC& result) {
    cimom().enumInstanceNames(context_, ns, className, result);
}

void CimomHandle::enumInstances(const String& ns, const String& className, CIMInstanceResultHandlerIFC& result,
                                Deep deep, LocalOnly localOnly, Qualifiers includeQualifiers, Origin includeClassOrigin,
                                const StringArray* propertyList) {
    cimom().enumInstances(context_, ns, className,
                          {localOnly, deep, includeQualifiers, includeClassOrigin, propertyList}, result);
}

CIMInstance CimomHandle::getInstance(const String& ns, const CIMObjectPath& instanceName, LocalOnly localOnly,
                                     Qualifiers includeQualifiers, Origin includeClassOrigin,
                                     const StringArray* propertyList) {
    return cimom().getInstance(context_, ns, instanceName,
                               {localOnly, WBEMFlags::E_DEEP, includeQualifiers, includeClassOrigin, propertyList});
}

CIMObjectPath CimomHandle::createInstance(const String& ns, const CIMInstance& instance) {
    return cimom().createInstance(context_, ns, instance);
}

void CimomHandle::modifyInstance(const String& ns, const CIMInstance& modifiedInstance, Qualifiers includeQualifiers,
                                 const StringArray* propertyList) {
    const CIMObjectPath path(ns, modifiedInstance);
    cimom().modifyInstance(context_, ns, path, modifiedInstance, includeQualifiers, propertyList);
}

void CimomHandle::deleteInstance(const String& ns, const CIMObjectPath& path) {
    cimom().deleteInstance(context_, ns, path);
}

CIMValue CimomHandle::getProperty(const String& ns, const CIMObjectPath& instanceName, const String& propertyName) {
    return cimom().getProperty(context_, ns, instanceName, propertyName);
}

void CimomHandle::setProperty(const String& ns, const CIMObjectPath& instanceName, const String& propertyName,
                              const CIMValue& newValue) {
    cimom().setProperty(context_, ns, instanceName, propertyName, newValue);
}

CIMValue CimomHandle::invokeMethod(const String& ns, const CIMObjectPath& path, const String& methodName,
                                   const CIMParamValueArray& inParams, CIMParamValueArray& outParams) {
    return cimom().invokeMethod(context_, ns, path, methodName, inParams, outParams);
}

void CimomHandle::associators(const String& ns, const CIMObjectPath& path, CIMInstanceResultHandlerIFC& result,
                              const String& assocClass, const String& resultClass, const String& role,
                              const String& resultRole, Qualifiers includeQualifiers, Origin includeClassOrigin,
                              const StringArray* propertyList) {
    cimom().associators(
        context_, ns, path, {assocClass, resultClass, role, resultRole},
        {WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_DEEP, includeQualifiers, includeClassOrigin, propertyList}, result);
}

void CimomHandle::associatorNames(const String& ns, const CIMObjectPath& path, CIMObjectPathResultHandlerIFC& result,
                                  const String& assocClass, const String& resultClass, const String& role,
                                  const String& resultRole) {
    cimom().associatorNames(context_, ns, path, {assocClass, resultClass, role, resultRole}, result);
}

void CimomHandle::references(const String& ns, const CIMObjectPath& path, CIMInstanceResultHandlerIFC& result,
                             const String& resultClass, const String& role, Qualifiers includeQualifiers,
                             Origin includeClassOrigin, const StringArray* propertyList) {
    cimom().references(
        context_, ns, path, {"", resultClass, role, ""},
        {WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_DEEP, includeQualifiers, includeClassOrigin, propertyList}, result);
}

void CimomHandle::referenceNames(const String& ns, const CIMObjectPath& path, CIMObjectPathResultHandlerIFC& result,
                                 const String& resultClass, const String& role) {
    cimom().referenceNames(context_, ns, path, {"", resultClass, role, ""}, result);
}

} // namespace cimserver::cimom
