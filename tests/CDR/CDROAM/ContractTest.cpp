// What each of the six classes does alike.
#include "ModuleTest.hpp"
#include "PropertyCases.hpp"

#include <algorithm>
#include <sstream>

using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

struct ClassCase {
    std::string name;
    std::vector<std::string> paths;
    std::string properties; ///< in order, between blanks
    std::vector<std::string> methods;
};

std::ostream& operator<<(std::ostream& out, const ClassCase& c) {
    return out << c.name;
}

std::vector<std::string> bins(const std::string& name, int count) {
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
        paths.push_back("QTX_" + name + ".InstanceID=\"" + name + "_" + std::to_string(i) + "\"");
    }
    return paths;
}

const std::vector<ClassCase>& classCases() {
    static const std::vector<ClassCase> cases = {
        {"QTX_CDRPushSetting",
         {kPushSetting},
         "TransferType IPAddress UserName Password DestFolder NumRetry DeleteFlag CompressFlag IncludeMetricsFlag "
         "TransferTime TransferDayOfMonth TransferDayOfWeek InstanceID",
         {"PushFileNow"}},
        {"QTX_CDRPushStatistics", {kPushStatistics}, "Name LastTransferTime", {"Refresh"}},
        {"QTX_CDRPullStatistics",
         {kPullStatistics},
         "Name MostRecentSuccessfulTransfer IncludeMetricsFlag NumberOfSuccessfulTransfers MostRecentFailedTransfer "
         "ReasonForFailure NumberOfFailedTransfers LargestFileTransferred SmallestFileTransferred "
         "TotalNumberOfBytesTransferred TotalNumberOfFileTransferred",
         {"Refresh"}},
        {"QTX_CDRService",
         {kService},
         "Format ReportType Language ReportFilter FeatureCode DateFormat HeaderFormat DNISInfo ConnectChar "
         "DigitsSuppress DigitsLimit ClipFileSchedule ClipFileSize_100K CDRDiskSpaceLimit_MB CLIDWithName "
         "LongCLIDSupport CLIDWithCallType SupportCallCharge AnswerSupervision CallFilterDuration HospitalityRecords "
         "SystemCreationClassName SystemName CreationClassName Name",
         {"Refresh", "ClipFile"}},
        {"QTX_CDRServicePrefixBin", bins("CDRServicePrefixBin", 8), "PrefixBin InstanceID", {}},
        {"QTX_CDRServiceAccessBin", bins("CDRServiceAccessBin", 5), "AccessBin SuppressBin InstanceID", {}},
    };
    return cases;
}

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

class ContractTest : public ModuleTest, public testing::WithParamInterface<ClassCase> {
  protected:
    // Makes every property readable.
    ContractTest() {
        for (const PropertyCase& each : propertyCases()) {
            platform.put(each.entry(), each.stored);
        }
        platform.forget();
    }

    // The request's failure, without the line and the message that are not fixed.
    static int code(const std::function<void()>& request, const std::string& file) {
        const Failure ended = failure(request);
        EXPECT_EQ(ended.file, "CDR/CDROAM/src/" + file);
        EXPECT_EQ(ended.message, "");
        return ended.code;
    }

    const ClassCase& c = GetParam();
    const std::string source = c.name + "Provider";
    const OpenWBEM::CIMObjectPath first = path(c.paths.front());
    // Paths that name no object: a key with another value, without one, and left out.
    std::vector<OpenWBEM::CIMObjectPath> strangers() const {
        std::vector<OpenWBEM::CIMObjectPath> paths;
        for (const OpenWBEM::CIMProperty& key : first.getKeys()) {
            OpenWBEM::CIMObjectPath other = first;
            other.setKeyValue(key.getName(), OpenWBEM::CIMValue("other"));
            paths.push_back(other);
            OpenWBEM::CIMPropertyArray nulled;
            OpenWBEM::CIMPropertyArray without;
            for (const OpenWBEM::CIMProperty& each : first.getKeys()) {
                const bool same = each.getName() == key.getName();
                nulled.push_back(same ? OpenWBEM::CIMProperty(key.getName()) : each);
                if (!same) {
                    without.push_back(each);
                }
            }
            paths.push_back(first);
            paths.back().setKeys(nulled);
            paths.push_back(first);
            paths.back().setKeys(without);
        }
        return paths;
    }
    // An instance with the properties that the path has as keys.
    static OpenWBEM::CIMInstance named(const OpenWBEM::CIMObjectPath& path) {
        OpenWBEM::CIMInstance instance{OpenWBEM::CIMName(path.getClassName())};
        instance.setProperties(path.getKeys());
        return instance;
    }
};

TEST_P(ContractTest, EnumeratesInstancesWithTheirKeysAndPropertiesInOrder) {
    EXPECT_THAT(names(c.name), ElementsAreArray(c.paths));
    EXPECT_THAT(names(c.name), ElementsAreArray(c.paths)) << "a second time";
    std::vector<std::string> found;
    for (const OpenWBEM::CIMInstance& instance : instances(c.name)) {
        EXPECT_EQ(instance.getClassName(), c.name.c_str());
        EXPECT_THAT(propertyNames(instance), ElementsAreArray(words(c.properties)));
        found.push_back(OpenWBEM::CIMObjectPath("root/cimv2", instance).modelPath().c_str());
    }
    EXPECT_THAT(found, ElementsAreArray(c.paths));
}

