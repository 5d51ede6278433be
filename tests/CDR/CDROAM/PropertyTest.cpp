// Every property, read and written through the umbrella provider, with its registry entry and its log entries.
#include "DiagnosticLog.hpp"
#include "ModuleTest.hpp"

using testing::Contains;
using testing::IsEmpty;

namespace {

class PropertyTest : public ModuleTest, public testing::WithParamInterface<PropertyCase> {
  protected:
    PropertyTest() {
        platform.put("CDR/CDRPush/TransferType", std::string("bytes 0") + c.transferType());
        platform.put(c.entry(), c.stored);
    }
    std::string read() { return shown(get(c.path), c.property); }
    std::string set(const std::string& text) {
        platform.forget();
        platform.created.clear();
        return ModuleTest::set(c.path, c.property, value(c.type, text));
    }
    // The failure of a set with this message.
    std::string refusal(const std::string& message) const {
        return message.empty() ? "1 607 CDRProvider "
                               : (message == "301" ? "1 304 " : "4 304 ") + c.className() + "Provider " + message;
    }
    void failAccess(const std::string& getOrSet) {
        for (const char* kind : {"Binary", "String", "Int"}) {
            platform.fail("Zpo" + getOrSet + "RegEntry" + kind, ZPO_REG_DEVICE_ERROR, c.entry());
        }
        platform.forget();
    }
    std::string failureEntry(const std::string& verb) const {
        const char* level = verb + c.property == "setTransferType" ? "1" : "4";
        return std::string("2 ") + level + " -1 " + verb + c.property + " error = 2097168";
    }
    const PropertyCase& c = GetParam();
};

TEST_P(PropertyTest, ShowsWhatItsEntryHolds) {
    const OpenWBEM::CIMInstance instance = get(c.path);
    EXPECT_EQ(shown(instance, c.property), c.shown);
    EXPECT_EQ(instance.getProperty(c.property.c_str()).getDataType().toString(), c.type.c_str());
    const bool unqualified = c.key.compare(0, 4, "CDRP") != 0 || c.property == "TransferType";
    EXPECT_EQ(qualifier(instance, c.property, "Applicable"), unqualified ? "-" : "true");
    for (const auto& [stored, text] : c.alsoShown) {
        platform.put(c.entry(), stored);
        EXPECT_EQ(read(), text) << stored;
    }
}

TEST_P(PropertyTest, StoresWhatIsTakenAndNothingElse) {
    platform.put(c.entry(), "");
    platform.queues["CDRService"] = 7;
    TextPairs taken = c.taken;
    taken.emplace(taken.begin(), c.shown, c.writable ? c.stored : "");
    for (const auto& [text, stored] : taken) {
        EXPECT_EQ(set(text), "") << text;
        EXPECT_EQ(platform.entry(c.entry()), stored) << text;
        EXPECT_EQ(platform.created.size(), c.isScheduled() ? 1U : 0U);
        EXPECT_EQ(platform.calls("osQueueSend"), std::vector<std::string>(c.isService() ? 1 : 0, "osQueueSend 7 0"));
    }
    for (const auto& [text, message] : c.refused) {
        EXPECT_EQ(set(text), refusal(message)) << text;
        EXPECT_THAT(platform.calls("ZpoSet"), IsEmpty());
        EXPECT_THAT(platform.calls("osQueueSend"), IsEmpty());
    }
}

// Of the push settings a failed read fails the request; of the other classes the property is left out.
TEST_P(PropertyTest, LogsFailedAccesses) {
    failAccess("Get");
    std::string read = "-";
    EXPECT_EQ(failure([&] { read = this->read(); }), c.isPushSetting() ? "1 342 CDRProvider " : "");
    EXPECT_EQ(read, "-");
    EXPECT_THAT(platform.log, Contains(failureEntry("get")));
    failAccess("Set");
    platform.queues["CDRService"] = 7;
    EXPECT_EQ(set(c.shown), !c.writable         ? ""
                            : c.isPushSetting() ? "1 607 CDRProvider "
                                                : "1 304 " + c.className() + "Provider 101");
    EXPECT_EQ(platform.log, std::vector<std::string>(c.writable ? 1 : 0, failureEntry("set")));
    EXPECT_THAT(platform.created, IsEmpty());
    EXPECT_THAT(platform.calls("osQueueSend"), IsEmpty()) << "what was not stored is not told";
    EXPECT_EQ(platform.entry(c.entry()), c.stored);
}

TEST_P(PropertyTest, TreatsAnAbsentEntryAsItsClassDoes) {
    platform.put(c.entry(), "");
    EXPECT_EQ(read(), c.absent);
    EXPECT_EQ(platform.entry(c.entry()), c.created);
    if (c.absent == "-") {
        EXPECT_THAT(platform.log, Contains("2 4 -1 get" + c.property + " error = 2097165"));
    }
}

// Also an empty text counts. The entry stays as it is.
TEST_P(PropertyTest, ShowsTheDefaultForControlCharacters) {
    const std::string warning = std::string("2 2 -1 ControlCharacters Found in PDR:") +
                                (c.key.compare(0, 8, "CDRPush/") == 0 ? "Push-" : "") +
                                c.key.substr(c.key.find('/') + 1);
    for (const std::string stored : {"text a\tb", "text \x7f", "text "}) {
        if (c.stored.compare(0, 5, stored, 0, 5) != 0) {
            continue; // no text
        }
        platform.put(c.entry(), stored);
        platform.forget();
        EXPECT_EQ(read(), c.absent == "-" ? "" : c.absent);
        EXPECT_THAT(platform.log, Contains(warning));
        EXPECT_THAT(platform.log, Contains(std::string("2 2 -1 ") + controlLogBuffer));
        EXPECT_EQ(platform.entry(c.entry()), stored);
    }
}

INSTANTIATE_TEST_SUITE_P(All, PropertyTest, testing::ValuesIn(propertyCases()),
                         [](const auto& tested) { return tested.param.className() + "_" + tested.param.property; });

// The values that may be set depend on the format, which is read just before.
TEST_F(ModuleTest, ListsTheValidReportTypes) {
    platform.put("CDR/CDRService/TYPE", "bytes 00");
    for (const auto& [format, valid] :
         TextPairs{{"bytes 00", "0,1"}, {"bytes 01", "0,1,2,3"}, {"bytes 02", "0,1,2,3"}}) {
        platform.put("CDR/CDRService/FORMAT", format);
        const OpenWBEM::CIMInstance instance = get(kService);
        EXPECT_EQ(qualifier(instance, "ReportType", "ValidValueMap"), valid);
        const OpenWBEM::CIMQualifier map = instance.getProperty("ReportType").getQualifier("ValidValueMap");
        EXPECT_EQ(map.getValue().getType(), OpenWBEM::CIMDataType::UINT32);
        EXPECT_EQ(map.getDefaults().getDataType().getType(), OpenWBEM::CIMDataType::STRING);
    }
}

// A property that has no meaning in a transfer type is not read.
TEST_F(ModuleTest, LeavesInapplicablePropertiesUnread) {
    for (const char type : {'0', '1', '2', '3', '4', '9'}) {
        for (const PropertyCase& each : propertyCases()) {
            platform.put(each.entry(), each.stored);
        }
        platform.put("CDR/CDRPush/TransferType", std::string("bytes 0") + type);
        for (const PropertyCase& each : propertyCases()) {
            const OpenWBEM::CIMInstance instance = get(each.path);
            if (qualifier(instance, each.property, "Applicable") != "-") {
                EXPECT_EQ(qualifier(instance, each.property, "Applicable") == "true", each.appliesIn(type)) << each;
                EXPECT_EQ(shown(instance, each.property) == each.shown, each.appliesIn(type)) << each;
            }
        }
    }
}

} // namespace
