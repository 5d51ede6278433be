// The way back into the server that a provider gets from its environment.
#pragma once

#include "cimserver/cimom/Cimom.hpp"

#include "OW_CIMOMHandleIFC.hpp"

#include <memory>

namespace cimserver::cimom {

/// Calls the operations of Cimom in the name of the request during which the provider got the handle. The schema is
/// fixed: operations that would change it, queries and the class forms of the association operations throw CimError
/// NotSupported. After the server's end every operation throws Failed.
class CimomHandle : public OpenWBEM::CIMOMHandleIFC {
  public:
    CimomHandle(std::weak_ptr<Cimom*> cimom, RequestContext context)
        : cimom_(std::move(cimom)), context_(std::move(context)) {}

    using String = OpenWBEM::String;
    using StringArray = OpenWBEM::StringArray;
    using Path = OpenWBEM::CIMObjectPath;
    using Deep = OpenWBEM::WBEMFlags::EDeepFlag;
    using LocalOnly = OpenWBEM::WBEMFlags::ELocalOnlyFlag;
    using Qualifiers = OpenWBEM::WBEMFlags::EIncludeQualifiersFlag;
    using Origin = OpenWBEM::WBEMFlags::EIncludeClassOriginFlag;

    void close() override {}
    void enumClassNames(const String& ns, const String& className, OpenWBEM::StringResultHandlerIFC& result,
                        Deep deep) override;
    void enumClass(const String& ns, const String& className, OpenWBEM::CIMClassResultHandlerIFC& result, Deep deep,
                   LocalOnly localOnly, Qualifiers includeQualifiers, Origin includeClassOrigin) override;
    void enumInstanceNames(const String& ns, const String& className,
                           OpenWBEM::CIMObjectPathResultHandlerIFC& result) override;
    void enumInstances(const String& ns, const String& className, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                       Deep deep, LocalOnly localOnly, Qualifiers includeQualifiers, Origin includeClassOrigin,
                       const StringArray* propertyList) override;
    void enumQualifierTypes(const String& ns, OpenWBEM::CIMQualifierTypeResultHandlerIFC& result) override;
    void associatorNames(const String& ns, const Path& path, OpenWBEM::CIMObjectPathResultHandlerIFC& result,
                         const String& assocClass, const String& resultClass, const String& role,
                         const String& resultRole) override;
    void associators(const String& ns, const Path& path, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                     const String& assocClass, const String& resultClass, const String& role, const String& resultRole,
                     Qualifiers includeQualifiers, Origin includeClassOrigin, const StringArray* propertyList) override;
    void associatorsClasses(const String& ns, const Path& path, OpenWBEM::CIMClassResultHandlerIFC& result,
                            const String& assocClass, const String& resultClass, const String& role,
                            const String& resultRole, Qualifiers includeQualifiers, Origin includeClassOrigin,
                            const StringArray* propertyList) override;
    void referenceNames(const String& ns, const Path& path, OpenWBEM::CIMObjectPathResultHandlerIFC& result,
                        const String& resultClass, const String& role) override;
    void references(const String& ns, const Path& path, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                    const String& resultClass, const String& role, Qualifiers includeQualifiers,
                    Origin includeClassOrigin, const StringArray* propertyList) override;
    void referencesClasses(const String& ns, const Path& path, OpenWBEM::CIMClassResultHandlerIFC& result,
                           const String& resultClass, const String& role, Qualifiers includeQualifiers,
                           Origin includeClassOrigin, const StringArray* propertyList) override;
    void execQuery(const String& ns, OpenWBEM::CIMInstanceResultHandlerIFC& result, const String& query,
                   const String& queryLanguage) override;
    OpenWBEM::CIMClass getClass(const String& ns, const String& className, LocalOnly localOnly,
                                Qualifiers includeQualifiers, Origin includeClassOrigin,
                                const StringArray* propertyList) override;
    void createClass(const String& ns, const OpenWBEM::CIMClass& cimClass) override;
    void modifyClass(const String& ns, const OpenWBEM::CIMClass& cimClass) override;
    void deleteClass(const String& ns, const String& className) override;
    OpenWBEM::CIMInstance getInstance(const String& ns, const Path& instanceName, LocalOnly localOnly,
                                      Qualifiers includeQualifiers, Origin includeClassOrigin,
                                      const StringArray* propertyList) override;
    Path createInstance(const String& ns, const OpenWBEM::CIMInstance& instance) override;
    /// The instance modified is the one whose keys the given instance holds.
    void modifyInstance(const String& ns, const OpenWBEM::CIMInstance& modifiedInstance, Qualifiers includeQualifiers,
                        const StringArray* propertyList) override;
    void deleteInstance(const String& ns, const Path& path) override;
    OpenWBEM::CIMValue getProperty(const String& ns, const Path& instanceName, const String& propertyName) override;
    void setProperty(const String& ns, const Path& instanceName, const String& propertyName,
                     const OpenWBEM::CIMValue& newValue) override;
    OpenWBEM::CIMValue invokeMethod(const String& ns, const Path& path, const String& methodName,
                                    const OpenWBEM::CIMParamValueArray& inParams,
                                    OpenWBEM::CIMParamValueArray& outParams) override;
    OpenWBEM::CIMQualifierType getQualifierType(const String& ns, const String& qualifierName) override;
    void setQualifierType(const String& ns, const OpenWBEM::CIMQualifierType& qualifierType) override;
    void deleteQualifierType(const String& ns, const String& qualifierName) override;

  private:
    Cimom& cimom() const;

    std::weak_ptr<Cimom*> cimom_;
    RequestContext context_;
};

} // namespace cimserver::cimom
