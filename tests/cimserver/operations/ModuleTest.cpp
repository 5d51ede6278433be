// A provider of another author, loaded from its own file, through all operations.
#include "tests/cimserver/operations/Fixture.hpp"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace cimserver::operations {
namespace {

class Module : public testing::Test {
  protected:
    Module() : host(settings()), cimom(repository, host, {}) {
        repository.compileFile(TEST_PROVIDER_MOF, "root/acme");
        host.scan();
    }

    static provider::HostSettings settings() {
        provider::HostSettings settings;
        settings.folders = {TEST_PROVIDER_FOLDER};
        return settings;
    }

    static CIMObjectPath thing(const char* name) {
        CIMObjectPath path("ACME_Thing");
        return path.setKeyValue("Name", CIMValue(name));
    }

    CIMInstance get(const CIMObjectPath& path) {
        return cimom.getInstance(context, "root/acme", path, InstanceSelection());
    }

    CIMValue call(const char* method, const CIMParamValueArray& in) {
        out.clear();
        return cimom.invokeMethod(context, "root/acme", thing("full"), method, in, out);
    }

    schema::Repository repository;
    provider::ProviderHost host;
    Cimom cimom;
    RequestContext context;
    CIMParamValueArray out;
};

TEST_F(Module, DeliversEveryType) {
    const std::pair<const char*, const char*> values[] = {
        {"U8", "255"},
        {"S8", "-128"},
        {"U16", "65535"},
        {"S16", "-32768"},
        {"U32", "4294967295"},
        {"S32", "-2147483647"},
        {"U64", "18446744073709551615"},
        {"S64", "-5"},
        {"R32", "1.5"},
        {"R64", "-0.25"},
        {"Flag", "true"},
        {"Letter", "A"},
        {"Text", "<a> & \"b\""},
        {"When", "20240229235959.123456+060"},
        {"HowLong", "00000001020304.000000:000"},
        {"Numbers", "1,2"},
        {"Texts", ",x y"},
        {"Flags", "true,false"},
        {"Times", "20240101000000.000000+000,00000000000000.000000:000"},
    };
    const CIMInstance full = get(thing("full"));
    const CIMInstance empty = get(thing("empty"));
    const CIMClass& cimClass = cimom.classOf("root/acme", "ACME_Thing");
    for (const auto& [name, value] : values) {
        EXPECT_EQ(full.getPropertyValue(name).toString(), String(value)) << name;
        EXPECT_TRUE(full.getProperty(name).getDataType().equals(cimClass.getProperty(name).getDataType())) << name;
        const CIMProperty missing = empty.getProperty(name);
        EXPECT_FALSE(missing.getValue()) << name;
        EXPECT_TRUE(missing.getDataType().equals(cimClass.getProperty(name).getDataType())) << name;
    }
    EXPECT_TRUE(full.getProperty("Flag").getQualifier("Applicable"));
}

TEST_F(Module, EnumeratesByTheDefaultOfItsInterface) {
    CIMInstanceArray all;
    CIMInstanceArrayBuilder builder(all);
    cimom.enumInstances(context, "root/acme", "ACME_Thing", InstanceSelection(), builder);
    EXPECT_EQ(all.size(), 4u);
    cimom.enumInstances(context, "root/acme", "ACME_Slot", InstanceSelection(), builder);
    ASSERT_EQ(all.size(), 6u);
    EXPECT_EQ(CIMObjectPath("", all[5]).toString(), String("/:ACME_Slot.Number=\"2\""));
    EXPECT_EQ(all[5].getPropertyValue("Label").toString(), String("slot 2"));
}

TEST_F(Module, ChangesCreatesAndDeletes) {
    cimom.setProperty(context, "root/acme", thing("full"), "U8", CIMValue(UInt8(7)));
    cimom.setProperty(context, "root/acme", thing("full"), "Texts", CIMValue(CIMNULL));
    const CIMInstance changed = get(thing("full"));
    EXPECT_EQ(changed.getPropertyValue("U8").toUInt8(), 7);
    EXPECT_FALSE(changed.getPropertyValue("Texts"));
    EXPECT_EQ(changed.getPropertyValue("S8").toString(), String("-128")) << "the others stay";
    CIMInstance fresh("ACME_Thing");
    fresh.setProperty(CIMProperty("Name", CIMValue("fresh")));
    EXPECT_TRUE(get(cimom.createInstance(context, "root/acme", fresh)));
    EXPECT_THAT(thrownBy([&] { cimom.createInstance(context, "root/acme", fresh); }),
                Pair(11, "object already exists (fresh)"));
    cimom.deleteInstance(context, "root/acme", thing("fresh"));
    EXPECT_EQ(thrownBy([&] { get(thing("fresh")); }).first, 6);
}

TEST_F(Module, RunsMethodsAndReportsTheirFailures) {
    CIMParamValueArray in(1, CIMParamValue("A", CIMValue(UInt32(4000000000u))));
    in.push_back(CIMParamValue("B", CIMValue(UInt32(500000000))));
    EXPECT_EQ(call("Add", in).toUInt32(), 0u);
    EXPECT_EQ(out[0].getValue().toUInt64(), 4500000000u);
    EXPECT_EQ(call("Reverse", CIMParamValueArray(1, CIMParamValue("Text", CIMValue("abc")))).toString(), String("cba"));
    EXPECT_EQ(call("Count", {}).toUInt32(), 4u) << "through the server, into the same provider";
    const std::pair<const char*, std::pair<int, const char*>> failures[] = {
        {"cim", {2, "Access to CIM resource unavailable to client (keep <out>)"}},
        {"own code", {30, "unknown error (odd)"}},
        {"openwbem", {1, "Unable to convert \"abc\" into UInt32"}},
        {"null object", {1, "NULL COWReference dereferenced"}},
        {"std", {1, "out of paper"}},
        {"anything", {1, "Unknown Exception"}},
    };
    for (const auto& [how, expected] : failures) {
        const CIMParamValueArray which(1, CIMParamValue("How", CIMValue(how)));
        EXPECT_THAT(thrownBy([&] { call("Fail", which); }), Pair(expected.first, expected.second)) << how;
    }
}

TEST_F(Module, FollowsAssociationsBothWays) {
    CIMObjectPath slot("ACME_Slot");
    slot.setKeyValue("Number", CIMValue(UInt16(1)));
    CIMInstanceArray found;
    CIMInstanceArrayBuilder builder(found);
    cimom.associators(context, "root/acme", thing("full"), {}, InstanceSelection(), builder);
    cimom.associators(context, "root/acme", slot, {"ACME_ThingInSlot", "", "", ""}, InstanceSelection(), builder);
    cimom.references(context, "root/acme", slot, {}, InstanceSelection(), builder);
    cimom.associators(context, "root/acme", thing("empty"), {}, InstanceSelection(), builder);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].getClassName(), String("ACME_Slot"));
    EXPECT_EQ(found[1].getPropertyValue("Name").toString(), String("full"));
    EXPECT_EQ(found[2].getKeyValuePairs().size(), 2u);
}

} // namespace
} // namespace cimserver::operations
