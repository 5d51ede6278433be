// Every property, read and written through the umbrella provider, with its registry entry and its log entries.
#include "DiagnosticLog.hpp"
#include "ModuleTest.hpp"
#include "PropertyCases.hpp"

#include <algorithm>
#include <iterator>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class AccessorTest : public ModuleTest, public testing::WithParamInterface<PropertyCase> {
  protected:
    AccessorTest() { c.makeApplicable(platform); }

    void failAccess(const std::string& get_or_set) {
        for (const char* kind : {"Binary", "String", "Int"}) {
            platform.fail("Zpo" + get_or_set + "RegEntry" + kind, ZPO_REG_DEVICE_ERROR, c.entry());
        }
        platform.forget();
    }
    std::string failureEntry(const std::string& operation) const {
        const char* level = operation + c.property == "setTransferType" ? "1" : "4";
        return std::string("2 ") + level + " -1 " + operation + c.property + " error = 2097168";
    }
    const PropertyCase& c = GetParam();
};

TEST_P(AccessorTest, ShowsWhatTheEntryHoldsAndStoresWhatIsSet) {
    platform.put(c.entry(), c.stored);
    const OpenWBEM::CIMInstance instance = get(c.path);
    EXPECT_EQ(shown(instance, c.property), c.shown);
    EXPECT_EQ(instance.getProperty(c.property.c_str()).getDataType().toString(), c.type.c_str());
    const bool unqualified = c.className().find("Service") != std::string::npos || c.property == "TransferType";
    EXPECT_EQ(qualifier(instance, c.property, "Applicable"), unqualified ? "-" : "true");

    platform.put(c.entry(), "");
    EXPECT_EQ(set(c.path, c.property, value(c.type, c.shown)).text(), "");
    EXPECT_EQ(platform.entry(c.entry()), c.writable ? c.stored : "");
}

// Of the push settings a failed read fails the request; of the other classes the property is left out.
TEST_P(AccessorTest, LogsAFailedRead) {
    platform.put(c.entry(), c.stored);
    failAccess("Get");
    std::string read = "-";
    EXPECT_EQ(failure([&] { read = shown(get(c.path), c.property); }).text(),
              c.isPushSetting() ? "1 342 CDRProvider " : "");
    EXPECT_EQ(read, "-");
    EXPECT_THAT(platform.log, Contains(failureEntry("get")));
    EXPECT_EQ(platform.entry(c.entry()), c.stored);
}

TEST_P(AccessorTest, TreatsAnAbsentEntryAsItsClassDoes) {
    platform.put(c.entry(), "");
    EXPECT_EQ(shown(get(c.path), c.property), c.absent);
    EXPECT_EQ(platform.entry(c.entry()), c.created);
    if (c.absent == "-") {
        EXPECT_THAT(platform.log, Contains("2 4 -1 get" + c.property + " error = 2097165"));
    }
}

class SetterTest : public AccessorTest {};

TEST_P(SetterTest, LogsAFailedWrite) {
    platform.queues["CDRService"] = 7;
    failAccess("Set");
    EXPECT_EQ(set(c.path, c.property, value(c.type, c.shown)).text(),
              c.isPushSetting() ? "1 607 CDRProvider " : "1 304 " + c.className() + "Provider 101");
    EXPECT_THAT(platform.log, ElementsAre(failureEntry("set")));
    EXPECT_THAT(platform.calls("osQueueSend"), IsEmpty());
    EXPECT_THAT(platform.created, IsEmpty());
}

class TextGetterTest : public AccessorTest {};

// Also an empty text counts. The entry stays as it is.
TEST_P(TextGetterTest, ShowsTheDefaultForControlCharacters) {
    const std::string warning = std::string("2 2 -1 ControlCharacters Found in PDR:") +
                                (c.isPullStatistic() ? "" : "Push-") + c.key.substr(c.key.find('/') + 1);
    for (const std::string stored : {"text a\tb", "text \x7f", "text "}) {
        platform.put(c.entry(), stored);
        platform.forget();
        EXPECT_EQ(shown(get(c.path), c.property), c.absent);
        EXPECT_THAT(platform.log, Contains(warning));
        EXPECT_EQ(platform.log.back(), std::string("2 2 -1 ") + controlLogBuffer);
        EXPECT_EQ(platform.entry(c.entry()), stored);
    }
}

