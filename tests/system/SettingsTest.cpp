// Every writable property, set with wbemcli and looked for wherever it may have an effect.
#include "Lab.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>

namespace {

using namespace lab;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct Setting {
    const char* object;
    const char* property;
    const char* value;
    const char* entry; ///< the start of its registry entry afterwards
};

// Values that the factory settings do not have; the bins' rows are the first of their entries.
const Setting kReport[] = {
    {"$SERVICE", "Format", "1", "CDRService FORMAT binary 01"},
    {"$SERVICE", "ReportType", "3", "CDRService TYPE binary 03"},
    {"$SERVICE", "Language", "2", "CDRService LANG binary 02"},
    {"$SERVICE", "ReportFilter", "255", "CDRService FILTER binary ff"},
    {"$SERVICE", "FeatureCode", "71", "CDRService FEATURE CODE binary f9 71"},
    {"$SERVICE", "DateFormat", "1", "CDRService DATE binary 01"},
    {"$SERVICE", "HeaderFormat", "0", "CDRService HEADER binary 00"},
    {"$SERVICE", "DNISInfo", "FALSE", "CDRService DNIS binary 00"},
    {"$SERVICE", "ConnectChar", "42", "CDRService CONNECT binary 2a"},
    {"$SERVICE", "DigitsSuppress", "4", "CDRService DIGITSSUPP binary 04"},
    {"$SERVICE", "DigitsLimit", "12", "CDRService DIGITSLIMIT binary 00 0c"},
    {"$SERVICE", "ClipFileSchedule", "3", "CDRService SCHEDULE binary 03"},
    {"$SERVICE", "ClipFileSize_100K", "20", "CDRService FILESIZE binary 14"},
    {"$SERVICE", "CDRDiskSpaceLimit_MB", "70000", "CDRService DISKLIMIT int 70000"},
    {"$SERVICE", "CLIDWithName", "FALSE", "CDRService NAME binary 00"},
    {"$SERVICE", "LongCLIDSupport", "TRUE", "CDRService LONGID binary 01"},
    {"$SERVICE", "CLIDWithCallType", "TRUE", "CDRService CALLTYPE binary 01"},
    {"$SERVICE", "SupportCallCharge", "TRUE", "CDRService CHARGE binary 01"},
    {"$SERVICE", "AnswerSupervision", "FALSE", "CDRService SUPERVISE binary 00"},
    {"$SERVICE", "CallFilterDuration", "9", "CDRService TIME binary 09"},
    {"$SERVICE", "HospitalityRecords", "TRUE", "CDRService HOSPITAL binary 01"},
    {"$PREFIX0", "PrefixBin", "12345678", "CDRService PREFIX BIN binary 01 02 03 04 05 06 07 08 0"},
    {"$ACCESS0", "AccessBin", "123", "CDRService ACCESS BIN binary 01 02 03 0c 0c 0"},
    {"$ACCESS0", "SuppressBin", "16", "CDRService ACCESS BIN binary 01 02 03 0c 0c 10 0"},
};
const Setting kPush[] = {
    {"$PUSH", "IPAddress", "10.0.0.1", "CDRPush IpAddr text 10.0.0.1"},
    {"$PUSH", "UserName", "cdr", "CDRPush UserName text cdr"},
    {"$PUSH", "Password", "s3cret!", "CDRPush Password text s3cret!"},
    {"$PUSH", "DestFolder", "/in/box", "CDRPush DestFolder text /in/box"},
    {"$PUSH", "NumRetry", "7", "CDRPush NumRetry binary 07"},
    {"$PUSH", "DeleteFlag", "TRUE", "CDRPush DeleteFlag binary 01"},
    {"$PUSH", "CompressFlag", "TRUE", "CDRPush CompressFlag binary 01"},
    {"$PUSH", "IncludeMetricsFlag", "TRUE", "CDRPush IncludeMetricsFlag binary 01"},
    {"$PUSH", "TransferTime", "8:30", "CDRPush TranTime text 8:30"},
    {"$PUSH", "TransferDayOfMonth", "31", "CDRPush TranDateOfMonth text 31"},
    {"$PUSH", "TransferDayOfWeek", "5", "CDRPush TranDateOfWeek text 5"},
};
const Setting kPullMetrics = {"$PULLED", "IncludeMetricsFlag", "TRUE", "CDRPull Pull-IncludeMetricsFlag binary 01"};

Setting transferType(const char* type) {
    static const char* const entries[] = {"CDRPush TransferType binary 00", "CDRPush TransferType binary 01",
                                          "CDRPush TransferType binary 02", "CDRPush TransferType binary 03",
                                          "CDRPush TransferType binary 04"};
    return {"$PUSH", "TransferType", type, entries[*type - '0']};
}

bool isDay(const std::string& property) {
    return property == "TransferDayOfWeek" || property == "TransferDayOfMonth";
}

/// Whether the property applies to the type of transfer; only then is its value shown.
bool applies(const std::string& property, char type) {
    return type < '3' && (!isDay(property) || property == (type == '1'   ? "TransferDayOfWeek"
                                                           : type == '2' ? "TransferDayOfMonth"
                                                                         : ""));
}

std::vector<std::string> news(const std::set<std::string>& before, const std::set<std::string>& after) {
    std::vector<std::string> result;
    std::set_difference(after.begin(), after.end(), before.begin(), before.end(), std::back_inserter(result));
    return result;
}

/// What a change did.
struct Effects {
    std::vector<std::string> shown;   ///< the lines of the instance that are new
    std::vector<std::string> entries; ///< the lines of the registry that are new
    std::size_t lost;                 ///< how many entries are gone or have another value
};

/// Changes settings and compares registry and instance with what they were at the change before.
class Watch {
  public:
    Effects change(const Setting& setting) {
        const std::string get = std::string("show ") + setting.object;
        auto shown = shown_.find(get);
        if (shown == shown_.end()) {
            shown = shown_.emplace(get, Lab::lines(get)).first;
        }
        EXPECT_EQ(Lab::run(std::string("wbemcli mi ") + setting.object + " " + setting.property + "=" + setting.value),
                  "");
        auto entries = Lab::lines("zporeg list");
        auto shownNow = Lab::lines(get);
        Effects effects{news(shown->second, shownNow), news(entries_, entries), news(entries, entries_).size()};
        shown->second.swap(shownNow);
        entries_.swap(entries);
        return effects;
    }

