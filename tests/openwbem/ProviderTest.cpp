// The provider interfaces' default behaviour, and a module loaded as an object manager loads it.

#include "OW_CppProviderIncludes.hpp"
#include "OW_NoSuchPropertyException.hpp"
#include "OW_ResultHandlers.hpp"
#include "../Slot.hpp"
#include "Thrown.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>

using namespace OpenWBEM;
using namespace OpenWBEM::WBEMFlags;

namespace {

class Module : public SharedLibrary {
  public:
    Module() : handle_(::dlopen(TEST_MODULE, RTLD_NOW | RTLD_LOCAL)) {}
    ~Module() override {
        if (handle_) {
            ::dlclose(handle_);
        }
    }
    bool isOpen() const { return handle_ != nullptr; }

  protected:
    bool doGetFunctionPointer(const String& name, void** address) const override {
        *address = ::dlsym(handle_, name.c_str());
        return *address != nullptr;
    }

  private:
    void* handle_;
};

class LoadedProvider : public testing::Test {
  protected:
    void SetUp() override {
        const IntrusiveReference<Module> module(new Module);
        ASSERT_TRUE(module->isOpen()) << ::dlerror();
        const char* (*version)() = nullptr;
        ASSERT_TRUE(module->getFunctionPointer("getOWVersion", version));
        EXPECT_STREQ(version(), "3.0.3");
        CppProviderBaseIFC* (*create)() = nullptr;
        EXPECT_FALSE(module->getFunctionPointer("createProviderOther", create));
        ASSERT_TRUE(module->getFunctionPointer("createProviderTest", create));
        provider = CppProviderBaseIFCRef(module, create());
    }

    CppProviderBaseIFCRef provider;
    const ProviderEnvironmentIFCRef env;
    const CIMClass cimClass{"ACME_Thing"};
};

TEST_F(LoadedProvider, offersTheInterfacesItImplements) {
    EXPECT_NE(provider->getInstanceProvider(), nullptr);
    EXPECT_NE(provider->getMethodProvider(), nullptr);
    EXPECT_EQ(provider->getAssociatorProvider(), nullptr);
    EXPECT_EQ(provider->getPolledProvider(), nullptr);
    EXPECT_EQ(provider->getIndicationProvider(), nullptr);
    EXPECT_TRUE(provider->canUnload());
    EXPECT_FALSE(provider->getPersist());
    EXPECT_EQ(provider->getLastAccessTime(), DateTime());
    provider->updateAccessTime();
    EXPECT_GT(provider->getLastAccessTime(), DateTime());
}

TEST_F(LoadedProvider, enumeratesByGettingEachNameUntilOneFails) {
    CIMInstanceArray instances;
    CIMInstanceArrayBuilder result(instances);
    CppInstanceProviderIFC* instanceProvider = provider->getInstanceProvider();
    EXPECT_EQ(thrownBy([&] {
                  instanceProvider->enumInstances(env, "root/cimv2", "ACME_Thing", result, E_NOT_LOCAL_ONLY, E_DEEP,
                                                  E_INCLUDE_QUALIFIERS, E_EXCLUDE_CLASS_ORIGIN, nullptr, cimClass,
                                                  cimClass);
              }),
              "CIMException: requested object could not be found (3)");
    ASSERT_EQ(instances.size(), 2U);
    EXPECT_EQ(instances[1].getPropertyValue("id"), CIMValue(UInt32(2)));
}

TEST_F(LoadedProvider, throwsEveryKindOfExceptionAcrossTheBorder) {
    CppInstanceProviderIFC* instanceProvider = provider->getInstanceProvider();
    EXPECT_THROW(instanceProvider->createInstance(env, "", CIMInstance()), CIMException);
    EXPECT_THROW(instanceProvider->modifyInstance(env, "", CIMInstance(), CIMInstance(), E_EXCLUDE_QUALIFIERS, nullptr,
                                                  cimClass),
                 NoSuchPropertyException);
    EXPECT_EQ(thrownBy([&] { instanceProvider->deleteInstance(env, "", CIMObjectPath("X")); }), nullUse);
}

TEST_F(LoadedProvider, exchangesParameters) {
    const CIMParamValueArray in(2, CIMParamValue("p", CIMValue("v")));
    CIMParamValueArray out;
    EXPECT_EQ(provider->getMethodProvider()->invokeMethod(env, "", CIMObjectPath("X"), "M", in, out),
              CIMValue(UInt32(2)));
    ASSERT_EQ(out.size(), 2U);
    EXPECT_EQ(out[1].getValue(), CIMValue("v"));
}

class SimpleProvider : public CppReadOnlyInstanceProviderIFC, public CppSimpleInstanceProviderIFC {
  public:
    void doSimpleEnumInstances(const ProviderEnvironmentIFCRef&, const String&, const CIMClass& cimClass,
                               CIMInstanceResultHandlerIFC& result, EPropertiesFlag properties) override {
        for (const char* name : {"a", "b"}) {
            CIMProperty key("Name", CIMValue(name));
            key.addQualifier(CIMQualifier::createKeyQualifier());
            CIMInstance instance(cimClass.getName());
            instance.setProperty(key);
            if (properties == E_ALL_PROPERTIES) {
                instance.setProperty("Size", CIMValue(UInt8(1)));
            }
            result.handle(instance);
            ++handled;
        }
    }
    int handled = 0;
};

CIMClass thingClass() {
    CIMClass thing("ACME_Thing");
    thing.addProperty(CIMProperty("Name", CIMDataType(CIMDataType::STRING)));
    return thing.addProperty(CIMProperty("Size", CIMDataType(CIMDataType::UINT16)));
}

TEST(CppSimpleInstanceProvider, answersAllReadsFromOneFunction) {
    const IntrusiveReference<SimpleProvider> simple(new SimpleProvider);
    CppInstanceProviderIFC* const provider = simple->getInstanceProvider();
    const ProviderEnvironmentIFCRef env;
    const CIMClass cimClass = thingClass();
    CIMObjectPathArray names;
    CIMObjectPathArrayBuilder nameResult(names);
    provider->enumInstanceNames(env, "root", "ACME_Thing", nameResult, cimClass);
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[1].toString(), "/root:ACME_Thing.Name=\"b\"");