std::string caseName(const testing::TestParamInfo<PropertyCase>& tested) {
    return tested.param.className() + "_" + tested.param.property;
}

std::vector<PropertyCase> casesThat(bool (*are)(const PropertyCase&)) {
    std::vector<PropertyCase> found;
    std::copy_if(propertyCases().begin(), propertyCases().end(), std::back_inserter(found), are);
    return found;
}
bool isWritable(const PropertyCase& tested) {
    return tested.writable;
}
bool isText(const PropertyCase& tested) {
    return tested.stored.substr(0, 5) == "text ";
}

INSTANTIATE_TEST_SUITE_P(Properties, AccessorTest, testing::ValuesIn(propertyCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Properties, SetterTest, testing::ValuesIn(casesThat(isWritable)), caseName);
INSTANTIATE_TEST_SUITE_P(Properties, TextGetterTest, testing::ValuesIn(casesThat(isText)), caseName);

// What an entry's value and a property's value are to each other where it is not one to one.
TEST_F(ModuleTest, ConvertsBetweenEntriesAndValues) {
    using Text = const char*;
    struct {
        Text path, property, type;
        Text set; ///< null: only read
        Text key, stored, shown;
    } const cases[] = {
        {kService, "ClipFileSize_100K", "uint32", "300", "CDRService/FILESIZE", "bytes 2c", "44"},
        {kService, "ClipFileSize_100K", "uint32", "256", "CDRService/FILESIZE", "bytes 00", "0"},
        {kService, "CallFilterDuration", "uint32", "4294967295", "CDRService/TIME", "bytes ff", "255"},
        {kService, "DNISInfo", "boolean", nullptr, "CDRService/DNIS", "bytes 02", "true"},
        {kService, "DigitsLimit", "uint16", nullptr, "CDRService/DIGITSLIMIT", "bytes 1234", "4660"},
        {kService, "DigitsLimit", "uint16", "3", "CDRService/DIGITSLIMIT", "bytes 0003", "3"},
        {kService, "FeatureCode", "string", "9a", "CDRService/FEATURE CODE", "bytes f990", "90"},
        {kService, "FeatureCode", "string", "123", "CDRService/FEATURE CODE", "bytes f912", "12"},
        {kService, "FeatureCode", "string", "7", "CDRService/FEATURE CODE", "bytes f970", "70"},
        {kService, "FeatureCode", "string", "", "CDRService/FEATURE CODE", "bytes f900", "00"},
        {kService, "FeatureCode", "string", nullptr, "CDRService/FEATURE CODE", "bytes 00af", ":?"},
        {kService, "FeatureCode", "uint16", "42", "CDRService/FEATURE CODE", "bytes f942", "42"},
        {kPushSetting, "NumRetry", "uint32", "300", "CDRPush/NumRetry", "bytes 2c", "44"},
        {kPushSetting, "UserName", "string", "J\xc3\xb6", "CDRPush/UserName", "text J\xc3\xb6", "J\xc3\x83\xc2\xb6"},
        {kPushSetting, "UserName", "string", nullptr, "CDRPush/UserName", "text J\xf6", "J\xc3\xb6"},
    };
    platform.put("CDR/CDRPush/TransferType", "bytes 00");
    for (const auto& c : cases) {
        const std::string entry = std::string("CDR/") + c.key;
        if (c.set != nullptr) {
            EXPECT_EQ(set(c.path, c.property, value(c.type, c.set)).text(), "");
            EXPECT_EQ(platform.entry(entry), c.stored) << c.property;
        }
        platform.put(entry, c.stored);
        EXPECT_EQ(shown(get(c.path), c.property), c.shown) << c.property;
    }
}

TEST_F(ModuleTest, RefusesValuesOutOfBounds) {
    const std::string prefix = "QTX_CDRServicePrefixBin.InstanceID=\"CDRServicePrefixBin_7\"";
    const std::string access = "QTX_CDRServiceAccessBin.InstanceID=\"CDRServiceAccessBin_4\"";
    struct {
        std::string path, property, type, value, ended;
    } const cases[] = {
        {kService, "DigitsLimit", "uint16", "25", "DigitsLimit must be <= 24"},
        {kService, "DigitsLimit", "uint16", "2", "DigitsLimit must be >= 3"},
        {kService, "FeatureCode", "string", "1234", "FeatureCode length must be must be <= 3"},
        {prefix, "PrefixBin", "string", "123456789", "PrefixBin length must be must be <= 8"},
        {access, "AccessBin", "string", "123456", "AccessBin length must be must be <= 5"},
        {access, "SuppressBin", "string", "100", "SuppressBin length must be must be <= 2"},
    };
    for (const auto& c : cases) {
        const Failure ended = set(c.path, c.property, value(c.type, c.value));
        EXPECT_EQ(ended.code, 4);
        EXPECT_EQ(ended.message, c.ended);
    }
    EXPECT_THAT(platform.entries, IsEmpty());
}

TEST_F(ModuleTest, TakesATextOf511BytesWhole) {
    const std::string longest = "1 " + std::string(509, 'x');
    EXPECT_EQ(set(kPushSetting, "TransferDayOfMonth", longest).text(), "");
    EXPECT_EQ(set(kPushSetting, "IPAddress", longest).text(), "");
    platform.log.clear();
    EXPECT_EQ(set(kPushSetting, "IPAddress", longest + "x").text(), "1 607 CDRProvider ");
    EXPECT_EQ(set(kPushSetting, "TransferDayOfMonth", longest + "x").text(), "1 607 CDRProvider ");
    EXPECT_THAT(platform.log,
                ElementsAre("2 4 -1 setIPAddress error = 2097157", "2 4 -1 setTransferDayOfMonth error = 2097157"));
    EXPECT_EQ(platform.entry("CDR/CDRPush/IpAddr"), "text " + longest);

    // What grows beyond that when it is converted is cut between characters.
    platform.put("CDR/CDRPush/TransferType", "bytes 00");
    platform.put("CDR/CDRPush/IpAddr", "text " + std::string(511, '\xe9'));
    EXPECT_EQ(shown(get(kPushSetting), "IPAddress").size(), 510U);
}

// The values that may be set depend on the format, which is read just before.
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
        EXPECT_EQ(qualifier(instance, "Format", "ValidValueMap"), "-");
    }
}

