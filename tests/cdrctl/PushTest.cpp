// When a push runs, and why it does not.
#include "Support.hpp"
#include "cdrctl/Device.hpp"
#include "cdrctl/PushWhy.hpp"
#include "cdrctl/Schedule.hpp"

namespace {

using namespace cdrctl;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A time in UTC, which the tests take for local: "2026-11-22 08:30".
std::time_t at(const char* text) {
    setenv("TZ", "UTC", 1);
    tzset();
    std::tm parts{};
    EXPECT_NE(strptime(text, "%Y-%m-%d %H:%M", &parts), nullptr) << text;
    return timegm(&parts);
}

Schedule schedule(int type, const char* time, const char* dayOfWeek = "", const char* dayOfMonth = "") {
    return {type, time, dayOfWeek, dayOfMonth};
}

TEST(Schedule, RunsOnItsDays) {
    struct Case {
        Schedule settings;
        const char* now;
        const char* previous;
        const char* next;
        const char* fields;
    };
    const Case cases[] = {
        // 2026-11-22 is a Sunday
        {schedule(0, "08:30"), "2026-11-22 08:29", "2026-11-21 08:30", "2026-11-22 08:30", "30 8 * * *"},
        {schedule(0, "8:30"), "2026-11-22 08:30", "2026-11-22 08:30", "2026-11-23 08:30", "30 8 * * *"},
        {schedule(0, ""), "2026-12-31 12:00", "2026-12-31 00:00", "2027-01-01 00:00", "0 0 * * *"},
        {schedule(1, "8:30", "0"), "2026-11-22 09:00", "2026-11-22 08:30", "2026-11-29 08:30", "30 8 * * 7"},
        {schedule(1, "8:30", ""), "2026-11-23 09:00", "2026-11-22 08:30", "2026-11-29 08:30", "30 8 * * 7"},
        {schedule(1, "8:30", "3"), "2026-11-22 09:00", "2026-11-18 08:30", "2026-11-25 08:30", "30 8 * * 3"},
        {schedule(2, "2:00", "", "31"), "2026-11-22 09:00", "2026-10-31 02:00", "2026-12-31 02:00", "0 2 31 * *"},
        {schedule(2, "2:00", "", "29"), "2026-02-01 00:00", "2026-01-29 02:00", "2026-03-29 02:00", "0 2 29 * *"},
    };
    for (const Case& one : cases) {
        const std::time_t now = at(one.now);
        EXPECT_EQ(one.settings.next(now), at(one.next)) << one.settings.inWords() << one.now;
        EXPECT_EQ(one.settings.previous(now), at(one.previous)) << one.settings.inWords() << one.now;
        EXPECT_EQ(one.settings.cronFields(), one.fields);
    }
    for (const Schedule& none :
         {schedule(3, "8:30"), schedule(4, "8:30"), schedule(0, "24:00"), schedule(1, "8:30", "9"),
          schedule(2, "8:30", "", ""), schedule(2, "8:30", "", "32")}) {
        EXPECT_EQ(none.next(at("2026-11-22 00:00")), std::nullopt) << none.inWords();
    }
}

TEST(Schedule, ReadsTheTimeOfATransfer) {
    EXPECT_EQ(timeOf("20261122083000.000000+060"), at("2026-11-22 07:30"));
    EXPECT_EQ(timeOf("20261122083000.000000-300"), at("2026-11-22 13:30"));
    for (const char* none : {"00000000000000.000000:000", "00000000000000.000000+000", "20261122083000", ""}) {
        EXPECT_EQ(timeOf(none), std::nullopt) << none;
    }
}

/// Weekly on Sunday, all in order, an hour after it ran.
PushFacts healthy() {
    PushFacts facts;
    facts.schedule = schedule(1, "8:30", "0");
    facts.address = "files.example";
    facts.now = at("2026-11-22 09:30");
    facts.lastTransfer = at("2026-11-22 08:31");
    facts.device =
        DeviceFacts{{{"root", {"30 8 * * 7 /qv/bin/CDRTransfer"}, "", false}}, "cron", kTransferProgram, "", {}, {}};
    return facts;
}

/// "SOURCE: TEXT" of each problem.
std::vector<std::string> problems(const PushFacts& facts) {
    std::vector<std::string> texts;
    for (const Finding& finding : explainPush(facts)) {
        if (finding.weight == Weight::Problem) {
            texts.push_back(finding.source + ": " + finding.text);
        }
    }
    return texts;
}

TEST(PushWhy, NamesWhatKeepsAPushFromRunning) {
    EXPECT_THAT(problems(healthy()), ElementsAre());
    struct Case {
        const char* reason;
        std::function<void(PushFacts&)> change;
    };
    const Case cases[] = {
        {"settings: the transfer type is 4 (No transfer)",
         [](PushFacts& f) { f.schedule.type = 4, f.typeLabel = "No transfer", f.device->crontabs[0].lines = {}; }},
        {"settings: the settings cannot be read", [](PushFacts& f) { f.schedule.type.reset(); }},
        {"settings: the push cannot be scheduled: no day of the month",
         [](PushFacts& f) { f.schedule.type = 2, f.device->crontabs[0].lines = {}; }},
        {"settings: no server is set", [](PushFacts& f) { f.address = ""; }},
        {"crontab: the crontab of root has no line", [](PushFacts& f) { f.device->crontabs[0].lines = {}; }},
        {"crontab: the crontab of root says \"30 8 * * 3 ",
         [](PushFacts& f) { f.device->crontabs[0].lines = {"30 8 * * 3 /qv/bin/CDRTransfer"}; }},
        {"which BusyBox's crond ignores", [](PushFacts& f) { f.device->cron = "busybox crond"; }},
        {"cron: no cron daemon runs", [](PushFacts& f) { f.device->cron = ""; }},
        {"program: /qv/bin/CDRTransfer is missing", [](PushFacts& f) { f.device->program = ""; }},
        {"transfer: the last run failed: login refused",
         [](PushFacts& f) {
             f.device->transfer = TransferStatus{{"failed"}, "the last run failed: login refused"};
         }},
        {"statistics: a push was due Sun 2026-11-22 08:30",
         [](PushFacts& f) { f.lastTransfer = at("2026-11-15 08:31"), f.device.reset(); }},
    };
    for (const Case& one : cases) {
        PushFacts facts = healthy();
        one.change(facts);
        EXPECT_THAT(problems(facts), ElementsAre(HasSubstr(one.reason))) << one.reason;
    }
}

TEST(PushWhy, SaysThatTodayIsNotTheDay) {
    PushFacts facts = healthy();
    facts.now = at("2026-11-24 09:00");
    EXPECT_THAT(problems(facts), ElementsAre());
    EXPECT_THAT(explainPush(facts)[1].text, HasSubstr("the next is Sun 2026-11-29 08:30"));
    facts.lastTransfer = at("2026-11-21 08:31"); // before the run that was due
    facts.device->log = {{"CdrOAM.log", "2026-11-23T10:00:00.000+00:00 CDR: push task scheduled successfully"}};
    EXPECT_THAT(problems(facts), ElementsAre()) << "the schedule is newer than that";
}

TEST(Device, IsSeenAsItIs) {
    const support::TempDir home;
    for (const char* folder : {"proc/1", "proc/77", "crontabs", "log"}) {
        std::filesystem::create_directories(home / folder);
    }
    support::writeFile(home / "proc/1/cmdline", std::string("/sbin/init\0", 11));
    support::writeFile(home / "proc/77/cmdline", std::string("/bin/busybox\0crond\0-f\0", 22));
    support::writeFile(home / "crontabs/op", "# CDRTransfer\n0 2 * * * /qv/bin/CDRTransfer\n1 1 * * * /bin/other");
    support::writeFile(home / "log/CdrOAM.log", "push task scheduled\nControlCharacters Found in PDR:Push-x\nother\n");
    support::writeFile(home / "transfer",
                       "#!/bin/sh\ncase $2 in --json) echo '{\"last_run\":{\"state\":\"failed\",\"reason\":null,"
                       "\"failures\":[{\"reason\":\"login refused\"}]}}';; *) echo failed;; esac\n");
    const auto look = [&] { return lookAround({home / "proc", home / "crontabs", home / "log", home / "transfer"}); };
    EXPECT_EQ(look().programProblem, "it is not executable");
    std::filesystem::permissions(home / "transfer", std::filesystem::perms::owner_all);
    const DeviceFacts facts = look();
    EXPECT_EQ(facts.cron, "busybox crond");
    ASSERT_EQ(facts.crontabs.size(), 1U);
    EXPECT_THAT(facts.crontabs[0].lines, ElementsAre("0 2 * * * /qv/bin/CDRTransfer"));
    ASSERT_TRUE(facts.transfer.has_value());
    EXPECT_EQ(facts.transfer->problem, "the last run failed: login refused");
    ASSERT_EQ(facts.log.size(), 1U);
    EXPECT_EQ(facts.log[0].text, "push task scheduled");
}

} // namespace
