// What each of the six classes does alike.
#include "ModuleTest.hpp"
#include "QTX_CDRServiceImpl.hpp"
#include "QTX_CDRServicePrefixBinProvider.hpp"

#include <algorithm>

using namespace OpenWBEM;
using testing::IsEmpty;
using testing::MatchesRegex;

namespace {

struct ClassCase {
    std::string name;
    std::vector<std::string> paths;
    std::vector<std::string> methods;
};

std::ostream& operator<<(std::ostream& out, const ClassCase& c) {
    return out << c.name;
}

std::vector<std::string> binPaths(const std::string& name, int count) {
    std::vector<std::string> paths;
    for (int row = 0; row < count; ++row) {
        paths.push_back(binPath(name, row));
    }
    return paths;
}

const ClassCase kClasses[] = {
    {"QTX_CDRPushSetting", {kPushSetting}, {"PushFileNow"}},
    {"QTX_CDRPushStatistics", {kPushStatistics}, {"Refresh"}},
    {"QTX_CDRPullStatistics", {kPullStatistics}, {"Refresh"}},
    {"QTX_CDRService", {kService}, {"Refresh", "ClipFile"}},
    {"QTX_CDRServicePrefixBin", binPaths("CDRServicePrefixBin", 8), {}},
    {"QTX_CDRServiceAccessBin", binPaths("CDRServiceAccessBin", 5), {}},
};

class ContractTest : public ModuleTest, public testing::WithParamInterface<ClassCase> {
  protected:
    // The request fails in the class's provider with the code and no message.
    void expectFailure(int code, const std::function<void()>& request) const {
        EXPECT_THAT(failure(request), MatchesRegex(std::to_string(code) + " [0-9]+ " + c.name + "Provider "));
    }

    // The first path with one of its keys changed, without a value, or left out.
    std::vector<CIMObjectPath> strangers() const {
        std::vector<CIMObjectPath> paths;
        for (std::size_t i = 0; i < first.getKeys().size(); ++i) {
            const CIMName key = first.getKeys()[i].getName();
            for (const CIMProperty& other : {CIMProperty(key, CIMValue("x")), CIMProperty(key), CIMProperty("NoKey")}) {
                CIMPropertyArray keys = first.getKeys();
                keys[i] = other;
                paths.push_back(CIMObjectPath(first).setKeys(keys));
            }
        }
        return paths;
    }

    // An instance with the properties that the path has as keys.
    static CIMInstance named(const CIMObjectPath& path) {
        return CIMInstance(CIMName(path.getClassName())).setProperties(path.getKeys());
    }

