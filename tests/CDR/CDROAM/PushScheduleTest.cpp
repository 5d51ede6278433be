// The scheduled push task and what arms, replaces and removes it.
#include "CDROAMWrap.hpp"
#include "CFG_Exception.hpp"
#include "ModuleTest.hpp"
#include "QTX_CDRPushSettingImpl.hpp"

#include <cstring>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kProgram = "/qv/bin/CDRTransfer";
constexpr std::uint16_t kAny = 1024;

ZpoScheduledTaskRecord listed(const char* program, std::uint16_t hour) {
    ZpoScheduledTaskRecord record{};
    std::strcpy(record.path, program);
    record.hour = hour;
    record.month = kAny;
    std::strcpy(record.dayOfMonth, "*");
    std::strcpy(record.dayOfWeek, "1-5");
    return record;
}

class PushScheduleTest : public ModuleTest {
  protected:
    PushScheduleTest() { platform.forget(); }

    void putTexts(const std::string& time, const std::string& dayOfMonth, const std::string& dayOfWeek) {
        platform.put("CDR/CDRPush/TranTime", time);
        platform.put("CDR/CDRPush/TranDateOfMonth", dayOfMonth);
        platform.put("CDR/CDRPush/TranDateOfWeek", dayOfWeek);
    }
    void restore() { platform.callbacks.at("CDROAMProvider")(2); }
    Failure setType(const std::string& type) { return set(kPushSetting, "TransferType", value("uint8", type)); }
    static QTX_CDRPushSettingImpl& object() {
        return dynamic_cast<QTX_CDRPushSettingImpl&>(*QTX_CDRPushSetting::getInstanceManager()->get("CDRPushSetting"));
    }
};

struct ScheduleCase {
    const char* type;
    const char* time;
    const char* dayOfMonth;
    const char* dayOfWeek;
    std::vector<std::uint16_t> fields; ///< minute, hour, day of month, day of week, month
    const char* description;
};

TEST_F(PushScheduleTest, HandsTheTaskOverByteForByte) {
    const std::vector<ScheduleCase> cases = {
        {"0", "text 7:5", "text 9", "text 3", {5, 7, kAny, kAny, kAny}, "PUSH_DAILY: Time=07:05 "},
        {"0", "", "", "", {0, 0, kAny, kAny, kAny}, "PUSH_DAILY: Time=00:00 "},
        {"0", "text 12", "", "", {0, 12, kAny, kAny, kAny}, "PUSH_DAILY: Time=12:00 "},
        {"1", "text 8:30", "text 9", "text 3", {30, 8, kAny, 3, kAny}, "PUSH_WEEKLY: DayOfWeek=3, Time=08:30 "},
        {"1", "text 0:0", "", "text 0", {0, 0, kAny, 7, kAny}, "PUSH_WEEKLY: DayOfWeek=7, Time=00:00 "},
        {"1", "text 0:0", "", "", {0, 0, kAny, 7, kAny}, "PUSH_WEEKLY: DayOfWeek=7, Time=00:00 "},
        {"1", "text 0:0", "", "text x", {0, 0, kAny, 7, kAny}, "PUSH_WEEKLY: DayOfWeek=7, Time=00:00 "},
        {"2", "text 23:59", "text 31", "text 3", {59, 23, 31, kAny, kAny}, "PUSH_MONTHLY: DayOfMonth=31, Time=23:59 "},
        {"2", "text 1:02", "", "", {2, 1, 0, kAny, kAny}, "PUSH_MONTHLY: DayOfMonth=0, Time=01:02 "},
        {"9", "text 1:02", "", "", {2, 1, kAny, kAny, kAny}, " Time=01:02 "},
    };
    for (const ScheduleCase& c : cases) {
        putTexts(c.time, c.dayOfMonth, c.dayOfWeek);
        platform.created.clear();
        platform.tasks = {listed(kProgram, 3)};
        platform.forget();
        EXPECT_EQ(setType(c.type).text(), "");
        ZpoScheduledTask expected{};
        std::strcpy(expected.path, kProgram);
        std::memcpy(&expected.minute, c.fields.data(), 10);
        ASSERT_EQ(platform.created.size(), 1U);
        EXPECT_EQ(std::memcmp(&platform.created.front(), &expected, sizeof expected), 0) << c.description;
        EXPECT_THAT(platform.log,
                    ElementsAre("2 4 -1 CDR: push task deleted successfully",
                                std::string("2 4 -1 CDR: push task scheduled successfully, ") + c.description));
        EXPECT_EQ(platform.tasks.size(), 1U);
        // A restore arms the same, but disarms for a type that it does not know.
        platform.created.clear();
        restore();
        EXPECT_EQ(platform.created.size(), c.type == std::string("9") ? 0U : 1U);
        for (const ZpoScheduledTask& again : platform.created) {
            EXPECT_EQ(std::memcmp(&again, &expected, sizeof expected), 0) << c.description;
        }
        EXPECT_EQ(platform.openLists, 0);
    }
}