TEST_P(ContractTest, GetsEachInstance) {
    for (const std::string& name : c.paths) {
        const OpenWBEM::CIMInstance instance = get(name);
        EXPECT_EQ(OpenWBEM::CIMObjectPath("root/cimv2", instance).modelPath(), name.c_str());
        EXPECT_THAT(propertyNames(instance), ElementsAreArray(words(c.properties)));
        for (const OpenWBEM::CIMProperty& key : path(name).getKeys()) {
            EXPECT_EQ(instance.getPropertyValue(key.getName()), key.getValue());
        }
    }
}

TEST_P(ContractTest, DoesNotFindStrangers) {
    const std::string method = c.methods.empty() ? "" : c.methods.front();
    for (const OpenWBEM::CIMObjectPath& stranger : strangers()) {
        EXPECT_EQ(code([&] { (void)get(stranger); }, source), 6) << stranger.toString();
        EXPECT_EQ(code([&] { remove(stranger); }, source), 6) << stranger.toString();
        EXPECT_EQ(code([&] { modify(named(stranger)); }, source), 6) << stranger.toString();
        if (!method.empty()) {
            EXPECT_EQ(code([&] { invoke(stranger, method); }, source), 6) << stranger.toString();
        }
    }
}

TEST_P(ContractTest, CreatesAndDeletesNothing) {
    EXPECT_EQ(code([&] { create(named(first)); }, source), 7);
    EXPECT_EQ(code([&] { create(OpenWBEM::CIMInstance(c.name.c_str())); }, source), 7);
    EXPECT_EQ(code([&] { remove(first); }, source), 7);
    EXPECT_THAT(names(c.name), ElementsAreArray(c.paths));
}

TEST_P(ContractTest, PassesOverUnknownNamesKeysAndNullValues) {
    const auto before = platform.entries;
    OpenWBEM::CIMInstance instance = changed(c.paths.front(), {{"NoSuchProperty", OpenWBEM::CIMValue("x")}});
    for (const std::string& name : words(c.properties)) {
        const bool key = !!first.getKey(name.c_str());
        instance.setProperty(key ? first.getKey(name.c_str()) : OpenWBEM::CIMProperty(name.c_str()));
    }
    // Names are compared letter by letter. Appended outright: setProperty would take them for the same.
    OpenWBEM::CIMPropertyArray properties = instance.getProperties();
    for (const std::string& name : words(c.properties)) {
        std::string folded = name;
        std::transform(folded.begin(), folded.end(), folded.begin(), [](unsigned char x) { return std::tolower(x); });
        properties.push_back(OpenWBEM::CIMProperty(folded.c_str(), OpenWBEM::CIMValue("1")));
    }
    instance.setProperties(properties);
    EXPECT_EQ(failure([&] { modify(instance); }).text(), "");
    EXPECT_EQ(platform.entries, before);
    EXPECT_THAT(platform.calls("ZpoSet"), IsEmpty());
}

TEST_P(ContractTest, CountsTheCallsOfEachMethod) {
    for (const std::string& method : c.methods) {
        const unsigned int count = invoke(first, method);
        EXPECT_EQ(invoke(first, method), count + 1);
    }
}

TEST_P(ContractTest, KnowsNoOtherMethods) {
    for (const char* name : {"", "refresh", "clipfile", "pushfilenow", "NoSuchMethod", "REFRESH"}) {
        // Also when there is no such object.
        for (const OpenWBEM::CIMObjectPath& object : {first, strangers().front()}) {
            EXPECT_EQ(failure([&] { invoke(object, name); }).text(), "17 352 " + source + " ") << name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, ContractTest, testing::ValuesIn(classCases()),
                         [](const auto& tested) { return tested.param.name; });

// The one instance that is filled for all keeps what could not be read anew.
TEST_F(ModuleTest, EnumeratingCarriesAnUnreadablePropertyOver) {
    platform.put("CDR/CDRService/PREFIX BIN", binEntry(8, "010c0c0c0c0c0c0c", 1, "020c0c0c0c0c0c0c"));
    platform.fail("ZpoGetRegEntryBinary", ZPO_REG_DEVICE_ERROR, "PREFIX BIN", 3);
    std::vector<std::string> found;
    for (const OpenWBEM::CIMInstance& instance : instances("QTX_CDRServicePrefixBin")) {
        found.push_back(shown(instance, "PrefixBin"));
    }
    EXPECT_THAT(found, testing::ElementsAre("1", "2", "2", "1", "1", "1", "1", "1"));
}

// What comes before a refused value stays, what comes after is not reached.
TEST_F(ModuleTest, ModifyingStopsAtTheFirstFailure) {
    const OpenWBEM::CIMInstance instance = changed(
        kService,
        {{"Format", value("uint8", "2")}, {"DigitsLimit", value("uint16", "30")}, {"Language", value("uint8", "1")}});
    platform.queues["CDRService"] = 7;
    EXPECT_EQ(failure([&] { modify(instance); }).code, 4);
    EXPECT_EQ(platform.entry("CDR/CDRService/FORMAT"), "bytes 02");
    EXPECT_EQ(platform.entry("CDR/CDRService/LANG"), "");
    EXPECT_THAT(platform.calls("osQueueSend"), testing::ElementsAre("osQueueSend 7 0"));
}

} // namespace
