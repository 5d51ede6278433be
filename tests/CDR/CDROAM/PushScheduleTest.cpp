// The scheduled push task and what arms, replaces and removes it.
#include "CFG_Exception.hpp"
#include "ModuleTest.hpp"
#include "QTX_CDRPushSettingImpl.hpp"

#include <cstring>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::uint16_t kAny = 1024;
const std::string kDeleted = "2 4 -1 CDR: push task deleted successfully";
const std::string kScheduled = "2 4 -1 CDR: push task scheduled successfully, ";

ZpoScheduledTaskRecord listed(std::uint16_t hour, const char* program = "/qv/bin/CDRTransfer") {
    ZpoScheduledTaskRecord record{};
    std::strcpy(record.path, program);
    record.hour = hour;
    std::strcpy(record.dayOfWeek, "1-5");
    return record;
}

template <class Record>
bool same(const Record& a, const Record& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

class PushScheduleTest : public ModuleTest {
  protected:
    PushScheduleTest() { platform.forget(); }
    ~PushScheduleTest() override { EXPECT_EQ(platform.openLists, 0); }

    void restore() { platform.callbacks.at("CDROAMProvider")(2); }
    std::string setType(const std::string& type) { return set(kPushSetting, "TransferType", value("uint8", type)); }
    std::string push(const std::string& key) const { return platform.entry("CDR/CDRPush/" + key); }
    void putPush(const std::string& key, const std::string& stored) { platform.put("CDR/CDRPush/" + key, stored); }
    static QTX_CDRPushSettingImpl& object() {
        return dynamic_cast<QTX_CDRPushSettingImpl&>(*QTX_CDRPushSetting::getInstanceManager()->get("CDRPushSetting"));
    }
};

TEST_F(PushScheduleTest, HandsTheTaskOverByteForByte) {
    // clang-format off
    struct {
        const char *type, *time, *dayOfMonth, *dayOfWeek;
        std::uint16_t fields[5]; ///< minute, hour, day of month, day of week, month
        const char* description;
        const char* created; ///< time, day of month and day of week that are put where they were absent
    } const cases[] = {
        {"0", "text 7:5", "", "", {5, 7, kAny, kAny, kAny}, "PUSH_DAILY: Time=07:05 ", "text 7:5||"},
        {"0", "", "", "", {0, 0, kAny, kAny, kAny}, "PUSH_DAILY: Time=00:00 ", "text 00:00||"},
        {"0", "text 12", "", "", {0, 12, kAny, kAny, kAny}, "PUSH_DAILY: Time=12:00 ", "text 12||"},
        {"1", "text 8:30", "", "text 3", {30, 8, kAny, 3, kAny}, "PUSH_WEEKLY: DayOfWeek=3, Time=08:30 ", "text 8:30||text 3"},
        {"1", "", "", "", {0, 0, kAny, 7, kAny}, "PUSH_WEEKLY: DayOfWeek=7, Time=00:00 ", "text 00:00||text "},
        {"1", "text :", "", "text x", {0, 0, kAny, 7, kAny}, "PUSH_WEEKLY: DayOfWeek=7, Time=00:00 ", "text :||text x"},
        {"2", "text 23:59", "text 31", "", {59, 23, 31, kAny, kAny}, "PUSH_MONTHLY: DayOfMonth=31, Time=23:59 ", "text 23:59|text 31|"},
        {"2", "text 1:02", "", "", {2, 1, 0, kAny, kAny}, "PUSH_MONTHLY: DayOfMonth=0, Time=01:02 ", "text 1:02|text |"},
        {"9", "text 1:02", "", "", {2, 1, kAny, kAny, kAny}, " Time=01:02 ", "text 1:02||"},
    };
    // clang-format on
    for (const auto& c : cases) {
        ZpoScheduledTask expected{};
        std::strcpy(expected.path, "/qv/bin/CDRTransfer");
        std::memcpy(&expected.minute, c.fields, sizeof c.fields);
        for (const bool byRestore : {false, true}) {
            putPush("TranTime", c.time);
            putPush("TranDateOfMonth", c.dayOfMonth);
            putPush("TranDateOfWeek", c.dayOfWeek);
            platform.created.clear();
            platform.tasks = {listed(3)};
            platform.log.clear();
            byRestore ? restore() : (void)setType(c.type);
            if (byRestore && *c.type == '9') { // a type that a restore does not know disarms
                EXPECT_THAT(platform.tasks, IsEmpty());
                continue;
            }
            ASSERT_EQ(platform.created.size(), 1U);
            EXPECT_TRUE(same(platform.created.front(), expected)) << c.description;
            EXPECT_THAT(platform.log, ElementsAre(kDeleted, kScheduled + c.description));
            EXPECT_EQ(push("TranTime") + "|" + push("TranDateOfMonth") + "|" + push("TranDateOfWeek"), c.created);
        }
    }
}

TEST_F(PushScheduleTest, RemovesEveryTaskOfTheProgram) {
    for (const char* type : {"3", "4"}) {
        platform.tasks = {listed(1), listed(2, "/bin/true"), listed(3)};
        platform.deleted.clear();
        platform.forget();
        EXPECT_EQ(setType(type), "");
        EXPECT_EQ(setType(type), "") << "nothing is left to remove";
        EXPECT_THAT(platform.log, ElementsAre(kDeleted, kDeleted));
        ASSERT_EQ(platform.deleted.size(), 2U);
        EXPECT_TRUE(same(platform.deleted[0], listed(1)) && same(platform.deleted[1], listed(3)));
    }
}

TEST_F(PushScheduleTest, CallsThePlatformInOrder) {
    platform.tasks = {listed(1)};
    platform.fail("system", 256); // whatever it returns
    invoke(path(kPushSetting), "PushFileNow");
    EXPECT_EQ(set(kPushSetting, "TransferTime", "1:00"), "");
    EXPECT_THAT(platform.calls(),
                ElementsAre("system /qv/bin/CDRTransfer", "ZpoSetRegEntryString CDR/CDRPush/TranTime text 1:00",
                            "ZpoGetScheduledTaskList /qv/bin/CDRTransfer 1000",
                            "ZpoDeleteScheduledTaskEx 1000 1000 1000", "ZpoDiagAddLogEntry 41 " + kDeleted,
                            "ZpoDeallocateScheduledTaskList ", "ZpoSetScheduledTask 1000 1000 1000",
                            "ZpoDiagAddLogEntry 41 " + kScheduled + " Time=01:00 "));
}

// Of several deletions the last decides.
TEST_F(PushScheduleTest, FailsWhenTheLastDeletionFails) {
    for (const unsigned failing : {1U, 2U}) {
        platform.mend();
        platform.tasks = {listed(1), listed(3)};
        platform.created.clear();
        platform.forget();
        platform.fail("ZpoDeleteScheduledTaskEx", 99, "", failing);
        EXPECT_EQ(setType("0"), failing == 2 ? "1 607 CDRProvider " : "");
        EXPECT_EQ(platform.created.size(), failing == 2 ? 0U : 1U);
        EXPECT_THAT(platform.log.at(failing - 1), testing::MatchesRegex("2 1 -1 CDR: delete push task failed, rc=.*,"));
        EXPECT_EQ(platform.log.at(2),
                  failing == 2 ? "2 4 -1 CDR: push task Unsuccessful delete" : kScheduled + "PUSH_DAILY: Time=00:00 ");
    }
}

TEST_F(PushScheduleTest, FailsWhenTheTaskCannotBeCreated) {
    putPush("TranTime", "text 7:5");
    platform.tasks = {listed(1)};
    platform.fail("ZpoSetScheduledTask", 99);
    EXPECT_EQ(setType("0"), "1 607 CDRProvider ");
    EXPECT_EQ(platform.log.back(), "2 1 -1 CDR: schedule push task failed, PUSH_DAILY: Time=07:05 , rc=99");
    EXPECT_THAT(platform.tasks, IsEmpty()) << "the old task has gone before";
    restore(); // nothing leaves the callback
    EXPECT_THROW(object().RestoreCallBackHdlr(2), CFG_WriteError);
    platform.mend();
    platform.fail("ZpoGetScheduledTaskList", 99); // whose status does not count
    platform.fail("ZpoGetRegEntryString", ZPO_REG_DEVICE_ERROR, "TranTime");
    EXPECT_EQ(setType("0"), "");
    EXPECT_EQ(platform.created.back().hour, 0) << "a time that cannot be read is midnight";
    EXPECT_EQ(push("TranTime"), "text 7:5");
}

// Each re-arms by what the ones before left; the minute must not be lost on the way.
TEST_F(PushScheduleTest, ArmsByTheLatestChangeOfARequest) {
    modify(changed(kPushSetting, {{"TransferType", value("uint8", "2")},
                                  {"TransferTime", value("string", "4:56")},
                                  {"TransferDayOfMonth", value("string", "12")}}));
    EXPECT_EQ(platform.log.back(), kScheduled + "PUSH_MONTHLY: DayOfMonth=12, Time=04:56 ");
    modify(changed(kPushSetting, {{"TransferType", value("uint8", "3")}, {"TransferTime", value("string", "10:00")}}));
    EXPECT_EQ(platform.log.back(), kScheduled + " Time=10:00 ");
}

TEST_F(PushScheduleTest, ReportsARestoreWithoutATransferType) {
    platform.tasks = {listed(1)};
    EXPECT_EQ(object().RestoreCallBackHdlr(2), static_cast<int>(ZPO_REG_ENTRY_NOT_FOUND));
    EXPECT_EQ(platform.tasks.size(), 1U);
    putPush("TransferType", "bytes 04");
    EXPECT_EQ(object().RestoreCallBackHdlr(0), 0);
    EXPECT_THAT(platform.tasks, IsEmpty());
}

TEST_F(PushScheduleTest, GivesFixedValuesBesideAFailedRead) {
    QualifierArray qualifiers;
    unsigned char type = 0;
    unsigned int retries = 0;
    std::string text = "kept";
    EXPECT_EQ(setType("0"), "");
    platform.fail("ZpoGetRegEntryBinary", 5);
    platform.fail("ZpoGetRegEntryString", 5);
    EXPECT_THROW(object().getTransferType(type, qualifiers), CFG_ReadError);
    EXPECT_THROW(object().getNumRetry(retries, qualifiers), CFG_ReadError);
    EXPECT_THROW(object().getTransferTime(text, qualifiers), CFG_ReadError);
    EXPECT_EQ(std::make_tuple(type, retries, text), std::make_tuple(4, 1U, ""));
}

} // namespace
