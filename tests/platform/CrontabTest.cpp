// The crontab: what is edited, what stays, and where it is kept.

#include "CrontabBackend.hpp"
#include "CrontabTable.hpp"
#include "Support.hpp"

#include <sys/stat.h>

namespace {

using namespace zpo;
using support::TempDir;
using support::userName;

const CrontabTask kDaily{30, 8, "*", "*", ZPO_SCHED_ANY, "/qv/bin/CDRTransfer"};

TEST(CrontabTable, KeepsEveryForeignByte) {
    const std::string tables[] = {
        "",
        "# comment\nSHELL=/bin/sh\nMAILTO=\"\"\n\n0 1 * * * /bin/one\n",
        "# comment\n0 1 * * * /bin/last-line-without-its-end",
        "30 8 * * * '/qv/bin/CDRTransfer'\n", // the library would not quote it
        "*/5 8 * * * /qv/bin/CDRTransfer\n",
        "30 8 * * * /qv/bin/CDRTransfer --now\n",
        "30 8 * * mon /qv/bin/CDRTransfer\n",
        "30 8 * * 1-5 /qv/bin/CDRTransfer\n",
        "30 8 1,15 * * /qv/bin/CDRTransfer\n",
        "@daily /qv/bin/CDRTransfer\n#30 8 * * * /qv/bin/CDRTransfer\n",
        "30 8 * * * /qv/bin/CDRTransfer", // not a whole line
        "30 8  * * /qv/bin/CDRTransfer\n",
        " 30 8 * * * /qv/bin/CDRTransfer\n",
        "30 8 * * *\n30 8 * * * \n30 8 * * * qv\n",
        "30x 8 * * * /qv/bin/CDRTransfer\n65566 8 * * * /qv/bin/CDRTransfer\n",
        "30 8 * * * /qv/bin/CDRTransfer\\\n",
        "30 8 " + std::string(30, '1') + " * * /qv/bin/CDRTransfer\n", // longer than a record holds
        std::string("\0binary\xff\n", 9),
    };
    for (const std::string& before : tables) {
        CrontabTable table(before);
        EXPECT_TRUE(table.list(kDaily.path).empty()) << before;
        EXPECT_FALSE(table.remove(kDaily)) << before;
        table.add(kDaily);
        EXPECT_EQ(1U, table.list(kDaily.path).size()) << before;
        EXPECT_TRUE(table.remove(kDaily)) << before;
        EXPECT_EQ(before, table.text());
    }
}

TEST(CrontabTable, WritesLinesThatCronReads) {
    const std::pair<ZpoScheduledTask, const char*> cases[] = {
        {{"/qv/bin/CDRTransfer", 5, 7, 1024, 1024, 1024}, "5 7 * * * /qv/bin/CDRTransfer"},
        {{"/b", 0, 0, 31, 1024, 12}, "0 0 31 12 * /b"},
        {{"/b", 59, 23, 1024, 6, 1024}, "59 23 * * 6 /b"},
        {{"/b", 1024, 1024, 1024, 1024, 1024}, "* * * * * /b"},
        {{"/\x80\xff/._-+,:@=", 0, 0, 1024, 0, 1}, "0 0 * 1 0 /\x80\xff/._-+,:@="},
        {{"/it's $(here); x", 0, 0, 1, 1, 1}, "0 0 1 1 1 '/it'\\''s $(here); x'"},
    };
    for (const auto& [record, line] : cases) {
        CrontabTask task;
        ASSERT_EQ(ZPO_OK, taskFrom(record, task)) << line;
        CrontabTable table("");
        table.add(task);
        EXPECT_EQ(std::string(line) + "\n", table.text());
        EXPECT_TRUE(table.remove(task)) << line;
    }
}

TEST(CrontabTable, RefusesWhatCronWouldMisread) {
    const ZpoScheduledTask wrongFields[] = {
        {"/b", 60, 0, 1024, 1024, 1024}, {"/b", 0, 24, 1024, 1024, 1024},    {"/b", 0, 0, 0, 1024, 1024},
        {"/b", 0, 0, 32, 1024, 1024},    {"/b", 0, 0, 1024, 8, 1024},        {"/b", 0, 0, 1024, 1024, 0},
        {"/b", 0, 0, 1024, 1024, 13},    {"/b", 65535, 0, 1024, 1024, 1024},
    };
    CrontabTask task;
    for (const ZpoScheduledTask& record : wrongFields) {
        EXPECT_EQ(ZPO_SCHED_BAD_FIELD, taskFrom(record, task));
    }
    ZpoScheduledTask record{"", 0, 0, 1024, 1024, 1024};
    for (const char* path : {"", "relative", "/a\n* * * * * /b", "/a%b", "/a\tb", "/a\x7f"}) {
        std::snprintf(record.path, sizeof record.path, "%s", path);
        EXPECT_EQ(ZPO_SCHED_BAD_PATH, taskFrom(record, task)) << path;
    }
    std::fill(std::begin(record.path), std::end(record.path), '/');
    EXPECT_EQ(ZPO_SCHED_BAD_PATH, taskFrom(record, task));
}

TEST(CrontabTable, RemovesOnlyTheTaskThatMatchesInEveryField) {
    CrontabTable table("0 0 * * * /other\n");
    CrontabTask weekly = kDaily;
    weekly.dayOfWeek = "0";
    table.add(kDaily);
    table.add(weekly);
    table.add(kDaily);
    CrontabTask sunday = weekly;
    sunday.dayOfWeek = "7"; // names Sunday, too
    EXPECT_TRUE(table.remove(sunday));
    EXPECT_FALSE(table.remove(sunday));
    EXPECT_EQ(2U, table.list(kDaily.path).size());
    EXPECT_EQ(1U, table.list("/other").size());
    const CrontabTask others[] = {
        {31, 8, "*", "*", ZPO_SCHED_ANY, kDaily.path},
        {30, 9, "*", "*", ZPO_SCHED_ANY, kDaily.path},
        {30, 8, "1", "*", ZPO_SCHED_ANY, kDaily.path},
        {30, 8, "*", "1", ZPO_SCHED_ANY, kDaily.path},
        {30, 8, "*", "*", 8, kDaily.path},
        {30, 8, "*", "*", ZPO_SCHED_ANY, "/qv"},
    };
    for (std::size_t i = 0; i < std::size(others); ++i) {
        EXPECT_FALSE(table.remove(others[i])) << i;
    }
}

TEST(CrontabDirectory, ReplacesTheUsersFileAndTellsTheDaemon) {
    const TempDir dir;
    const auto backend = makeCrontabDirectory(dir.path());
    std::string text = "stale";
    EXPECT_EQ(ZPO_OK, backend->read(text)); // no file yet
    EXPECT_EQ("", text);
    support::writeFile(dir / userName(), "old\n");
    chmod((dir / userName()).c_str(), 0640);
    const bool isGiven = chown((dir / userName()).c_str(), 4711, 4711) == 0; // as root
    EXPECT_EQ(ZPO_OK, backend->write("new\n"));
    EXPECT_EQ("new\n", support::contentOf(dir / userName()));
    EXPECT_EQ(userName() + "\n", support::contentOf(dir / "cron.update"));
    EXPECT_EQ(std::filesystem::perms(0640), std::filesystem::status(dir / userName()).permissions());
    struct stat status {};
    EXPECT_TRUE(stat((dir / userName()).c_str(), &status) == 0 && (!isGiven || status.st_uid == 4711));
    const auto count = std::distance(std::filesystem::directory_iterator(dir.path()), {});
    EXPECT_EQ(2, count) << "no temporary file may stay";
    std::filesystem::remove(dir / userName());
    EXPECT_EQ(ZPO_OK, backend->write("first\n"));
    EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(dir / userName()).permissions());
    EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(dir / "cron.update").permissions());
}

