#include "cimserver/cimom/CimomHandle.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimom {
namespace {

class CimomHandle : public CIMOMHandleIFC {
  public:
    CimomHandle(std::weak_ptr<Cimom*> cimom, RequestContext context)
        : cimom_(std::move(cimom)), context_(std::move(context)) {}

    using Deep = WBEMFlags::EDeepFlag;
    using LocalOnly = WBEMFlags::ELocalOnlyFlag;
    using Qualifiers = WBEMFlags::EIncludeQualifiersFlag;
    using Origin = WBEMFlags::EIncludeClassOriginFlag;

    void close() override {}
    void enumClassNames(const String& ns, const String& className, StringResultHandlerIFC& result, Deep deep) override {
        for (const CIMClass* const found : cimom().subclassesOf(ns, className, deep == WBEMFlags::E_DEEP)) {
            result.handle(found->getName());
        }
    }
    void enumClass(const String& ns, const String& className, CIMClassResultHandlerIFC& result, Deep deep,
                   LocalOnly localOnly, Qualifiers includeQualifiers, Origin includeClassOrigin) override {
        for (const CIMClass* const found : cimom().subclassesOf(ns, className, deep == WBEMFlags::E_DEEP)) {
            result.handle(found->clone(localOnly, includeQualifiers, includeClassOrigin));
        }
    }
    void enumInstanceNames(const String& ns, const String& className, CIMObjectPathResultHandlerIFC& result) override {
        cimom().enumInstanceNames(context_, ns, className, result);
    }
    void enumInstances(const String& ns, const String& className, CIMInstanceResultHandlerIFC& result, Deep deep,
                       LocalOnly localOnly, Qualifiers includeQualifiers, Origin includeClassOrigin,
                       const StringArray* propertyList) override {
        cimom().enumInstances(context_, ns, className,
                              {localOnly, deep, includeQualifiers, includeClassOrigin, propertyList}, result);
    }
    void enumQualifierTypes(const String& ns, CIMQualifierTypeResultHandlerIFC& result) override {
        for (const CIMQualifierType* const type : cimom().repository().qualifierTypes(cimom().namespaceOf(ns))) {
            result.handle(*type);
        }
    }
    void associatorNames(const String& ns, const CIMObjectPath& path, CIMObjectPathResultHandlerIFC& result,
                         const String& assocClass, const String& resultClass, const String& role,
                         const String& resultRole) override {
        cimom().associatorNames(context_, ns, path, {assocClass, resultClass, role, resultRole}, result);
    }
    void associators(const String& ns, const CIMObjectPath& path, CIMInstanceResultHandlerIFC& result,
                     const String& assocClass, const String& resultClass, const String& role, const String& resultRole,
                     Qualifiers includeQualifiers, Origin includeClassOrigin,
                     const StringArray* propertyList) override {
        cimom().associators(
            context_, ns, path, {assocClass, resultClass, role, resultRole},
            {WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_DEEP, includeQualifiers, includeClassOrigin, propertyList},
            result);
    }
    void associatorsClasses(const String& ns, const CIMObjectPath& path, CIMClassResultHandlerIFC& result,
                            const String& assocClass, const String& resultClass, const String& role,
                            const String& resultRole, Qualifiers includeQualifiers, Origin includeClassOrigin,
                            const StringArray* propertyList) override {
        for (const CIMClass* const found : cimom().classesFor(AssociationEnd::Associator, context_, ns, path,
                                                              {assocClass, resultClass, role, resultRole})) {
            result.handle(
                part(*found, WBEMFlags::E_NOT_LOCAL_ONLY, includeQualifiers, includeClassOrigin, propertyList));
        }
    }
    void referenceNames(const String& ns, const CIMObjectPath& path, CIMObjectPathResultHandlerIFC& result,
                        const String& resultClass, const String& role) override {
        cimom().referenceNames(context_, ns, path, {resultClass, "", role, ""}, result);
    }
    void references(const String& ns, const CIMObjectPath& path, CIMInstanceResultHandlerIFC& result,
                    const String& resultClass, const String& role, Qualifiers includeQualifiers,
                    Origin includeClassOrigin, const StringArray* propertyList) override {
        cimom().references(
            context_, ns, path, {resultClass, "", role, ""},
            {WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_DEEP, includeQualifiers, includeClassOrigin, propertyList},
            result);
    }
    void referencesClasses(const String& ns, const CIMObjectPath& path, CIMClassResultHandlerIFC& result,
                           const String& resultClass, const String& role, Qualifiers includeQualifiers,
                           Origin includeClassOrigin, const StringArray* propertyList) override {
        for (const CIMClass* const found :
             cimom().classesFor(AssociationEnd::Reference, context_, ns, path, {resultClass, "", role, ""})) {
            result.handle(
                part(*found, WBEMFlags::E_NOT_LOCAL_ONLY, includeQualifiers, includeClassOrigin, propertyList));
        }
    }
    void execQuery(const String&, CIMInstanceResultHandlerIFC&, const String&, const String&) override {
        notOffered("Queries are not offered");
    }
    CIMClass getClass(const String& ns, const String& className, LocalOnly localOnly, Qualifiers includeQualifiers,
                      Origin includeClassOrigin, const StringArray* propertyList) override {
        return part(cimom().classOf(ns, className, Status::NotFound), localOnly, includeQualifiers, includeClassOrigin,
                    propertyList);
    }
    void createClass(const String&, const CIMClass&) override { notOffered(kFixedSchema); }
    void modifyClass(const String&, const CIMClass&) override { notOffered(kFixedSchema); }
    void deleteClass(const String&, const String&) override { notOffered(kFixedSchema); }
    CIMInstance getInstance(const String& ns, const CIMObjectPath& instanceName, LocalOnly localOnly,
                            Qualifiers includeQualifiers, Origin includeClassOrigin,
                            const StringArray* propertyList) override {
        return cimom().getInstance(context_, ns, instanceName,
                                   {localOnly, WBEMFlags::E_DEEP, includeQualifiers, includeClassOrigin, propertyList});
    }
    CIMObjectPath createInstance(const String& ns, const CIMInstance& instance) override {
        return cimom().createInstance(context_, ns, instance);
    }
    /// The keys in the given instance name the one to modify.
    void modifyInstance(const String& ns, const CIMInstance& modifiedInstance, Qualifiers includeQualifiers,
                        const StringArray* propertyList) override {
        const CIMObjectPath path(ns, modifiedInstance);
        cimom().modifyInstance(context_, ns, path, modifiedInstance, includeQualifiers, propertyList);
    }
    void deleteInstance(const String& ns, const CIMObjectPath& path) override {
        cimom().deleteInstance(context_, ns, path);
    }
    CIMValue getProperty(const String& ns, const CIMObjectPath& instanceName, const String& propertyName) override {
        return cimom().getProperty(context_, ns, instanceName, propertyName);
    }
    void setProperty(const String& ns, const CIMObjectPath& instanceName, const String& propertyName,
                     const CIMValue& newValue) override {
        cimom().setProperty(context_, ns, instanceName, propertyName, newValue);
    }
    CIMValue invokeMethod(const String& ns, const CIMObjectPath& path, const String& methodName,
                          const CIMParamValueArray& inParams, CIMParamValueArray& outParams) override {
        return cimom().invokeMethod(
            context_, ns, path, methodName, [&](const CIMMethod&) { return inParams; }, outParams);
    }
    CIMQualifierType getQualifierType(const String& ns, const String& qualifierName) override {
        return cimom().qualifierType(ns, qualifierName);
    }
    void setQualifierType(const String&, const CIMQualifierType&) override { notOffered(kFixedSchema); }
    void deleteQualifierType(const String&, const String&) override { notOffered(kFixedSchema); }

  private:
    static constexpr const char* kFixedSchema = "The schema of this server cannot be changed";

    static CIMClass part(const CIMClass& whole, LocalOnly localOnly, Qualifiers includeQualifiers,
                         Origin includeClassOrigin, const StringArray* propertyList) {
        const bool none = propertyList != nullptr && propertyList->empty();
        return whole.clone(localOnly, includeQualifiers, includeClassOrigin,
                           propertyList != nullptr ? *propertyList : StringArray(), none);
    }
    [[noreturn]] static void notOffered(const char* what) { throw CimError(Status::NotSupported, what); }
    Cimom& cimom() const {
        const std::shared_ptr<Cimom*> alive = cimom_.lock();
        if (!alive) {
            throw CimError(Status::Failed, "The server has ended");
        }
        return **alive;
    }

    std::weak_ptr<Cimom*> cimom_;
    RequestContext context_;
};

} // namespace

CIMOMHandleIFCRef makeCimomHandle(std::weak_ptr<Cimom*> cimom, RequestContext context) {
    return CIMOMHandleIFCRef(new CimomHandle(std::move(cimom), std::move(context)));
}

} // namespace cimserver::cimom
