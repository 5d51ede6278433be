// Every property, read and written through the umbrella provider, with its registry entry and its log entries.
#include "DiagnosticLog.hpp"
#include "ModuleTest.hpp"
#include "PropertyCases.hpp"
#include "QTX_CDRPullStatisticsProvider.hpp"
#include "QTX_CDRPushSettingProvider.hpp"
#include "QTX_CDRPushStatisticsProvider.hpp"
#include "QTX_CDRServiceAccessBinProvider.hpp"
#include "QTX_CDRServicePrefixBinProvider.hpp"
#include "QTX_CDRServiceProvider.hpp"

#include <algorithm>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::uint32_t kStatus = ZPO_REG_DEVICE_ERROR;
constexpr const char* kStatusText = "2097168";

class AccessorTest : public ModuleTest, public testing::WithParamInterface<PropertyCase> {
  protected:
    const PropertyCase& c = GetParam();
    // Every failure is logged at level 4, but this one.
    std::string failureEntry(const std::string& operation) const {
        const bool notice = operation == "set" && c.property == "TransferType";
        return std::string(notice ? "2 1 -1 " : "2 4 -1 ") + operation + c.property + " error = " + kStatusText;
    }
};

class SetterTest : public AccessorTest {};
class TextGetterTest : public AccessorTest {};

TEST_P(AccessorTest, ShowsWhatTheEntryHolds) {
    c.store(platform);
    const OpenWBEM::CIMInstance instance = get(c.path);
    EXPECT_EQ(shown(instance, c.property), c.shown);
    const OpenWBEM::CIMProperty property = instance.getProperty(c.property.c_str());
    EXPECT_EQ(property.getDataType().toString(), c.type.c_str());
    const bool hasApplicable =
        c.path != kService && c.className().find("Bin") == std::string::npos && c.property != "TransferType";
    EXPECT_EQ(qualifier(instance, c.property, "Applicable"), hasApplicable ? "true" : "-");
}

TEST_P(AccessorTest, StoresWhatIsSet) {
    c.makeApplicable(platform);
    const std::string before = platform.entry(c.entry());
    EXPECT_EQ(set(c.path, c.property, value(c.type, c.shown)).text(), "");
    EXPECT_EQ(platform.entry(c.entry()), c.writable ? c.stored : before);
}

TEST_P(AccessorTest, LogsAFailedRead) {
    c.store(platform);
    platform.forget();
    platform.fail("ZpoGetRegEntryBinary", kStatus, c.entry() + " ");
    platform.fail("ZpoGetRegEntryString", kStatus, c.entry() + " ");
    platform.fail("ZpoGetRegEntryInt", kStatus, c.entry());
    OpenWBEM::CIMInstance instance;
    const Failure ended = failure([&] { instance = get(c.path); });
    EXPECT_THAT(platform.log, Contains(failureEntry("get")));
    // Of the push settings a failed read fails the request; of the others the property is left out.
    EXPECT_EQ(ended.text(), c.isPushSetting() ? "1 342 CDRProvider " : "");
    if (!c.isPushSetting()) {
        EXPECT_EQ(shown(instance, c.property), "-");
    }
    EXPECT_EQ(platform.entry(c.entry()), c.stored);
}

TEST_P(SetterTest, LogsAFailedWrite) {
    c.makeApplicable(platform);
    platform.queues["CDRService"] = 7;
    platform.forget();
    platform.fail("ZpoSetRegEntryBinary", kStatus, c.entry() + " ");
    platform.fail("ZpoSetRegEntryString", kStatus, c.entry() + " ");
    platform.fail("ZpoSetRegEntryInt", kStatus, c.entry() + " ");
    EXPECT_EQ(set(c.path, c.property, value(c.type, c.shown)).text(),
              c.isPushSetting() ? "1 607 CDRProvider " : "1 304 " + c.className() + "Provider 101");
    EXPECT_THAT(platform.log, ElementsAre(failureEntry("set")));
    EXPECT_THAT(platform.calls("osQueueSend"), IsEmpty());
    EXPECT_THAT(platform.calls("ZpoSetScheduledTask"), IsEmpty());
}