TEST(CrontabDirectory, SaysWhatIsWrong) {
    const TempDir dir;
    std::string text;
    EXPECT_EQ(ZPO_SCHED_NOT_WRITABLE, makeCrontabDirectory(dir / "missing")->write("x\n"));
    const auto backend = makeCrontabDirectory(dir.path());
    EXPECT_EQ(ZPO_SCHED_TABLE_TOO_LARGE, backend->write(std::string(kMaxCrontabBytes + 1, '\n')));
    EXPECT_EQ(ZPO_OK, backend->write(std::string(kMaxCrontabBytes, '\n')));
    EXPECT_EQ(ZPO_OK, backend->read(text));
    std::filesystem::remove(dir / "cron.update");
    std::filesystem::create_directory(dir / "cron.update");
    EXPECT_EQ(ZPO_SCHED_NOT_WRITABLE, backend->write("x\n")) << "the daemon cannot be told";
    std::filesystem::remove(dir / "cron.update");
    support::writeFile(dir / userName(), std::string(kMaxCrontabBytes + 1, '\n'));
    EXPECT_EQ(ZPO_SCHED_TABLE_TOO_LARGE, backend->read(text));
    std::filesystem::remove(dir / userName());
    std::filesystem::create_directory(dir / userName());
    EXPECT_EQ(ZPO_SCHED_NOT_READABLE, backend->read(text));
    EXPECT_EQ(ZPO_SCHED_NOT_WRITABLE, backend->write("x\n"));
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(dir.path()), {})) << "no temporary file may stay";
    std::filesystem::remove(dir / userName());
    mkfifo((dir / userName()).c_str(), 0600); // stops nobody
    EXPECT_EQ(ZPO_SCHED_NOT_READABLE, backend->read(text));
    const auto isNameless = [&] {
        return setuid(54321) != 0 || makeCrontabDirectory("/")->read(text) == ZPO_SCHED_NO_USER ? 0 : 1;
    };
    EXPECT_EQ(0, support::inChild(isNameless));
}