    const StringArray onlySize(1, "size");
    CIMObjectPath wanted(names[0]);
    wanted.setNameSpace("");
    wanted.setClassName("acme_thing");
    simple->handled = 0;
    const CIMInstance found = provider->getInstance(env, "root", wanted, E_NOT_LOCAL_ONLY, E_EXCLUDE_QUALIFIERS,
                                                    E_EXCLUDE_CLASS_ORIGIN, &onlySize, cimClass);
    EXPECT_EQ(found.getProperties().size(), 1U);
    EXPECT_EQ(CIMObjectPath("root", found), names[0]);
    EXPECT_EQ(simple->handled, 0) << "goes on after the wanted one";
    wanted.setKeyValue("Name", CIMValue("c"));
    EXPECT_EQ(thrownBy([&] {
                  provider->getInstance(env, "root", wanted, E_NOT_LOCAL_ONLY, E_EXCLUDE_QUALIFIERS,
                                        E_EXCLUDE_CLASS_ORIGIN, nullptr, cimClass);
              }),
              "CIMException: requested object could not be found (/:acme_thing.Name=\"c\")");

    CIMInstanceArray instances;
    CIMInstanceArrayBuilder instanceResult(instances);
    provider->enumInstances(env, "root", "ACME_Thing", instanceResult, E_NOT_LOCAL_ONLY, E_DEEP, E_EXCLUDE_QUALIFIERS,
                            E_EXCLUDE_CLASS_ORIGIN, nullptr, cimClass, cimClass);
    ASSERT_EQ(instances.size(), 2U);
    EXPECT_EQ(instances[0].getPropertyValue("Size"), CIMValue(UInt16(1))) << "as its class has it";
    const std::string refusal = "CIMException: general error (DeleteInstance not supported by provider)";
    EXPECT_EQ(thrownBy([&] { provider->deleteInstance(env, "root", names[0]); }), refusal);
    EXPECT_EQ(thrownBy([&] { provider->createInstance(env, "root", instances[0]); }), refusal);
    EXPECT_EQ(thrownBy([&] {
                  provider->modifyInstance(env, "root", instances[0], instances[0], E_EXCLUDE_QUALIFIERS, nullptr,
                                           cimClass);
              }),
              refusal);
}

// The order of the virtual functions is what modules and object managers are compiled against.
TEST(ProviderInterfaces, keepTheOrderOfTheirVirtualFunctions) {
    typedef CppProviderBaseIFC B;
    typedef CppInstanceProviderIFC I;
    typedef CppMethodProviderIFC M;
    typedef CppAssociatorProviderIFC A;
    const size_t destructors = 2; // a table begins with the two forms of the destructor
    // An associator provider's functions follow those of the instance provider in the same table.
    const struct {
        size_t found;
        size_t wanted;
    } cases[] = {
        {slot(&B::initialize), 0},
        {slot(&B::getInstanceProvider), 1},
        {slot(&B::getSecondaryInstanceProvider), 2},
        {slot(&B::getMethodProvider), 3},
        {slot(&B::getAssociatorProvider), 4},
        {slot(&B::getIndicationExportProvider), 5},
        {slot(&B::getPolledProvider), 6},
        {slot(&B::getIndicationProvider), 7},
        {slot(&B::canUnload), 8},
        {slot(&I::getInstanceProviderInfo), 0},
        {slot(&I::enumInstanceNames), 1},
        {slot(&I::enumInstances), 2},
        {slot(&I::getInstance), 3},
        {slot(&I::createInstance), 4},
        {slot(&I::modifyInstance), 5},
        {slot(&I::deleteInstance), 6},
        {slot(&I::getInstanceProvider), 7},
        {slot(&M::getMethodProviderInfo), 0},
        {slot(&M::invokeMethod), 1},
        {slot(&M::getMethodProvider), 2},
        {slot(&A::getAssociatorProviderInfo), 8},
        {slot(&A::associators), 9},
        {slot(&A::associatorNames), 10},
        {slot(&A::references), 11},
        {slot(&A::referenceNames), 12},
        {slot(&A::getAssociatorProvider), 13},
    };
    for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i) {
        EXPECT_EQ(cases[i].found, cases[i].wanted + destructors) << i;
    }
}

} // namespace
