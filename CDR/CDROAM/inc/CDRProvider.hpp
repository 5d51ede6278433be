// The module's one provider: receives every request for the six CIM classes and passes it to the class's provider.
#pragma once

#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"

class CDROAMWrap;

/// Chooses the per-class provider by the request's class name, which is case-sensitive, forwards the call unchanged and
/// turns every exception into an OpenWBEM::CIMException: code 5 for an unknown class; code 1 without a text for
/// CFG_ReadError from a read, CFG_WriteError from a change, and either from a method; the provider's own CIM error
/// unchanged; for anything else code 1 with a text that is also logged. The association operations always fail with
/// code 5.
class CDRProvider : public OpenWBEM::CppMethodProviderIFC, public OpenWBEM::CppAssociatorProviderIFC {
  public:
    ~CDRProvider() override;

    OpenWBEM::CIMValue invokeMethod(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                                    const OpenWBEM::CIMObjectPath& path, const OpenWBEM::String& methodName,
                                    const OpenWBEM::CIMParamValueArray& in, OpenWBEM::CIMParamValueArray& out) override;
    /// Initialises the per-class providers, then makes the managed objects. A second call makes a second set.
    void initialize(const OpenWBEM::ProviderEnvironmentIFCRef& env) override;
    void enumInstanceNames(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                           const OpenWBEM::String& className, OpenWBEM::CIMObjectPathResultHandlerIFC& result,
                           const OpenWBEM::CIMClass& cimClass) override;
    void enumInstances(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                       const OpenWBEM::String& className, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                       OpenWBEM::WBEMFlags::ELocalOnlyFlag localOnly, OpenWBEM::WBEMFlags::EDeepFlag deep,
                       OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                       OpenWBEM::WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                       const OpenWBEM::StringArray* propertyList, const OpenWBEM::CIMClass& requestedClass,
                       const OpenWBEM::CIMClass& cimClass) override;
    OpenWBEM::CIMInstance getInstance(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                                      const OpenWBEM::CIMObjectPath& instanceName,
                                      OpenWBEM::WBEMFlags::ELocalOnlyFlag localOnly,
                                      OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                      OpenWBEM::WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                      const OpenWBEM::StringArray* propertyList,
                                      const OpenWBEM::CIMClass& cimClass) override;
    OpenWBEM::CIMObjectPath createInstance(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                                           const OpenWBEM::CIMInstance& cimInstance) override;
    void deleteInstance(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                        const OpenWBEM::CIMObjectPath& cop) override;
    void modifyInstance(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                        const OpenWBEM::CIMInstance& modifiedInstance, const OpenWBEM::CIMInstance& previousInstance,
                        OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                        const OpenWBEM::StringArray* propertyList, const OpenWBEM::CIMClass& theClass) override;
    void associators(const OpenWBEM::ProviderEnvironmentIFCRef& env, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                     const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& objectName,
                     const OpenWBEM::String& assocClass, const OpenWBEM::String& resultClass,
                     const OpenWBEM::String& role, const OpenWBEM::String& resultRole,
                     OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                     OpenWBEM::WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                     const OpenWBEM::StringArray* propertyList) override;
    void associatorNames(const OpenWBEM::ProviderEnvironmentIFCRef& env,
                         OpenWBEM::CIMObjectPathResultHandlerIFC& result, const OpenWBEM::String& ns,
                         const OpenWBEM::CIMObjectPath& objectName, const OpenWBEM::String& assocClass,
                         const OpenWBEM::String& resultClass, const OpenWBEM::String& role,
                         const OpenWBEM::String& resultRole) override;
    void references(const OpenWBEM::ProviderEnvironmentIFCRef& env, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                    const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& objectName,
                    const OpenWBEM::String& resultClass, const OpenWBEM::String& role,
                    OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                    OpenWBEM::WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                    const OpenWBEM::StringArray* propertyList) override;
    void referenceNames(const OpenWBEM::ProviderEnvironmentIFCRef& env, OpenWBEM::CIMObjectPathResultHandlerIFC& result,
                        const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& objectName,
                        const OpenWBEM::String& resultClass, const OpenWBEM::String& role) override;

    /// For a host that ends the module itself: calls the per-class providers' cleanup(). The managed objects stay.
    void cleanup();
};

#pragma GCC visibility push(default)
extern "C" {
/// The holder of the managed objects; null until the provider is initialised.
extern CDROAMWrap* myInstance;
/// A new provider; the caller owns it.
OpenWBEM::CppProviderBaseIFC* createProviderCDRProvider();
/// The version of the OpenWBEM provider interface that the module is built for.
const char* getOWVersion();
}
#pragma GCC visibility pop
