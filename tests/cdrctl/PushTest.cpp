// When a push runs, and why it does not.
#include "Support.hpp"
#include "cdrctl/Device.hpp"
#include "cdrctl/PushWhy.hpp"
#include "cdrctl/Schedule.hpp"

#include <pwd.h>

extern "C" passwd* getpwuid(uid_t /*user*/) { // in place of the C library's
    static char name[] = "op;id";
    static passwd entry{name, name, 0, 0, name, name, name};
    return &entry;
}

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

TEST(Schedule, IsToldInWords) {
    const std::pair<Schedule, const char*> schedules[] = {
        {schedule(0, "8:05"), "every day at 08:05;"},
        {schedule(1, "23:59", "7"), "every Sunday at 23:59;"},
        {schedule(1, "0:00", "1"), "every Monday at 00:00;"},
        {schedule(1, "0:00", "8"), "every Monday at 00:00;'8' is no day of the week"},
        {schedule(2, "1:00", "", "1"), "on day 1 of each month at 01:00;"},
        {schedule(2, "1:00", "", "31"), "on day 31 of each month at 01:00;"},
        {schedule(2, "1:00", "", "0"), "on day 0 of each month at 01:00;'0' is no day of a month"},
        {schedule(2, "1:00", "", ""), "on day 0 of each month at 01:00;no day of the month is set"},
        {schedule(0, "24:00"), "every day at 24:00;'24:00' is no time of day"},
    };
    for (const auto& [one, words] : schedules) {
        EXPECT_EQ(words, one.inWords() + ";" + one.problem());
    }
    const std::pair<std::time_t, const char*> distances[] = {
        {0, "just now"},      {1, "in less than a minute"}, {59, "in less than a minute"},
        {60, "in 1 minute"},  {3599, "in 59 minutes"},      {3600, "in 1 hour"},
        {7200, "in 2 hours"}, {86399, "in 23 hours"},       {86400, "in 1 day"},
        {-59, "just now"},    {-120, "2 minutes ago"},      {-172800, "2 days ago"}};
    for (const auto& [distance, words] : distances) {
        EXPECT_EQ(words, distanceText(1000000, 1000000 + distance));
    }
    const Schedule leap = schedule(2, "2:00", "", "31");
    EXPECT_EQ(leap.next(at("2026-07-31 02:00")), at("2026-08-31 02:00"));
    EXPECT_EQ(leap.next(at("2027-12-31 02:00")), at("2028-01-31 02:00"));
    EXPECT_EQ(leap.previous(at("2026-08-31 01:59")), at("2026-07-31 02:00"));
}