  private:
    std::set<std::string> entries_ = Lab::lines("zporeg list");
    std::map<std::string, std::set<std::string>> shown_; ///< by the command that shows the instance
};

std::string shownAs(const Setting& setting) {
    return std::string("-") + setting.property + "=" + setting.value;
}

class FromRegistry : public testing::TestWithParam<Registry> {};

TEST_P(FromRegistry, EachPropertyCanBeSetByItself) {
    Lab lab(GetParam());
    lab.start();
    Watch watch;
    std::vector<Setting> settings(std::begin(kReport), std::end(kReport));
    settings.push_back(transferType("0"));
    settings.insert(settings.end(), std::begin(kPush), std::end(kPush));
    settings.push_back(transferType("3"));
    settings.push_back(kPullMetrics);
    for (const Setting& setting : settings) {
        SCOPED_TRACE(setting.property);
        const Effects effects = watch.change(setting);
        EXPECT_THAT(effects.entries, Contains(StartsWith(std::string("CDR ") + setting.entry)));
        EXPECT_LE(effects.lost, 1U);
        if (!isDay(setting.property)) {
            EXPECT_THAT(effects.shown, Contains(shownAs(setting)));
        }
        if (GetParam() == Registry::Factory) {
            EXPECT_EQ(effects.entries.size(), 1U);
        }
        EXPECT_EQ(lab.heard(), std::strcmp(setting.object, "$SERVICE") == 0 ? "0\n" : "");
    }
    const auto entries = Lab::lines("zporeg list");
    Lab::play({
        {"wbemcli mi $PUSHED LastTransferTime=20260101000000.000000+000", ""},
        {"wbemcli mi $PULLED NumberOfFailedTransfers=5,ReasonForFailure=none", ""},
        {"show $PULLED NumberOfFailedTransfers", "-NumberOfFailedTransfers=0\n"},
    });
    EXPECT_EQ(Lab::lines("zporeg list"), entries) << "statistics are not written";
}

INSTANTIATE_TEST_SUITE_P(Start, FromRegistry, testing::Values(Registry::Empty, Registry::Factory),
                         [](const auto& start) { return start.param == Registry::Empty ? "Empty" : "Factory"; });

TEST(EmptyRegistry, IsShownAsNullAndReadingLeavesTheReportSettingsAbsent) {
    Lab lab(Registry::Empty);
    lab.start();
    std::string service = "-SystemCreationClassName=QTX_System\n-SystemName=QTX\n-CreationClassName=QTX_CDRService\n"
                          "-Name=CDRService\n";
    for (const Setting& setting : kReport) {
        service += setting.object == std::string("$SERVICE") ? "-" + std::string(setting.property) + "=\n" : "";
    }
    Lab::play({
        {"wbemcli -nl ei ${CIM}QTX_CDRService | sed '1d;/^$/d'", service},
        {"wbemcli -nl ei ${CIM}QTX_CDRServicePrefixBin | grep -c '^-PrefixBin=$'", "8\n"},
        {"wbemcli -nl ei ${CIM}QTX_CDRServiceAccessBin | grep -c '^-....*Bin=$'", "10\n"},
        {"zporeg list", ""},
        {"show $PUSH TransferType,IPAddress,NumRetry,TransferTime",
         "-TransferType=4\n-IPAddress=\n-NumRetry=0\n-TransferTime=\n"},
        {"show $PULLED NumberOfFailedTransfers", "-NumberOfFailedTransfers=0\n"},
        {"zporeg list", "CDR CDRPush TransferType binary 04\n"},
    });
    EXPECT_THAT(lab.diagnostics(), HasSubstr("getDigitsLimit error = 2097165"));
}

/// The push task that the factory settings and later changes ask for.
struct Schedule {
    std::string time = "0 2"; ///< minute and hour
    std::string dayOfMonth = "1";
    std::string dayOfWeek = "7"; ///< Sunday, set as 0