// In a transfer type in which a property has no meaning its entry is neither read nor created.
TEST_F(ModuleTest, LeavesInapplicablePropertiesUnread) {
    struct {
        std::string type, path;
        bool others, dayOfMonth, dayOfWeek; ///< whether they apply
    } const cases[] = {
        {"bytes 00", kPullStatistics, false, false, false}, {"bytes 03", kPushStatistics, false, false, false},
        {"bytes 04", kPushStatistics, false, false, false}, {"bytes 03", kPushSetting, false, false, false},
        {"bytes 04", kPushSetting, false, false, false},    {"bytes 00", kPushSetting, true, false, false},
        {"bytes 01", kPushSetting, true, false, true},      {"bytes 02", kPushSetting, true, true, false},
        {"bytes 09", kPushSetting, true, false, false},
    };
    for (const auto& c : cases) {
        platform.reset();
        platform.put("CDR/CDRPush/TransferType", c.type);
        const OpenWBEM::CIMInstance instance = get(c.path);
        for (const PropertyCase& each : propertyCases()) {
            const bool applies = each.property == "TransferDayOfMonth"  ? c.dayOfMonth
                                 : each.property == "TransferDayOfWeek" ? c.dayOfWeek
                                                                        : c.others;
            if (each.path == c.path && each.property != "TransferType") {
                EXPECT_EQ(qualifier(instance, each.property, "Applicable"), applies ? "true" : "false") << each;
                EXPECT_EQ(platform.entry(each.entry()) != "", applies) << c.type << each;
            }
        }
        EXPECT_THAT(platform.log, IsEmpty());
    }
}

} // namespace