TEST_P(AccessorTest, TreatsAnAbsentEntryAsItsClassDoes) {
    c.makeApplicable(platform);
    platform.put(c.entry(), "");
    platform.forget();
    EXPECT_EQ(shown(get(c.path), c.property), c.absent);
    const std::string kind = c.stored.substr(0, c.stored.find(' ') + 1);
    const bool flag = c.type == "boolean" || c.property == "NumRetry";
    const std::string content = flag ? "00" : c.property == "TransferType" ? "04" : c.absent;
    EXPECT_EQ(platform.entry(c.entry()), c.created ? kind + content : "");
    if (c.absent == "-") {
        EXPECT_THAT(platform.log, Contains("2 4 -1 get" + c.property + " error = 2097165"));
    }
}

// A text that may not be shown is shown as the default and stays as it is.
TEST_P(TextGetterTest, WarnsOfControlCharacters) {
    c.makeApplicable(platform);
    const std::string registryKey = c.key.substr(c.key.find('/') + 1);
    const std::string warning =
        "ControlCharacters Found in PDR:" + (c.isPullStatistic() ? "" : std::string("Push-")) + registryKey;
    for (const std::string stored : {"text a\tb", "text \x7f", "text "}) {
        platform.put(c.entry(), stored);
        platform.forget();
        EXPECT_EQ(shown(get(c.path), c.property), c.absent);
        EXPECT_THAT(platform.log, Contains("2 2 -1 " + warning));
        EXPECT_EQ(platform.entry(c.entry()), stored);
    }
}

std::vector<PropertyCase> casesThat(bool (*are)(const PropertyCase&)) {
    std::vector<PropertyCase> found;
    std::copy_if(propertyCases().begin(), propertyCases().end(), std::back_inserter(found), are);
    return found;
}

std::string caseName(const testing::TestParamInfo<PropertyCase>& tested) {
    return tested.param.className() + "_" + tested.param.property;
}