    /// Whether the property is part of the schedule.
    bool take(const std::string& property, const std::string& value) {
        if (property == "TransferTime") {
            time = value.substr(value.find(':') + 1) + " " + value.substr(0, value.find(':'));
        } else if (isDay(property)) {
            (property == "TransferDayOfWeek" ? dayOfWeek : dayOfMonth) = value;
        }
        return property == "TransferTime" || isDay(property);
    }
    std::string line(char type) const {
        return time + (type == '2' ? " " + dayOfMonth + " * *" : " * * " + (type == '1' ? dayOfWeek : "*")) +
               " /qv/bin/CDRTransfer\n";
    }
};

class TransferType : public testing::TestWithParam<const char*> {};

TEST_P(TransferType, EachPushPropertyChangesAloneAndOnlyTheScheduleArms) {
    const char type = *GetParam();
    Lab lab(Registry::Factory);
    const std::string foreign = "# by hand\n*/5 * * * * /bin/true\n";
    lab.setCrontab(foreign);
    lab.start();
    Watch watch;
    if (type != '4') {
        EXPECT_EQ(watch.change(transferType(GetParam())).entries.size(), 1U);
    }
    EXPECT_EQ(lab.armed(), type < '3' ? 1U : 0U);
    Schedule schedule;
    bool armed = type < '3';
    for (const Setting& setting : kPush) {
        SCOPED_TRACE(setting.property);
        const std::string property = setting.property;
        const Effects effects = watch.change(setting);
        EXPECT_THAT(effects.entries, ElementsAre(std::string("CDR ") + setting.entry));
        EXPECT_EQ(effects.lost, 1U);
        if (applies(property, type)) {
            EXPECT_THAT(effects.shown, ElementsAre(shownAs(setting)));
        } else {
            EXPECT_THAT(effects.shown, IsEmpty());
        }
        const bool arms = schedule.take(property, setting.value);
        armed = armed || arms;
        EXPECT_EQ(lab.armed(), arms ? 1U : 0U);
        EXPECT_EQ(lab.crontab(), foreign + (armed ? schedule.line(type) : ""));
    }
    EXPECT_EQ(lab.heard(), "");
}

INSTANTIATE_TEST_SUITE_P(Type, TransferType, testing::Values("0", "1", "2", "3", "4"),
                         [](const auto& type) { return std::string(type.param); });

} // namespace