// A crontab program that keeps its table beside itself and fails where a file tells it to.
class CrontabProgram : public ::testing::Test {
  protected:
    CrontabProgram() : path_(getenv("PATH")) {
        support::writeFile(dir_ / "crontab", "#!/bin/sh\n"
                                             "cd \"$(dirname \"$0\")\" || exit 9\n"
                                             "[ -e how ] && . ./how\n"
                                             "[ \"$1\" = - ] && { cat > table; exit 0; }\n"
                                             "[ -e table ] && exec cat table\n"
                                             "cat message >&2; exit 1\n");
        support::writeFile(dir_ / "message", "no crontab for root\n");
        chmod((dir_ / "crontab").c_str(), 0755);
        setenv("PATH", (dir_.path() + ":" + path_).c_str(), 1);
    }
    ~CrontabProgram() override { setenv("PATH", path_.c_str(), 1); }

    TempDir dir_;
    std::string path_;
};

TEST_F(CrontabProgram, ReadsAndReplacesTheTable) {
    const auto backend = makeCrontabProgram();
    std::string text;
    EXPECT_EQ(ZPO_OK, backend->read(text));
    support::writeFile(dir_ / "message", "crontab: can't open 'root': No such file or directory\n"); // BusyBox
    EXPECT_EQ(ZPO_OK, backend->read(text));
    EXPECT_EQ("", text);
    support::writeFile(dir_ / "message", "crontab: you (root) may not use it\n");
    EXPECT_EQ(ZPO_SCHED_NOT_READABLE, backend->read(text));
    const std::string large(200000, 'x'); // more than a pipe holds
    EXPECT_EQ(ZPO_OK, backend->write(large));
    EXPECT_EQ(ZPO_OK, backend->read(text));
    EXPECT_EQ(large + "\n", text) << "crontab wants the last line ended";
    EXPECT_EQ(ZPO_OK, backend->write(std::string(kMaxCrontabBytes - 1, 'x')));
    EXPECT_EQ(ZPO_OK, backend->read(text));
    EXPECT_EQ(ZPO_SCHED_TABLE_TOO_LARGE, backend->write(std::string(kMaxCrontabBytes, 'x')));
    std::signal(SIGCHLD, SIG_IGN); // a host that reaps its children itself
    EXPECT_EQ(ZPO_OK, backend->read(text));
    std::signal(SIGCHLD, SIG_DFL);
}

TEST_F(CrontabProgram, MayFailHangOrPrintRubbishAndNeverGivesAnEmptyTable) {
    const auto backend = makeCrontabProgram();
    std::string text;
    EXPECT_EQ(ZPO_OK, backend->write("kept\n"));
    const std::tuple<const char*, std::uint32_t, std::uint32_t> programs[] = {
        {"echo 'crontab: permission denied' >&2; exit 1", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
        {"exec sleep 60", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
        {"exec yes", ZPO_SCHED_TABLE_TOO_LARGE, ZPO_SCHED_TABLE_TOO_LARGE},
        {"exec yes >&2", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
        {"sleep 60 & echo '* * * * * /bin/one'; exit", ZPO_OK, ZPO_OK},
        {"echo 'no crontab for you' >&2; exit 1", ZPO_OK, ZPO_SCHED_NOT_WRITABLE},
        {"head -c 3000 /dev/urandom; kill -SEGV $$", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
    };
    for (const auto& [how, read, write] : programs) {
        support::writeFile(dir_ / "how", how);
        EXPECT_EQ(read, backend->read(text)) << how;
        EXPECT_EQ(write, backend->write(std::string(500000, '\n'))) << how;
    }
    EXPECT_EQ("kept\n", support::contentOf(dir_ / "table"));
    setenv("PATH", "/nowhere", 1);
    EXPECT_EQ(ZPO_SCHED_NO_PROGRAM, backend->read(text));
}

} // namespace
