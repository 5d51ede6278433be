// The module over the platform in memory, as an object manager holds it, and the requests that tests make of it.
#pragma once

#include "CDRProvider.hpp"
#include "FakePlatform.hpp"
#include "PropertyCases.hpp"
#include "Support.hpp"

#include "OW_CIM.hpp"
#include "OW_ProviderEnvironmentIFC.hpp"

/// The CIM error that the call throws: "CODE LINE FILE MESSAGE", the file without the folder of the module's sources;
/// "" when it succeeds. Other exceptions pass through.
std::string failure(const std::function<void()>& call);

/// A value of a CIM type from its text.
OpenWBEM::CIMValue value(const std::string& type, const std::string& text);

/// An instance path from its text, Class.Key="value",..., in the namespace "root/cimv2".
OpenWBEM::CIMObjectPath path(const std::string& text);

using NewValues = std::vector<std::pair<std::string, OpenWBEM::CIMValue>>;

/// The instance that a client sends to change properties: the keys of the path and the values, in that order.
OpenWBEM::CIMInstance changed(const std::string& path, const NewValues& values);

/// The property's value as text; "-" when the instance has no such property.
std::string shown(const OpenWBEM::CIMInstance& instance, const std::string& property);

/// The value of the property's qualifier as text; "-" when it has none of that name.
std::string qualifier(const OpenWBEM::CIMInstance& instance, const std::string& property, const std::string& name);

class ModuleTest : public testing::Test {
  protected:
    /// The module initialised over an empty platform; what the initialisation called and printed is still recorded.
    ModuleTest();
    ~ModuleTest() override;

    // Requests through the umbrella provider.
    std::vector<std::string> names(const std::string& className);
    std::vector<OpenWBEM::CIMInstance> instances(const std::string& className);
    OpenWBEM::CIMInstance get(const OpenWBEM::CIMObjectPath& path);
    OpenWBEM::CIMInstance get(const std::string& text) { return get(path(text)); }
    void modify(const OpenWBEM::CIMInstance& instance);
    /// Changes one property and tells how it failed.
    std::string set(const std::string& path, const std::string& property, const OpenWBEM::CIMValue& value);
    std::string set(const std::string& path, const std::string& property, const std::string& text) {
        return set(path, property, value("string", text));
    }
    std::string create(const OpenWBEM::CIMInstance& instance);
    void remove(const OpenWBEM::CIMObjectPath& path);
    unsigned int invoke(const OpenWBEM::CIMObjectPath& path, const std::string& method);

    /// What was printed on standard output since the last call.
    static std::string output();

    fakes::FakePlatform& platform = fakes::FakePlatform::get();
    std::vector<std::string> logged; ///< what the module logs through the object manager
    OpenWBEM::ProviderEnvironmentIFCRef environment;
    std::unique_ptr<CDRProvider> provider;
};