TEST(Schedule, ReadsTheTimeOfATransfer) {
    EXPECT_EQ(timeOf("20261122083000.000000+060"), at("2026-11-22 07:30"));
    EXPECT_EQ(timeOf("20261122083000.000000-300"), at("2026-11-22 13:30"));
    for (const char* none :
         {"00000000000000.000000:000", "00000000000000.000000+000", "20261122083000", "", "20261122083000.000000 060",
          "20261122083000.000000+06", "20261122083000.000000+0600", "20261122083000.000000+xyz"}) {
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

/// All findings, one a line, and the advice below it.
std::string findings(const std::string& title, const PushFacts& facts) {
    std::string text = "== " + title + "\n";
    for (const Finding& finding : explainPush(facts)) {
        text += (finding.weight == Weight::Problem ? "! " : "  ") + finding.source + ": " + finding.text + "\n" +
                (finding.advice.empty() ? "" : "    -> " + finding.advice + "\n");
    }
    return text;
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
    std::string all = findings("healthy", healthy());
    for (const Case& one : cases) {
        PushFacts facts = healthy();
        one.change(facts);
        EXPECT_THAT(problems(facts), ElementsAre(HasSubstr(one.reason))) << one.reason;
        all += findings(one.reason, facts);
    }
    const Case more[] = {
        {"the registry fails", [](PushFacts& f) { f.schedule.type.reset(), f.unreadable = "general error"; }},
        {"no push, and yet a line", [](PushFacts& f) { f.schedule.type = 3; }},
        {"a bad time", [](PushFacts& f) { f.schedule.time = "8:60"; }},
        {"Sunday as 0", [](PushFacts& f) { f.device->crontabs[0].lines = {"30 8 * * 0 /qv/bin/CDRTransfer"}; }},
        {"daily at the wrong time", [](PushFacts& f) { f.schedule.type = 0; }},
        {"a longer number", [](PushFacts& f) { f.device->crontabs[0].lines = {"30 8 * * 70 /qv/bin/CDRTransfer"}; }},
        {"no line and not readable",
         [](PushFacts& f) {
             f.device->crontabs = {{"root", {}, "only root", true}};
         }},
        {"a broken table",
         [](PushFacts& f) {
             f.device->crontabs = {{"root", {}, "Input/output error", false}};
         }},
        {"no tables", [](PushFacts& f) { f.device->crontabs = {}; }},
        {"not executable", [](PushFacts& f) { f.device->programProblem = "it is not executable"; }},
        {"a day that some months lack",
         [](PushFacts& f) {
             f.schedule = schedule(2, "8:30", "", "29"), f.now = f.lastTransfer.emplace(f.now), f.device.reset();
         }},
        {"a day that all months have",
         [](PushFacts& f) { f.schedule = schedule(2, "8:30", "", "28"), f.device.reset(); }},
        {"a day ahead", [](PushFacts& f) { f.now = at("2026-11-28 08:30"); }},
        {"more than a day ahead", [](PushFacts& f) { f.now = at("2026-11-28 08:29"); }},
        {"within the grace",
         [](PushFacts& f) { f.lastTransfer = at("2026-11-15 08:31"), f.now = at("2026-11-22 08:39"); }},
        {"at the end of the grace",
         [](PushFacts& f) { f.lastTransfer = at("2026-11-15 08:31"), f.now = at("2026-11-22 08:40"); }},
        {"scheduled since",
         [](PushFacts& f) {
             f.lastTransfer = at("2026-11-15 08:31");
             f.device->log = {{"CdrOAM.log", "2026-11-22T08:31:00.000+00:00 CDR: push task scheduled successfully"}};
         }},
        {"scheduled before",
         [](PushFacts& f) {
             f.lastTransfer = at("2026-11-15 08:31");
             f.device->log = {{"CdrOAM.log", "2026-11-22T08:29:00.000+00:00 CDR: push task scheduled successfully"},
                              {"CdrOAM.log", "2026-11-22T08:39:00.000+00:00 CDR: something else"}};
         }},
        {"never", [](PushFacts& f) { f.lastTransfer.reset(); }},
    };
    for (const Case& one : more) {
        PushFacts facts = healthy();
        one.change(facts);
        all += findings(one.reason, facts);
    }
    support::expectGolden(FINDINGS, all);
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

class Device : public testing::Test {
  protected:
    Device() {
        for (const char* folder : {"proc/1", "proc/77", "proc/self", "crontabs/folder", "log"}) {
            std::filesystem::create_directories(home_ / folder);
        }
        runs("1", std::string("/sbin/init\0", 11));
        runs("self", std::string("/usr/sbin/cron\0", 15)); // no process
    }
    void runs(const std::string& process, const std::string& line) const {
        support::writeFile(home_ / "proc/" + process + "/cmdline", line);
    }
    /// The transfer program, which answers to --json.
    void tells(const std::string& json) const {
        support::writeFile(home_ / "transfer",
                           "#!/bin/sh\ncase $2 in --json) echo '" + json + "';; *) echo failed;; esac\n");
        std::filesystem::permissions(home_ / "transfer", std::filesystem::perms::owner_all);
    }
    DeviceFacts look() const {
        return lookAround({home_ / "proc", home_ / "crontabs", home_ / "log", home_ / "transfer"});
    }

    support::TempDir home_;
};

TEST_F(Device, IsSeenAsItIs) {
    const std::string words = std::string("/bin/busybox\0crond\0-f\0", 22);
    runs("77", words);
    support::writeFile(home_ / "crontabs/op", "# CDRTransfer\n0 2 * * * /qv/bin/CDRTransfer\n1 1 * * * /bin/other");
    support::writeFile(home_ / "crontabs/.hidden", "0 2 * * * /qv/bin/CDRTransfer");
    support::writeFile(home_ / "crontabs/cron.update", "op");
    support::writeFile(home_ / "log/CdrOAM.log",
                       "push task scheduled\nControlCharacters Found in PDR:Push-x\nother\nTransfer\nParse Error\n");
    support::writeFile(home_ / "log/ZpoShared.log", "1\n2\n3 ControlCharacters Found\n4\n5\n6\n7\n");
    support::writeFile(home_ / "transfer", "");
    EXPECT_EQ(look().programProblem, "it is not executable");
    tells(R"({"last_run":{"state":"failed","reason":null,"failures":[{"reason":"login refused"}]}})");
    const DeviceFacts facts = look();
    EXPECT_EQ(facts.cron, "busybox crond");
    ASSERT_EQ(facts.crontabs.size(), 1U);
    EXPECT_EQ("op", facts.crontabs[0].user);
    EXPECT_EQ("", facts.crontabs[0].problem);
    EXPECT_THAT(facts.crontabs[0].lines, ElementsAre("0 2 * * * /qv/bin/CDRTransfer"));
    EXPECT_EQ("", facts.programProblem);
    ASSERT_TRUE(facts.transfer.has_value());
    EXPECT_THAT(facts.transfer->lines, ElementsAre("failed"));
    EXPECT_EQ(facts.transfer->problem, "the last run failed: login refused");
    std::string log;
    for (const LogLine& line : facts.log) {
        log += line.file.substr(0, 1) + line.text + ";";
    }
    EXPECT_EQ("Z3 ControlCharacters Found;Z4;Z5;Z6;Z7;Cpush task scheduled;CTransfer;CParse Error;", log);
}

TEST_F(Device, IsSeenWithWhatIsMissing) {
    std::filesystem::remove_all(home_ / "crontabs");
    std::filesystem::create_symlink("transfer", home_ / "transfer"); // leads nowhere
    const DeviceFacts bare = look();
    EXPECT_EQ("", bare.cron + bare.program + bare.programProblem);
    EXPECT_FALSE(bare.transfer.has_value());
    ASSERT_EQ(1U, bare.crontabs.size());
    EXPECT_EQ(support::userName(), bare.crontabs[0].user);
    EXPECT_THAT(bare.crontabs[0].problem, testing::EndsWith("crontabs: No such file or directory"));
    runs("77", std::string("/usr/sbin/crond\0-n\0", 19));
    EXPECT_EQ("crond", look().cron);
    std::filesystem::create_symlink("/bin/busybox", home_ / "proc/77/exe");
    EXPECT_EQ("busybox crond", look().cron) << "under the name of its applet";
    runs("77", std::string("/usr/sbin/cimserverd\0", 21));
    EXPECT_EQ("", look().cron);
    std::filesystem::create_directories(home_ / "proc/77/root" + home_.path());
    std::filesystem::create_symlink("/bin/true", home_ / "proc/77/root" + home_.path() + "/transfer");
    EXPECT_EQ(home_ / "proc/77/root" + home_.path() + "/transfer", look().program) << "where the server sees it";
    EXPECT_FALSE(look().transfer.has_value()) << "it tells nothing";
    if (chown((home_ / "proc/77").c_str(), 77, 77) == 0) { // as root: its table is asked for by a command
        EXPECT_THAT(lookAround({home_ / "proc", "", home_.path(), ""}).crontabs[0].problem, HasSubstr("characters"));
    }
}

TEST_F(Device, TellsWhyTheLastRunFailed) {
    const std::pair<const char*, const char*> answers[] = {
        {R"({"a":1,"settings":{"problem":null},"last_run":{"state":"succeeded","reason":"x","failures":[]}})", ""},
        {R"({"settings":{"problem":"bad"},"last_run":{"state":"running","reason":"x"}})", "bad"},
        {R"({"last_run":{"state":"failed","reason":"x","failures":[{"reason":"y"}]}})", "the last run failed: x"},
        {R"({"last_run":{"state":"failed","reason":"","failures":[]}})", "the last run failed: "},
        {R"({"last_run":{"state":"failed","failures":1}})", "the last run failed: "},
        {"no JSON", ""},
    };
    for (const auto& [json, problem] : answers) {
        tells(json);
        EXPECT_EQ(problem, look().transfer->problem) << json;
    }
}

} // namespace
