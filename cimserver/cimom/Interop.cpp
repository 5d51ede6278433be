#include "cimserver/cimom/Interop.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/common/Text.hpp"

#include "OW_CppReadOnlyInstanceProviderIFC.hpp"

namespace cimserver::cimom {

using namespace OpenWBEM;

namespace {

constexpr const char* kProviderId = "cimserver.interop";
constexpr const char* kObjectManagerName = "cimserverd";

constexpr const char* kMof =
#include "cimserver/cimom/Interop.mof.inc"
    ;

class InteropProvider : public CppReadOnlyInstanceProviderIFC {
  public:
    explicit InteropProvider(const schema::Repository& repository) : repository_(repository) {}

    void enumInstanceNames(const ProviderEnvironmentIFCRef&, const String& ns, const String&,
                           CIMObjectPathResultHandlerIFC& result, const CIMClass& cimClass) override {
        for (const CIMInstance& instance : instances(cimClass)) {
            result.handle(CIMObjectPath(ns, instance));
        }
    }

    CIMInstance getInstance(const ProviderEnvironmentIFCRef&, const String& ns, const CIMObjectPath& path,
                            WBEMFlags::ELocalOnlyFlag, WBEMFlags::EIncludeQualifiersFlag,
                            WBEMFlags::EIncludeClassOriginFlag, const StringArray*, const CIMClass& cimClass) override {
        for (const CIMInstance& instance : instances(cimClass)) {
            CIMObjectPath wanted(path);
            if (CIMObjectPath(ns, instance).equals(wanted.setNameSpace(ns))) {
                return instance;
            }
        }
        throw CimError(Status::NotFound, path.toString().c_str());
    }

  private:
    std::vector<CIMInstance> instances(const CIMClass& cimClass) const;
    CIMInstance objectManager(const CIMClass& cimClass) const;
    CIMInstance nameSpace(const CIMClass& cimClass, const String& name) const;

    const schema::Repository& repository_;
};

/// An instance of the class without the qualifiers of the class's properties.
CIMInstance blank(const CIMClass& cimClass) {
    return cimClass.newInstance().clone(WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_EXCLUDE_QUALIFIERS,
                                        WBEMFlags::E_EXCLUDE_CLASS_ORIGIN);
}

void set(CIMInstance& instance, const char* name, const String& text) {
    instance.setProperty(CIMName(name), CIMValue(text));
}

/// Fills the key list from the properties that are keys of the class.
CIMInstance withKeys(CIMInstance instance, const CIMClass& cimClass) {
    CIMPropertyArray keys;
    for (const CIMProperty& key : cimClass.getKeys()) {
        keys.push_back(instance.getProperty(CIMName(key.getName())));
    }
    return instance.setKeys(keys);
}

std::vector<CIMInstance> InteropProvider::instances(const CIMClass& cimClass) const {
    if (cimClass.getName().equalsIgnoreCase("CIM_ObjectManager")) {
        return {objectManager(cimClass)};
    }
    std::vector<CIMInstance> all;
    // Aliases too: a client looks for the namespace it came by.
    for (const auto& names : {repository_.namespaces(), repository_.aliases()}) {
        for (const String& name : names) {
            all.push_back(nameSpace(cimClass, name));
        }
    }
    return all;
}

CIMInstance InteropProvider::objectManager(const CIMClass& cimClass) const {
    CIMInstance instance = blank(cimClass);
    set(instance, "SystemCreationClassName", "CIM_ComputerSystem");
    set(instance, "SystemName", hostName().c_str());
    set(instance, "CreationClassName", "CIM_ObjectManager");
    set(instance, "Name", kObjectManagerName);
    set(instance, "ElementName", kObjectManagerName);
    // Clients show what follows "version".
    set(instance, "Description",
        "cimserverd, a CIM server for providers with the OpenWBEM interface, version " CIMSERVER_VERSION);
    set(instance, "Version", CIMSERVER_VERSION);
    instance.setProperty(CIMName("GatherStatisticalData"), CIMValue(false));
    return withKeys(instance, cimClass);
}

CIMInstance InteropProvider::nameSpace(const CIMClass& cimClass, const String& name) const {
    CIMInstance instance = blank(cimClass);
    set(instance, "SystemCreationClassName", "CIM_ComputerSystem");
    set(instance, "SystemName", hostName().c_str());
    set(instance, "ObjectManagerCreationClassName", "CIM_ObjectManager");
    set(instance, "ObjectManagerName", kObjectManagerName);
    set(instance, "CreationClassName", "CIM_Namespace");
    set(instance, "Name", name);
    set(instance, "ElementName", name);
    instance.setProperty(CIMName("ClassInfo"), CIMValue(UInt16(2)));
    instance.setProperty(CIMName("ClassType"), CIMValue(UInt16(2)));
    return withKeys(instance, cimClass);
}

} // namespace

void addInterop(schema::Repository& repository, provider::ProviderHost& host) {
    repository.addAlias("interop", "root/interop");
    repository.compileText(kMof, "interop.mof", "root/interop");
    host.addBuiltIn(kProviderId, [&repository] { return new InteropProvider(repository); });
}

} // namespace cimserver::cimom
