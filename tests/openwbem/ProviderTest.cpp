// The provider interfaces' default behaviour.

#include "../Slot.hpp"
#include "LibraryTest.hpp"
#include "OW_ResultHandlers.hpp"

using namespace OpenWBEM;
using namespace OpenWBEM::WBEMFlags;

namespace {

class NamingProvider : public CppReadOnlyInstanceProviderIFC, public CppMethodProviderIFC {
  public:
    void enumInstanceNames(const ProviderEnvironmentIFCRef&, const String& ns, const String& className,
                           CIMObjectPathResultHandlerIFC& result, const CIMClass&) override {
        for (UInt32 i = 1; i <= 3; ++i) {
            result.handle(CIMObjectPath(className, ns).setKeyValue("ID", CIMValue(i)));
        }
    }
    CIMInstance getInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath& name, ELocalOnlyFlag,
                            EIncludeQualifiersFlag, EIncludeClassOriginFlag, const StringArray*,
                            const CIMClass&) override {
        if (name.getKeyValue("ID").toUInt32() == 3) {
            OW_THROWCIMMSG(CIMException::NOT_FOUND, "3");
        }
        return CIMInstance(name.getClassName()).setProperty("ID", name.getKeyValue("ID"));
    }
    CIMValue invokeMethod(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath&, const String&,
                          const CIMParamValueArray&, CIMParamValueArray&) override {
        return CIMValue(CIMNULL);
    }
};

TEST(ProviderInterfaces, offerTheirOwnAndEnumerateByName) {
    const IntrusiveReference<CppProviderBaseIFC> provider(new NamingProvider);
    CppInstanceProviderIFC* const instanceProvider = provider->getInstanceProvider();
    EXPECT_TRUE(instanceProvider && provider->getMethodProvider() && provider->canUnload());
    EXPECT_FALSE(provider->getAssociatorProvider() || provider->getPolledProvider() || provider->getPersist());
    EXPECT_FALSE(provider->getIndicationProvider() || provider->getSecondaryInstanceProvider());
    EXPECT_EQ(provider->getLastAccessTime(), DateTime());
    provider->updateAccessTime();
    EXPECT_GT(provider->getLastAccessTime(), DateTime());
    CIMInstanceArray instances;
    CIMInstanceArrayBuilder result(instances);
    EXPECT_EQ(thrownBy([&] {
                  instanceProvider->enumInstances(ProviderEnvironmentIFCRef(), "root/cimv2", "ACME_Thing", result,
                                                  E_NOT_LOCAL_ONLY, E_DEEP, E_INCLUDE_QUALIFIERS,
                                                  E_EXCLUDE_CLASS_ORIGIN, nullptr, CIMClass(), CIMClass());
              }),
              "CIMException: requested object could not be found (3)");
    ASSERT_EQ(instances.size(), 2U) << "one fails and ends the enumeration";
    EXPECT_EQ(instances[1].getPropertyValue("id"), CIMValue(UInt32(2)));
}

class SimpleProvider : public CppReadOnlyInstanceProviderIFC, public CppSimpleInstanceProviderIFC {
  public:
    void doSimpleEnumInstances(const ProviderEnvironmentIFCRef&, const String&, const CIMClass& cimClass,
                               CIMInstanceResultHandlerIFC& result, EPropertiesFlag properties) override {
        for (const char* name : {"a", "b"}) {
            CIMInstance instance(cimClass.getName());
            instance.setProperty(keyProperty("Name", CIMValue(name)));
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

// The order of the virtual functions is what modules and object managers are compiled against. A table begins with the
// two forms of the destructor; an associator provider's functions follow those of the instance provider.
TEST(ProviderInterfaces, keepTheOrderOfTheirVirtualFunctions) {
    typedef CppProviderBaseIFC B;
    typedef CppInstanceProviderIFC I;
    typedef CppMethodProviderIFC M;
    typedef CppAssociatorProviderIFC A;
    expectSlotsFrom(2, &B::initialize, &B::getInstanceProvider, &B::getSecondaryInstanceProvider, &B::getMethodProvider,
                    &B::getAssociatorProvider, &B::getIndicationExportProvider, &B::getPolledProvider,
                    &B::getIndicationProvider, &B::canUnload);
    expectSlotsFrom(2, &I::getInstanceProviderInfo, &I::enumInstanceNames, &I::enumInstances, &I::getInstance,
                    &I::createInstance, &I::modifyInstance, &I::deleteInstance, &I::getInstanceProvider,
                    &A::getAssociatorProviderInfo, &A::associators, &A::associatorNames, &A::references,
                    &A::referenceNames, &A::getAssociatorProvider);
    expectSlotsFrom(2, &M::getMethodProviderInfo, &M::invokeMethod, &M::getMethodProvider);
}

} // namespace