    const ClassCase& c = GetParam();
    const CIMObjectPath first = path(c.paths.front());
};

TEST_P(ContractTest, NamesItsInstancesInOrder) {
    EXPECT_EQ(names(c.name), c.paths);
    std::vector<std::string> found;
    for (const CIMInstance& instance : instances(c.name)) {
        found.emplace_back(CIMObjectPath("", instance).modelPath().c_str());
        EXPECT_EQ(CIMObjectPath("", get(found.back())).modelPath(), found.back().c_str());
    }
    EXPECT_EQ(found, c.paths);
}

TEST_P(ContractTest, DoesNotFindStrangers) {
    for (const CIMObjectPath& stranger : strangers()) {
        SCOPED_TRACE(stranger.toString());
        expectFailure(6, [&] { (void)get(stranger); });
        expectFailure(6, [&] { remove(stranger); });
        expectFailure(6, [&] { modify(named(stranger)); });
        for (const std::string& method : c.methods) {
            expectFailure(6, [&] { invoke(stranger, method); });
        }
    }
}

TEST_P(ContractTest, CreatesAndDeletesNothing) {
    expectFailure(7, [&] { create(named(first)); });
    expectFailure(7, [&] { remove(first); });
    EXPECT_EQ(names(c.name), c.paths);
}

// Names are compared letter by letter.
TEST_P(ContractTest, PassesOverUnknownNamesKeysAndNullValues) {
    CIMPropertyArray sent = first.getKeys();
    for (const PropertyCase& each : propertyCases()) {
        sent.push_back(CIMProperty(each.property.c_str()));
        sent.push_back(CIMProperty(CIMName(String(each.property.c_str()).toLowerCase()), CIMValue("1")));
    }
    EXPECT_EQ(failure([&] { modify(named(first).setProperties(sent)); }), "");
    EXPECT_THAT(platform.calls("ZpoSet"), IsEmpty());
}

TEST_P(ContractTest, KnowsMethodsByTheirExactNames) {
    for (const char* method : {"", "refresh", "clipfile", "pushfilenow"}) {
        EXPECT_EQ(failure([&] { invoke(strangers().front(), method); }), "17 352 " + c.name + "Provider ") << method;
    }
}

INSTANTIATE_TEST_SUITE_P(All, ContractTest, testing::ValuesIn(kClasses),
                         [](const auto& tested) { return tested.param.name; });

TEST(Contract, HoldsEveryClass) {
    for (const PropertyCase& each : propertyCases()) {
        const auto isIts = [&](const ClassCase& c) { return c.name == each.className(); };
        EXPECT_TRUE(std::any_of(std::begin(kClasses), std::end(kClasses), isIts))
            << each << ": its class is not in kClasses";
    }
}

// The one instance that is filled for all keeps what could not be read anew.
TEST_F(ModuleTest, EnumeratingCarriesAnUnreadablePropertyOver) {
    platform.put("CDR/CDRService/PREFIX BIN", binEntry(8, "010c0c0c0c0c0c0c", 1, "020c0c0c0c0c0c0c"));
    platform.fail("ZpoGetRegEntryBinary", ZPO_REG_DEVICE_ERROR, "PREFIX BIN", 3);
    std::string found;
    for (const CIMInstance& instance : instances("QTX_CDRServicePrefixBin")) {
        found += shown(instance, "PrefixBin");
    }
    EXPECT_EQ(found, "12211111");
}

const NewValues kRefusedInTheMiddle = {
    {"Format", value("uint8", "2")}, {"DigitsLimit", value("uint16", "30")}, {"Language", value("uint8", "1")}};

// What comes before a refused value stays, what comes after is not reached.
TEST_F(ModuleTest, ModifyingStopsAtTheFirstFailure) {
    EXPECT_NE(failure([&] { modify(changed(kService, kRefusedInTheMiddle)); }), "");
    EXPECT_EQ(platform.entries, (std::map<std::string, std::string>{{"CDR/CDRService/FORMAT", "bytes 02"}}));
}

struct StubbornBin : QTX_CDRServicePrefixBin {
    explicit StubbornBin(std::vector<int> results) : QTX_CDRServicePrefixBin("x"), statuses(std::move(results)) {}
    int startChange() override { return statuses.at(steps++); }
    int setPrefixBin(std::string /*value*/) override { return statuses.at(steps++); }
    int endChange() override { return statuses.at(steps++); }
    const std::vector<int> statuses;
    std::size_t steps = 0; ///< so many were taken
};

TEST(Modifying, BracketsTheChangesAndStopsAtABadStatus) {
    const CIMInstance wanted = changed("QTX_CDRServicePrefixBin.InstanceID=\"x\"", {{"PrefixBin", CIMValue("1")}});
    const auto expect = [&](const std::vector<int>& results, const std::string& ended) {
        StubbornBin bin(results);
        EXPECT_EQ(failure([&] { QTX_CDRServicePrefixBinProvider().modifyInstance(bin, wanted); }), ended);
        EXPECT_EQ(bin.steps, results.size());
    };
    expect({0, 0, 0}, "");
    expect({-5}, "1 271 QTX_CDRServicePrefixBinProvider -5");
    expect({0, 6}, "1 304 QTX_CDRServicePrefixBinProvider 6");
    expect({0, 0, 7}, "1 311 QTX_CDRServicePrefixBinProvider 7");
}

// What the module's own managers never do.
struct CreatingServices : QTX_CDRServiceInstanceManager {
    using Text = const std::string&;
    QTX_CDRService* createQTX_CDRService(Text a, Text b, Text c, Text d) override {
        return new QTX_CDRServiceImpl(a, b, c, d);
    }
    void destroyQTX_CDRService(QTX_CDRService* object) override { delete object; }
};

TEST_F(ModuleTest, CreatesWithAManagerThatCan) {
    CreatingServices services;
    QTX_CDRService::SetInstanceManager(&services);
    const char* const given = "QTX_CDRService.SystemCreationClassName=\"a\",Name=\"d\"";
    const std::string made =
        create(changed(given, {{"CreationClassName", CIMValue(CIMNULL)}, {"Format", value("uint8", "3")}}));
    EXPECT_EQ(made, "QTX_CDRService.SystemCreationClassName=\"a\",SystemName=\"\",CreationClassName=\"\",Name=\"d\"");
    EXPECT_EQ(platform.entry("CDR/CDRService/FORMAT"), "bytes 03");
    EXPECT_EQ(names("QTX_CDRService"), std::vector<std::string>{made});
    remove(path(made));
    EXPECT_NE(failure([&] { create(changed(given, kRefusedInTheMiddle)); }), "");
    EXPECT_THAT(names("QTX_CDRService"), IsEmpty()) << "what could not be modified is taken back";
    QTX_CDRService::ClearInstanceManager();
}

} // namespace
