// The way back into the server that a provider gets from its environment.
#pragma once

#include "cimserver/cimom/Cimom.hpp"

#include "OW_CIMOMHandleIFC.hpp"

#include <memory>

namespace cimserver::cimom {

using namespace OpenWBEM; // its types are this folder's vocabulary

/// Calls the operations of Cimom in the name of the request during which the provider got the handle. The schema is
/// fixed: operations that would change it, queries and the class forms of the association operations throw CimError
/// NotSupported. After the server's end every operation throws Failed.
class CimomHandle : public CIMOMHandleIFC {
  public:
    CimomHandle(std::weak_ptr<Cimom*> cimom, RequestContext context)
        : cimom_(std::move(cimom)), context_(std::move(context)) {}

    using Path = CIMObjectPath;
    using Deep = WBEMFlags::EDeepFlag;
    using LocalOnly = WBEMFlags::ELocalOnlyFlag;
    using Qualifiers = WBEMFlags::EIncludeQualifiersFlag;
    using Origin = WBEMFlags::EIncludeClassOriginFlag;

    void close() override {}
    void enumClassNames(const String& ns, const String& className, StringResultHandlerIFC& result, Deep deep) override;
    void enumClass(const String& ns, const String& className, CIMClassResultHandlerIFC& result, Deep deep,
                   LocalOnly localOnly, Qualifiers includeQualifiers, Origin includeClassOrigin) override;
    void enumInstanceNames(const String& ns, const String& className, CIMObjectPathResultHandlerIFC& result) override;
    void enumInstances(const String& ns, const String& className, CIMInstanceResultHandlerIFC& result, Deep deep,
                       LocalOnly localOnly, Qualifiers includeQualifiers, Origin includeClassOrigin,
                       const StringArray* propertyList) override;
    void enumQualifierTypes(const String& ns, CIMQualifierTypeResultHandlerIFC& result) override;
    void associatorNames(const String& ns, const Path& path, CIMObjectPathResultHandlerIFC& result,
                         const String& assocClass, const String& resultClass, const String& role,
                         const String& resultRole) override;
    void associators(const String& ns, const Path& path, CIMInstanceResultHandlerIFC& result, const String& assocClass,
                     const String& resultClass, const String& role, const String& resultRole,
                     Qualifiers includeQualifiers, Origin includeClassOrigin, const StringArray* propertyList) override;
    void associatorsClasses(const String&, const CIMObjectPath&, CIMClassResultHandlerIFC&, const String&,
                            const String&, const String&, const String&, Qualifiers, Origin,
                            const StringArray*) override {
        notOffered(kInstancesOnly);
    }
    void referenceNames(const String& ns, const Path& path, CIMObjectPathResultHandlerIFC& result,
                        const String& resultClass, const String& role) override;
    void references(const String& ns, const Path& path, CIMInstanceResultHandlerIFC& result, const String& resultClass,
                    const String& role, Qualifiers includeQualifiers, Origin includeClassOrigin,
                    const StringArray* propertyList) override;
    void referencesClasses(const String&, const CIMObjectPath&, CIMClassResultHandlerIFC&, const String&, const String&,
                           Qualifiers, Origin, const StringArray*) override {
        notOffered(kInstancesOnly);
    }
    void execQuery(const String&, CIMInstanceResultHandlerIFC&, const String&, const String&) override {
        notOffered("Queries are not offered");
    }
    CIMClass getClass(const String& ns, const String& className, LocalOnly localOnly, Qualifiers includeQualifiers,
                      Origin includeClassOrigin, const StringArray* propertyList) override;
    void createClass(const String&, const CIMClass&) override { notOffered(kFixedSchema); }
    void modifyClass(const String&, const CIMClass&) override { notOffered(kFixedSchema); }
    void deleteClass(const String&, const String&) override { notOffered(kFixedSchema); }
    CIMInstance getInstance(const String& ns, const Path& instanceName, LocalOnly localOnly,
                            Qualifiers includeQualifiers, Origin includeClassOrigin,
                            const StringArray* propertyList) override;
    Path createInstance(const String& ns, const CIMInstance& instance) override;
    /// The instance modified is the one whose keys the given instance holds.
    void modifyInstance(const String& ns, const CIMInstance& modifiedInstance, Qualifiers includeQualifiers,
                        const StringArray* propertyList) override;
    void deleteInstance(const String& ns, const Path& path) override;
    CIMValue getProperty(const String& ns, const Path& instanceName, const String& propertyName) override;
    void setProperty(const String& ns, const Path& instanceName, const String& propertyName,
                     const CIMValue& newValue) override;
    CIMValue invokeMethod(const String& ns, const Path& path, const String& methodName,
                          const CIMParamValueArray& inParams, CIMParamValueArray& outParams) override;
    CIMQualifierType getQualifierType(const String& ns, const String& qualifierName) override;
    void setQualifierType(const String&, const CIMQualifierType&) override { notOffered(kFixedSchema); }
    void deleteQualifierType(const String&, const String&) override { notOffered(kFixedSchema); }

  private:
    static constexpr const char* kFixedSchema = "The schema of this server cannot be changed";
    static constexpr const char* kInstancesOnly =
        "The association operations are served for instances, not for classes";

    [[noreturn]] static void notOffered(const char* what);
    Cimom& cimom() const;

    std::weak_ptr<Cimom*> cimom_;
    RequestContext context_;
};

} // namespace cimserver::cimom
