#include "ModuleTest.hpp"

#include "CDROAMWrap.hpp"

#include "OW_Logger.hpp"
#include "OW_OperationContext.hpp"
#include "OW_RepositoryIFC.hpp"
#include "OW_ResultHandlers.hpp"

#include <iostream>

using namespace OpenWBEM;

// The module keeps these for as long as the process lives.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:CDROAMWrap::CDROAMWrap\nleak:Provider::initialize\n";
}

namespace {

constexpr const char* kNamespace = "root/cimv2";

class TestLogger : public Logger {
  public:
    explicit TestLogger(std::vector<std::string>& entries) : Logger("test", E_ALL_LEVEL), entries_(entries) {}

    void doProcessLogMessage(const LogMessage& message) const override {
        entries_.emplace_back((message.category + ": " + message.message).c_str());
    }
    LoggerRef doClone() const override { return LoggerRef(new TestLogger(*this)); }

  private:
    std::vector<std::string>& entries_;
};

class TestEnvironment : public ProviderEnvironmentIFC {
  public:
    explicit TestEnvironment(std::vector<std::string>& logged) : logger_(new TestLogger(logged)) {}
    CIMOMHandleIFCRef getCIMOMHandle() const override { return CIMOMHandleIFCRef(); }
    CIMOMHandleIFCRef getRepositoryCIMOMHandle() const override { return CIMOMHandleIFCRef(); }
    RepositoryIFCRef getRepository() const override { return RepositoryIFCRef(); }
    LoggerRef getLogger() const override { return logger_; }
    LoggerRef getLogger(const String& /*component*/) const override { return logger_; }
    String getConfigItem(const String& /*name*/, const String& absent) const override { return absent; }
    String getUserName() const override { return ""; }
    OperationContext& getOperationContext() override { return context_; }

  private:
    LoggerRef logger_;
    OperationContext context_;
};

} // namespace

std::string failure(const std::function<void()>& call) {
    const std::string sources = "CDR/CDROAM/src/";
    try {
        call();
    } catch (const CIMException& e) {
        std::string file = e.getFile();
        file.erase(0, file.compare(0, sources.size(), sources) == 0 ? sources.size() : 0);
        return std::to_string(e.getErrNo()) + " " + std::to_string(e.getLine()) + " " + file + " " +
               e.Exception::getMessage();
    }
    return "";
}

CIMValue value(const std::string& type, const std::string& text) {
    return CIMValue::createSimpleValue(type.c_str(), text.c_str());
}

CIMObjectPath path(const std::string& text) {
    CIMObjectPath parsed = CIMObjectPath::parse(text.c_str());
    parsed.setNameSpace(kNamespace);
    return parsed;
}

CIMInstance changed(const std::string& text, const NewValues& values) {
    const CIMObjectPath name = path(text);
    CIMPropertyArray properties = name.getKeys();
    for (const auto& [property, newValue] : values) {
        properties.push_back(newValue ? CIMProperty(property.c_str(), newValue) : CIMProperty(property.c_str()));
    }
    return CIMInstance(CIMName(name.getClassName())).setProperties(properties);
}

std::string shown(const CIMInstance& instance, const std::string& property) {
    const CIMProperty found = instance.getProperty(property.c_str());
    return found ? found.getValue().toString().c_str() : "-";
}

std::string qualifier(const CIMInstance& instance, const std::string& property, const std::string& name) {
    const CIMQualifier found = instance.getProperty(property.c_str()).getQualifier(name.c_str());
    return found ? found.getValue().toString().c_str() : "-";
}

ModuleTest::ModuleTest() : environment(new TestEnvironment(logged)) {
    testing::internal::CaptureStdout();
    platform.reset();
    provider.reset(dynamic_cast<CDRProvider*>(createProviderCDRProvider()));
    provider->initialize(environment);
}

ModuleTest::~ModuleTest() {
    delete myInstance;
    myInstance = nullptr;
    const std::string rest = testing::internal::GetCapturedStdout();
    if (HasFailure()) {
        std::cout << rest;
    }
}

std::vector<std::string> ModuleTest::names(const std::string& className) {
    CIMObjectPathArray found;
    CIMObjectPathArrayBuilder builder(found);
    provider->enumInstanceNames(environment, kNamespace, className.c_str(), builder, CIMClass(CIMNULL));
    std::vector<std::string> texts;
    for (const CIMObjectPath& name : found) {
        EXPECT_EQ(name.getNameSpace(), kNamespace);
        texts.emplace_back(name.modelPath().c_str());
    }
    return texts;
}

std::vector<CIMInstance> ModuleTest::instances(const std::string& className) {
    CIMInstanceArray found;
    CIMInstanceArrayBuilder builder(found);
    provider->enumInstances(environment, kNamespace, className.c_str(), builder, WBEMFlags::E_NOT_LOCAL_ONLY,
                            WBEMFlags::E_DEEP, WBEMFlags::E_INCLUDE_QUALIFIERS, WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                            nullptr, CIMClass(CIMNULL), CIMClass(CIMNULL));
    return {found.begin(), found.end()};
}

CIMInstance ModuleTest::get(const CIMObjectPath& name) {
    return provider->getInstance(environment, kNamespace, name, WBEMFlags::E_NOT_LOCAL_ONLY,
                                 WBEMFlags::E_INCLUDE_QUALIFIERS, WBEMFlags::E_EXCLUDE_CLASS_ORIGIN, nullptr,
                                 CIMClass(CIMNULL));
}

void ModuleTest::modify(const CIMInstance& instance) {
    // Only the new instance counts: the previous one here is of no class at all.
    provider->modifyInstance(environment, kNamespace, instance, CIMInstance("NoClass"), WBEMFlags::E_INCLUDE_QUALIFIERS,
                             nullptr, CIMClass(CIMNULL));
}

std::string ModuleTest::set(const std::string& name, const std::string& property, const CIMValue& newValue) {
    return failure([&] { modify(changed(name, {{property, newValue}})); });
}

std::string ModuleTest::create(const CIMInstance& instance) {
    return provider->createInstance(environment, kNamespace, instance).modelPath().c_str();
}

void ModuleTest::remove(const CIMObjectPath& name) {
    provider->deleteInstance(environment, kNamespace, name);
}

unsigned int ModuleTest::invoke(const CIMObjectPath& name, const std::string& method) {
    CIMParamValueArray out;
    return provider->invokeMethod(environment, kNamespace, name, method.c_str(), CIMParamValueArray(), out).toUInt32();
}

std::string ModuleTest::output() {
    const std::string printed = testing::internal::GetCapturedStdout();
    testing::internal::CaptureStdout();
    return printed;
}