TEST_F(PushScheduleTest, CreatesAbsentTextsThatTheScheduleNeeds) {
    const std::vector<std::pair<const char*, std::vector<std::string>>> cases = {
        {"0", {"text 00:00", "", ""}}, {"1", {"text 00:00", "", "text "}}, {"2", {"text 00:00", "text ", ""}}};
    for (const auto& [type, created] : cases) {
        for (const bool byRestore : {false, true}) {
            putTexts("", "", "");
            platform.put("CDR/CDRPush/TransferType", std::string("bytes 0") + type);
            byRestore ? restore() : (void)setType(type);
            EXPECT_EQ(platform.entry("CDR/CDRPush/TranTime"), created[0]);
            EXPECT_EQ(platform.entry("CDR/CDRPush/TranDateOfMonth"), created[1]);
            EXPECT_EQ(platform.entry("CDR/CDRPush/TranDateOfWeek"), created[2]);
        }
    }
}

TEST_F(PushScheduleTest, TreatsAnUnreadableTimeAsMidnight) {
    putTexts("text 7:30", "", "");
    platform.fail("ZpoGetRegEntryString", ZPO_REG_DEVICE_ERROR, "TranTime");
    EXPECT_EQ(setType("0").text(), "");
    EXPECT_EQ(platform.created.at(0).hour, 0);
    EXPECT_EQ(platform.entry("CDR/CDRPush/TranTime"), "text 7:30");
}

TEST_F(PushScheduleTest, RemovesEveryTaskOfTheProgramInOrder) {
    for (const char* type : {"3", "4"}) {
        platform.tasks = {listed(kProgram, 1), listed("/bin/true", 2), listed(kProgram, 3)};
        const std::vector<ZpoScheduledTaskRecord> before = platform.tasks;
        platform.deleted.clear();
        platform.forget();
        EXPECT_EQ(setType(type).text(), "");
        EXPECT_THAT(platform.log, ElementsAre("2 4 -1 CDR: push task deleted successfully",
                                              "2 4 -1 CDR: push task deleted successfully"));
        EXPECT_THAT(platform.calls("Zpo").size(),
                    7U); // the type, the list, two deletions with their logs, the list freed
        EXPECT_THAT(platform.calls("ZpoGetScheduledTaskList"),
                    ElementsAre("ZpoGetScheduledTaskList /qv/bin/CDRTransfer 1000"));
        EXPECT_THAT(platform.calls("ZpoDeleteScheduledTaskEx"),
                    ElementsAre("ZpoDeleteScheduledTaskEx 1000 1000 1000", "ZpoDeleteScheduledTaskEx 1000 1000 1000"));
        ASSERT_EQ(platform.deleted.size(), 2U);
        EXPECT_EQ(std::memcmp(&platform.deleted[0], &before[0], sizeof before[0]), 0);
        EXPECT_EQ(std::memcmp(&platform.deleted[1], &before[2], sizeof before[2]), 0);
        EXPECT_EQ(platform.tasks.size(), 1U);
        EXPECT_EQ(platform.openLists, 0);
    }
    platform.tasks.clear();
    platform.forget();
    EXPECT_EQ(setType("3").text(), "");
    EXPECT_THAT(platform.log, IsEmpty());
}

// Of several deletions the last decides.
TEST_F(PushScheduleTest, FailsWhenTheLastDeletionFails) {
    for (const unsigned failing : {1U, 2U}) {
        platform.mend();
        platform.tasks = {listed(kProgram, 1), listed(kProgram, 3)};
        platform.created.clear();
        platform.forget();
        platform.fail("ZpoDeleteScheduledTaskEx", 99, "", failing);
        EXPECT_EQ(setType("0").text(), failing == 2 ? "1 607 CDRProvider " : "");
        EXPECT_EQ(platform.created.size(), failing == 2 ? 0U : 1U);
        const std::string& line = platform.log.at(failing - 1);
        EXPECT_EQ(line.find("2 1 -1 CDR: delete push task failed, rc="), 0U);
        EXPECT_EQ(line.back(), ',');
        EXPECT_EQ(platform.log.at(2), failing == 2
                                          ? "2 4 -1 CDR: push task Unsuccessful delete"
                                          : "2 4 -1 CDR: push task scheduled successfully, PUSH_DAILY: Time=00:00 ");
        EXPECT_EQ(platform.openLists, 0);
    }
}

