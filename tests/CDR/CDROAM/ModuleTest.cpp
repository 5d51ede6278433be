#include "ModuleTest.hpp"

#include "CDROAMWrap.hpp"

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

class TestEnvironment : public ProviderEnvironmentIFC {
  public:
    explicit TestEnvironment(const LoggerRef& logger) : logger_(logger) {}
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

std::string text(const String& from) {
    return from.c_str();
}

} // namespace

std::string Failure::text() const {
    if (code == 0) {
        return "";
    }
    return std::to_string(code) + " " + std::to_string(line) + " " + file.substr(file.rfind('/') + 1) + " " + message;
}

Failure failure(const std::function<void()>& call) {
    try {
        call();
    } catch (const CIMException& e) {
        return {e.getErrNo(), e.getLine(), e.getFile(), e.Exception::getMessage()};
    }
    return {};
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
    CIMInstance instance{CIMName(name.getClassName())};
    for (const CIMProperty& key : name.getKeys()) {
        instance.setProperty(key);
    }
    for (const auto& [property, newValue] : values) {
        instance.setProperty(newValue ? CIMProperty(property.c_str(), newValue) : CIMProperty(property.c_str()));
    }
    return instance;
}

std::string shown(const CIMInstance& instance, const std::string& property) {
    const CIMProperty found = instance.getProperty(property.c_str());
    return found ? text(found.getValue().toString()) : "-";
}

std::string qualifier(const CIMInstance& instance, const std::string& property, const std::string& name) {
    const CIMQualifier found = instance.getProperty(property.c_str()).getQualifier(name.c_str());
    return found ? text(found.getValue().toString()) : "-";
}

TestLogger::TestLogger() : Logger("test", E_ALL_LEVEL) {}

void TestLogger::doProcessLogMessage(const LogMessage& message) const {
    entries.push_back(text(message.category) + ": " + text(message.message));
}

LoggerRef TestLogger::doClone() const {
    return LoggerRef(new TestLogger(*this));
}

ModuleTest::ModuleTest() : logger(new TestLogger) {
    testing::internal::CaptureStdout();
    platform.reset();
    environment = new TestEnvironment(logger);
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
        EXPECT_EQ(text(name.getNameSpace()), kNamespace);
        texts.push_back(text(name.modelPath()));
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

Failure ModuleTest::set(const std::string& name, const std::string& property, const CIMValue& newValue) {
    return failure([&] { modify(changed(name, {{property, newValue}})); });
}

Failure ModuleTest::set(const std::string& name, const std::string& property, const std::string& newText) {
    return set(name, property, CIMValue(String(newText.c_str())));
}

CIMObjectPath ModuleTest::create(const CIMInstance& instance) {
    return provider->createInstance(environment, kNamespace, instance);
}

void ModuleTest::remove(const CIMObjectPath& name) {
    provider->deleteInstance(environment, kNamespace, name);
}

unsigned int ModuleTest::invoke(const CIMObjectPath& name, const std::string& method) {
    CIMParamValueArray out;
    const CIMValue result =
        provider->invokeMethod(environment, kNamespace, name, method.c_str(), CIMParamValueArray(), out);
    EXPECT_TRUE(out.empty());
    return result.toUInt32();
}

std::string ModuleTest::output() {
    const std::string printed = testing::internal::GetCapturedStdout();
    testing::internal::CaptureStdout();
    return printed;
}