INSTANTIATE_TEST_SUITE_P(Properties, AccessorTest, testing::ValuesIn(propertyCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Properties, SetterTest,
                         testing::ValuesIn(casesThat([](const PropertyCase& c) { return c.writable; })), caseName);
INSTANTIATE_TEST_SUITE_P(Properties, TextGetterTest, testing::ValuesIn(casesThat([](const PropertyCase& c) {
                             return c.stored.substr(0, 5) == "text ";
                         })),
                         caseName);

// What an entry's value and a property's value are to each other where it is not one to one.
struct ConversionCase {
    const char* path;
    const char* property;
    const char* type;
    const char* set; ///< null: only read
    const char* stored;
    const char* shown;
};

TEST_F(ModuleTest, ConvertsBetweenEntriesAndValues) {
    const std::vector<ConversionCase> cases = {
        {kService, "ClipFileSize_100K", "uint32", "300", "bytes 2c", "44"},
        {kService, "ClipFileSize_100K", "uint32", "256", "bytes 00", "0"},
        {kService, "CallFilterDuration", "uint32", "4294967295", "bytes ff", "255"},
        {kService, "DNISInfo", "boolean", nullptr, "bytes 02", "true"},
        {kService, "DigitsLimit", "uint16", nullptr, "bytes 1234", "4660"},
        {kService, "DigitsLimit", "uint16", "3", "bytes 0003", "3"},
        {kService, "FeatureCode", "string", "9a", "bytes f990", "90"},
        {kService, "FeatureCode", "string", "123", "bytes f912", "12"},
        {kService, "FeatureCode", "string", "7", "bytes f970", "70"},
        {kService, "FeatureCode", "string", "", "bytes f900", "00"},
        {kService, "FeatureCode", "string", nullptr, "bytes 00af", ":?"},
        {kService, "FeatureCode", "uint16", "42", "bytes f942", "42"}, // a text takes any value's text form
        {kPushSetting, "NumRetry", "uint32", "300", "bytes 2c", "44"},
        {kPushSetting, "DeleteFlag", "boolean", nullptr, "bytes 80", "true"},
        {kPushSetting, "UserName", "string", "J\xc3\xb6rg", "text J\xc3\xb6rg", "J\xc3\x83\xc2\xb6rg"},
        {kPushSetting, "UserName", "string", nullptr, "text J\xf6rg", "J\xc3\xb6rg"},
    };
    for (const ConversionCase& c : cases) {
        const auto found = std::find_if(propertyCases().begin(), propertyCases().end(), [&](const PropertyCase& known) {
            return known.path == c.path && known.property == c.property;
        });
        found->makeApplicable(platform);
        platform.put(found->entry(), c.stored);
        if (c.set != nullptr) {
            platform.put(found->entry(), "");
            EXPECT_EQ(set(c.path, c.property, value(c.type, c.set)).text(), "");
        }
        EXPECT_EQ(platform.entry(found->entry()), c.stored) << *found;
        EXPECT_EQ(shown(get(c.path), c.property), c.shown) << *found;
    }
}

TEST_F(ModuleTest, RefusesValuesOutOfBounds) {
    struct {
        const char* path;
        const char* property;
        const char* type;
        const char* value;
        const char* ended;
    } const cases[] = {
        {kService, "DigitsLimit", "uint16", "25", "4 304 QTX_CDRServiceProvider DigitsLimit must be <= 24"},
        {kService, "DigitsLimit", "uint16", "2", "4 304 QTX_CDRServiceProvider DigitsLimit must be >= 3"},
        {kService, "FeatureCode", "string", "1234",
         "4 304 QTX_CDRServiceProvider FeatureCode length must be must be <= 3"},
        {"QTX_CDRServicePrefixBin.InstanceID=\"CDRServicePrefixBin_7\"", "PrefixBin", "string", "123456789",
         "4 304 QTX_CDRServicePrefixBinProvider PrefixBin length must be must be <= 8"},
        {"QTX_CDRServiceAccessBin.InstanceID=\"CDRServiceAccessBin_4\"", "AccessBin", "string", "123456",
         "4 304 QTX_CDRServiceAccessBinProvider AccessBin length must be must be <= 5"},
        {"QTX_CDRServiceAccessBin.InstanceID=\"CDRServiceAccessBin_4\"", "SuppressBin", "string", "100",
         "4 304 QTX_CDRServiceAccessBinProvider SuppressBin length must be must be <= 2"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(set(c.path, c.property, value(c.type, c.value)).text(), c.ended);
    }
    EXPECT_THAT(platform.entries, IsEmpty());
}

TEST_F(ModuleTest, CutsALongTextAtAWholeCharacter) {
    platform.put("CDR/CDRPush/TransferType", "bytes 00");
    platform.put("CDR/CDRPush/IpAddr", "text " + std::string(511, '\xe9'));
    std::string expected;
    for (int i = 0; i < 255; ++i) {
        expected += "\xc3\xa9";
    }
    EXPECT_EQ(shown(get(kPushSetting), "IPAddress"), expected);
}

TEST_F(ModuleTest, StoresATextOf511BytesAndFailsWithALongerOne) {
    const std::string longest(511, '1');
    EXPECT_EQ(set(kPushSetting, "TransferDayOfMonth", "1 " + longest.substr(2)).text(), "");
    EXPECT_EQ(set(kPushSetting, "IPAddress", longest).text(), "");
    platform.log.clear();
    EXPECT_EQ(set(kPushSetting, "IPAddress", longest + "2").text(), "1 607 CDRProvider ");
    EXPECT_EQ(set(kPushSetting, "TransferDayOfMonth", "1 " + longest).text(), "1 607 CDRProvider ");
    EXPECT_THAT(platform.log,
                ElementsAre("2 4 -1 setIPAddress error = 2097157", "2 4 -1 setTransferDayOfMonth error = 2097157"));
    EXPECT_EQ(platform.entry("CDR/CDRPush/IpAddr"), "text " + longest);
}

// The values that may be set depend on the format read just before.
TEST_F(ModuleTest, ListsTheValidReportTypes) {
    platform.put("CDR/CDRService/TYPE", "bytes 00");
    for (const auto& [format, valid] :
         {std::pair("bytes 00", "0,1"), {"bytes 01", "0,1,2,3"}, {"bytes 02", "0,1,2,3"}}) {
        platform.put("CDR/CDRService/FORMAT", format);
        const OpenWBEM::CIMInstance instance = get(kService);
        EXPECT_EQ(qualifier(instance, "ReportType", "ValidValueMap"), valid);
        const OpenWBEM::CIMQualifier map = instance.getProperty("ReportType").getQualifier("ValidValueMap");
        EXPECT_EQ(map.getValue().getType(), OpenWBEM::CIMDataType::UINT32);
        EXPECT_EQ(map.getDefaults().getDataType().getType(), OpenWBEM::CIMDataType::STRING);
        EXPECT_EQ(map.getDefaults().getName(), "string");
        EXPECT_EQ(qualifier(instance, "Format", "ValidValueMap"), "-");
    }
}

// In a transfer type in which a property has no meaning its entry is neither read nor created.
TEST_F(ModuleTest, LeavesInapplicablePropertiesUnread) {
    struct {
        const char* type;
        const char* path;
        std::vector<std::string> applicable;
    } const cases[] = {
        {"bytes 00", kPullStatistics, {}},
        {"bytes 03", kPushStatistics, {}},
        {"bytes 04", kPushStatistics, {}},
        {"bytes 03", kPushSetting, {}},
        {"bytes 04", kPushSetting, {}},
        {"bytes 00", kPushSetting, {"TransferTime"}},
        {"bytes 01", kPushSetting, {"TransferDayOfWeek", "TransferTime"}},
        {"bytes 02", kPushSetting, {"TransferDayOfMonth", "TransferTime"}},
        {"bytes 09", kPushSetting, {"TransferTime"}},
    };
    for (const auto& c : cases) {
        platform.reset();
        platform.put("CDR/CDRPush/TransferType", c.type);
        const OpenWBEM::CIMInstance instance = get(c.path);
        for (const PropertyCase& known : propertyCases()) {
            const std::string name = known.property;
            if (known.path != c.path || name == "TransferType") {
                continue;
            }
            const bool day = name.find("TransferDay") == 0 || name == "TransferTime" || c.applicable.empty();
            const bool applies = !day || testing::Value(c.applicable, Contains(name));
            EXPECT_EQ(qualifier(instance, name, "Applicable"), applies ? "true" : "false") << c.type << known;
            EXPECT_EQ(platform.entry(known.entry()) != "", applies) << c.type << known;
        }
        EXPECT_THAT(platform.log, IsEmpty());
    }
}

template <class Provider>
void expectCasesFor(const std::string& className) {
    for (const auto& row : Provider::properties()) {
        const bool covered = std::any_of(propertyCases().begin(), propertyCases().end(), [&](const PropertyCase& c) {
            return c.className() == className && c.property == row.name && c.type == row.type &&
                   c.writable == (row.write != nullptr);
        });
        EXPECT_EQ(covered, !row.key) << className << "." << row.name;
    }
}

TEST(PropertyCases, CoverEveryProperty) {
    expectCasesFor<QTX_CDRServiceProvider>("QTX_CDRService");
    expectCasesFor<QTX_CDRServicePrefixBinProvider>("QTX_CDRServicePrefixBin");
    expectCasesFor<QTX_CDRServiceAccessBinProvider>("QTX_CDRServiceAccessBin");
    expectCasesFor<QTX_CDRPushSettingProvider>("QTX_CDRPushSetting");
    expectCasesFor<QTX_CDRPushStatisticsProvider>("QTX_CDRPushStatistics");
    expectCasesFor<QTX_CDRPullStatisticsProvider>("QTX_CDRPullStatistics");
}

} // namespace