TEST_F(PushScheduleTest, FailsWhenTheTaskCannotBeCreated) {
    putTexts("text 7:5", "", "");
    platform.tasks = {listed(kProgram, 1)};
    platform.fail("ZpoSetScheduledTask", 99);
    EXPECT_EQ(setType("0").text(), "1 607 CDRProvider ");
    EXPECT_EQ(platform.log.back(), "2 1 -1 CDR: schedule push task failed, PUSH_DAILY: Time=07:05 , rc=99");
    EXPECT_THAT(platform.tasks, IsEmpty()) << "the old task has gone before";
    EXPECT_EQ(platform.entry("CDR/CDRPush/TransferType"), "bytes 00");
    restore(); // nothing leaves the callback
    EXPECT_THROW(object().RestoreCallBackHdlr(2), CFG_WriteError);
}

TEST_F(PushScheduleTest, ArmsWithoutTasksWhenTheListFails) {
    platform.fail("ZpoGetScheduledTaskList", 99);
    EXPECT_EQ(setType("0").text(), "");
    EXPECT_EQ(platform.created.size(), 1U);
}

TEST_F(PushScheduleTest, TakesOnlyTimesAndDays) {
    struct {
        const char* property;
        std::vector<std::string> taken;
        std::vector<std::string> refused;
    } const cases[] = {
        {"TransferTime",
         {"7:5", "0:0", "00:00", "23:59", "", ":", "12", "7:5:99", "::7::5", " 7: 5", "9x:1y"},
         {"24:00", "12:60", "ab:10", "10:ab", "000:10", "1:000", "-1:00", "1:-1", ":30", "99999999999:0", "7: "}},
        {"TransferDayOfMonth", {"1", "31", "15th", " 2"}, {"0", "32", "", "x", "-1", "4294967297"}},
        {"TransferDayOfWeek", {"0", "6", "", "x", "3rd"}, {"7", "-1"}},
    };
    for (const auto& c : cases) {
        for (const std::string& text : c.taken) {
            platform.created.clear();
            EXPECT_EQ(set(kPushSetting, c.property, text).text(), "") << text;
            EXPECT_EQ(platform.created.size(), 1U) << text;
            const std::string key = c.property == std::string("TransferTime")        ? "TranTime"
                                    : c.property == std::string("TransferDayOfWeek") ? "TranDateOfWeek"
                                                                                     : "TranDateOfMonth";
            EXPECT_EQ(platform.entry("CDR/CDRPush/" + key), "text " + text);
        }
        platform.forget();
        for (const std::string& text : c.refused) {
            EXPECT_EQ(set(kPushSetting, c.property, text).text(), "1 304 QTX_CDRPushSettingProvider 301") << text;
        }
        EXPECT_THAT(platform.calls(), IsEmpty());
    }
}

TEST_F(PushScheduleTest, ArmsByTheLatestChangeOfARequest) {
    modify(changed(kPushSetting, {{"TransferType", value("uint8", "3")}, {"TransferTime", value("string", "10:00")}}));
    ASSERT_EQ(platform.tasks.size(), 1U);
    EXPECT_EQ(platform.tasks.front().hour, 10);
    EXPECT_EQ(platform.log.back(), "2 4 -1 CDR: push task scheduled successfully,  Time=10:00 ");
    modify(changed(kPushSetting, {{"TransferTime", value("string", "11:00")}, {"TransferType", value("uint8", "4")}}));
    EXPECT_THAT(platform.tasks, IsEmpty());
}

// Arming again must not lose the minute that the first time split off.
TEST_F(PushScheduleTest, KeepsTimeAndDayOverSeveralChanges) {
    modify(changed(kPushSetting, {{"TransferType", value("uint8", "2")},
                                  {"TransferTime", value("string", "4:56")},
                                  {"TransferDayOfMonth", value("string", "12")}}));
    const ZpoScheduledTask& last = platform.created.at(2);
    EXPECT_EQ(last.minute, 56);
    EXPECT_EQ(last.hour, 4);
    EXPECT_EQ(last.dayOfMonth, 12);
}

TEST_F(PushScheduleTest, ReportsARestoreWithoutATransferType) {
    platform.tasks = {listed(kProgram, 1)};
    EXPECT_EQ(object().RestoreCallBackHdlr(2), static_cast<int>(ZPO_REG_ENTRY_NOT_FOUND));
    restore();
    EXPECT_EQ(platform.tasks.size(), 1U);
    EXPECT_THAT(platform.log, IsEmpty());
    platform.put("CDR/CDRPush/TransferType", "bytes 04");
    EXPECT_EQ(object().RestoreCallBackHdlr(0), 0);
    EXPECT_THAT(platform.tasks, IsEmpty());
}

TEST_F(PushScheduleTest, RunsTheTransferProgramWhateverItReturns) {
    platform.fail("system", 256);
    invoke(path(kPushSetting), "PushFileNow");
    EXPECT_THAT(platform.calls(), ElementsAre("system /qv/bin/CDRTransfer"));
}

} // namespace
