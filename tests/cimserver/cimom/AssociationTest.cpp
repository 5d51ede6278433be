// The association operations, and the way from a provider back into the server.
#include "tests/cimserver/cimom/Fixture.hpp"

using testing::ElementsAre;
using testing::HasSubstr;

namespace cimserver::cimom {
namespace {

class Associations : public CimomTest {
  protected:
    std::vector<std::string> asked(const AssociationFilter& filter, const CIMObjectPath& object) {
        record.calls.clear();
        names.clear();
        CIMObjectPathArrayBuilder builder(names);
        cimom.associatorNames(context, "root/test", object, filter, builder);
        return record.calls;
    }

    CIMObjectPathArray names;
};

TEST_F(Associations, AskEachAssociationClassConcerned) {
    const std::string object = "associatorNames /root/test:T_Special.Name=\"one\" ";
    EXPECT_THAT(asked({"", "R", "r", "rr"}, path("T_Special")),
                ElementsAre(object + "T_Link|R|r|rr", object + "T_SpecialLink|R|r|rr"))
        << "those that refer to the class or one above it";
    EXPECT_THAT(asked({"t_speciallink", "", "", ""}, path("T_Special")), ElementsAre(object + "T_SpecialLink|||"));
    EXPECT_THAT(asked({"T_Elsewhere", "", "", ""}, path("T_Special")), ElementsAre(object + "T_Elsewhere|||"));
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names[0].getNameSpace(), String("root/test"));
    EXPECT_NE(names[0].getHost(), String("127.0.0.1"));
    EXPECT_THAT(asked({}, CIMObjectPath(CIMName("T_Thing"))), ElementsAre()) << "the schema answers";
    EXPECT_EQ(names[0].getClassName(), String("T_Orphan"));
}

TEST_F(CimomTest, GivesProvidersAWayBackWithoutDeadlock) {
    context.user = "otto";
    context.mayWrite = false;
    CIMInstance inner(CIMNULL);
    std::pair<int, std::string> refused;
    record.beforeReply = [&] {
        record.beforeReply = nullptr;
        const ProviderEnvironmentIFCRef env = record.env;
        env->getOperationContext().setStringData("note", "shared");
        const CIMOMHandleIFCRef handle = env->getCIMOMHandle();
        inner = handle->getInstance("root/test", path("T_Special", "two")); // the same provider again
        EXPECT_EQ(record.env->getUserName(), String("otto"));
        EXPECT_EQ(record.env->getOperationContext().getStringData("note"), String("shared"));
        EXPECT_EQ(handle->enumInstancesA("root/interop", "CIM_Namespace").size(), 3u);
        EXPECT_EQ(handle->enumClassNamesA("root/test", "T_Thing").size(), 1u);
        EXPECT_EQ(handle->getClass("root/test", "T_Thing").getName(), String("T_Thing"));
        const CIMObjectPath ofClass(CIMName("T_Thing"));
        EXPECT_EQ(handle->associatorsClassesA("root/test", ofClass)[0].getName(), String("T_Orphan"));
        EXPECT_EQ(handle->referencesClassesA("root/test", ofClass, "t_speciallink").size(), 1u);
        EXPECT_EQ(handle->getQualifierType("root/test", "key").getName(), String("Key"));
        refused = thrownBy([&] { handle->deleteInstance("root/test", path()); });
        EXPECT_EQ(thrownBy([&] { handle->createClass("root/test", CIMClass(CIMName("X"))); }).first, 7);
        EXPECT_EQ(thrownBy([&] { handle->enumClassNamesA("root/nope", ""); }).first, 3);
        EXPECT_EQ(thrownBy([&] { handle->enumQualifierTypesA("root/nope"); }).first, 3);
    };
    cimom.getInstance(context, "root/test", path(), InstanceSelection());
    ASSERT_TRUE(inner);
    EXPECT_EQ(record.calls[1], "get root/test /:T_Special.Name=\"two\" all");
    EXPECT_EQ(refused.first, CIMException::ACCESS_DENIED) << "no more rights than the client has";
}

TEST_F(CimomTest, LeavesKeptHandlesHarmlessAfterItsEnd) {
    CIMOMHandleIFCRef kept;
    {
        Cimom passing(repository, host, {});
        passing.getInstance(context, "root/test", path(), InstanceSelection());
        kept = record.env->getCIMOMHandle();
        EXPECT_TRUE(kept->getInstance("root/test", path()));
    }
    EXPECT_THAT(thrownBy([&] { kept->getInstance("root/test", path()); }).second, HasSubstr("The server has ended"));
}

} // namespace
} // namespace cimserver::cimom
