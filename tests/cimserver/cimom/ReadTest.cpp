// Reads: what the provider is asked, and the shape in which its answers go out.
#include "tests/cimserver/cimom/Fixture.hpp"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

namespace cimserver::cimom {
namespace {

TEST_F(CimomTest, AsksForAnInstanceWithKeysOfTheClassAndNoNamespace) {
    CIMObjectPath asked = path("t_thing", "one");
    asked.setNameSpace("root/other").setKeyValue(CIMName("Nonsense"), CIMValue("x"));
    cimom.getInstance(context, "/ROOT/Test", asked, InstanceSelection());
    EXPECT_THAT(record.calls, ElementsAre("get root/test /:t_thing.Name=\"one\" all"));
}

TEST_F(CimomTest, CompletesInstances) {
    CIMProperty qualified = record.present.getProperty(CIMName("A"));
    CIMQualifier applicable("Applicable");
    record.present.setProperty(qualified.addQualifier(applicable.setValue(CIMValue(false))));
    record.present.setProperty(CIMName("Foreign"), CIMValue("kept"));
    const CIMInstance whole = cimom.getInstance(context, "root/test", path(), InstanceSelection());
    EXPECT_EQ(shown(whole.getProperties()), "Name=one A=5 B=old Foreign=kept C=(null)");
    EXPECT_EQ(whole.getProperty(CIMName("C")).getDataType().toString(), String("uint16"));
    EXPECT_TRUE(whole.getProperty(CIMName("C")).getDataType().isArrayType());
    EXPECT_TRUE(whole.getProperty(CIMName("A")).getQualifier(CIMName("Applicable"))) << "a provider's own goes out";

    const StringArray list = listOf<String>({"c", "a", "Unknown"});
    InstanceSelection some;
    some.propertyList = &list;
    const CIMInstance part = cimom.getInstance(context, "root/test", path(), some);
    EXPECT_EQ(shown(part.getProperties()), "A=5 C=(null)");
    EXPECT_EQ(shown(part.getKeyValuePairs()), "Name=one") << "an instance keeps its name";
    const StringArray none;
    some.propertyList = &none;
    EXPECT_EQ(shown(cimom.getInstance(context, "root/test", path(), some).getProperties()), "");
    EXPECT_EQ(record.calls.back(), "get root/test /:T_Thing.Name=\"one\" ");
}

TEST_F(CimomTest, WarnsOnceOfWhatTheClassDoesNotDeclareSo) {
    record.present.setProperty(CIMName("Foreign"), CIMValue("x"));
    record.present.setProperty(CIMProperty(CIMName("B"), CIMValue(UInt8(5))));
    record.present.setProperty(CIMProperty(CIMName("A"), CIMValue(CIMInstance("T_Part"))));
    const StringArray some = listOf<String>({"Name"});
    InstanceSelection part;
    part.propertyList = &some;
    testing::internal::CaptureStderr();
    instances("T_Thing", part);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), Not(HasSubstr("schema: ")))
        << "it may be a part of the instance only";
    testing::internal::CaptureStderr();
    instances("T_Thing");
    instances("T_Thing");
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_THAT(
        log, HasSubstr("schema: T_Thing does not fit what its provider delivers: A is declared as uint8 and delivered "
                       "as string; B is declared as string and delivered as uint8; Foreign is not declared\n"));
    EXPECT_EQ(support::countOf("schema: ", log), 1U) << log;
}

TEST_F(CimomTest, GivesUntypedPropertiesTheTypeOfTheClassOrRefusesThem) {
    record.present.setProperty(CIMName("C"), CIMValue(CIMNULL));
    EXPECT_TRUE(instances("T_Thing")[0].getProperty(CIMName("C")).getDataType());
    record.present.setProperty(CIMName("Foreign"), CIMValue(CIMNULL));
    EXPECT_THAT(thrownBy([&] { instances("T_Thing"); }),
                Pair(CIMException::FAILED, "general error (Property Foreign has no type defined)"));
}

TEST_F(CimomTest, FindsKeysWhereverTheProviderLeftThem) {
    CIMInstance plain("T_Thing"); // without Key qualifiers the instance knows no keys of its own
    record.present = plain.setProperty(CIMName("Name"), CIMValue("two"));
    EXPECT_EQ(shown(instances("T_Thing")[0].getKeyValuePairs()), "Name=two");
    record.present.removeProperty(CIMName("Name"));
    EXPECT_THAT(thrownBy([&] { instances("T_Thing"); }),
                Pair(CIMException::FAILED, "general error (No key value for Name)"));
    EXPECT_THAT(thrownBy([&] { names("T_Thing"); }),
                Pair(CIMException::FAILED, "general error (No key value for Name)"));
    EXPECT_EQ(shown(cimom.getInstance(context, "root/test", path(), InstanceSelection()).getKeyValuePairs()),
              "Name=one");
}

TEST_F(CimomTest, EnumeratesEachSubclassByItsProvider) {
    const StringArray list(1, String("B"));
    InstanceSelection some;
    some.propertyList = &list;
    EXPECT_EQ(instances("t_thing", some).size(), 1u);
    EXPECT_THAT(record.calls,
                ElementsAre("enum root/test T_Thing for T_Thing B", "enum root/test T_Special for T_Thing B"));
    EXPECT_EQ(names("T_Special"), "");
    EXPECT_EQ(names("T_Thing"), "/root/test:T_Thing.Name=\"one\"");
    EXPECT_EQ(instances("T_Orphan").size(), 0u) << "a class without provider is empty";
}

TEST_F(CimomTest, NamesWhatIsWrongWithARead) {
    const auto get = [&](const char* className) {
        return thrownBy([&] { cimom.getInstance(context, "root/test", path(className), InstanceSelection()); });
    };
    EXPECT_THAT(get("T_Broken"), Pair(1, "general error (Invalid provider: NoSuchProvider (its file was not found))"));
    EXPECT_THAT(thrownBy([&] { instances("T_Broken"); }).second, HasSubstr("Invalid provider: NoSuchProvider"));
    record.present = CIMInstance(CIMNULL);
    EXPECT_THAT(get("T_Thing"), Pair(1, "general error (Provider erroneously returned a NULL CIMInstance)"));
    EXPECT_EQ(thrownBy([&] { instances("T_Thing"); }).first, 1);
}

} // namespace
} // namespace cimserver::cimom
