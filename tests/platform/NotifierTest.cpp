// Backup and restore, told across processes.

#include "Home.hpp"

#include <atomic>

namespace {

using support::run;
using support::waitUntil;

std::atomic<int> backups{0};
std::atomic<int> restores{0};

void count(unsigned long event) {
    ++(event == ZPO_EVENT_BACKUP ? backups : restores);
}

void reset() {
    backups = restores = 0;
}

void expectNoMore(int wantedBackups, int wantedRestores) {
    EXPECT_TRUE(waitUntil([&] { return backups >= wantedBackups && restores >= wantedRestores; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    EXPECT_EQ(wantedBackups, backups);
    EXPECT_EQ(wantedRestores, restores);
}

TEST(Notifier, CallsOncePerEventOfAnyProcess) {
    const std::string file = kHome.dir / "backup";
    ASSERT_EQ(ZPO_OK, ZpoNotifyRegBackupAndRestore("both", count, 3));
    EXPECT_EQ(ZPO_OK, ZpoNotifyRegBackupAndRestore("both", count, 3)); // replaces, does not add
    reset();
    ASSERT_EQ(0, run({ZPOREG, "backup", file}).exitCode);
    ASSERT_EQ(0, run({ZPOREG, "restore", file}).exitCode);
    run({ZPOREG, "restore", file});
    run({ZPOREG, "restore", file});
    support::writeFile(kHome.dir / "broken", "# zpo registry backup 1\n");
    EXPECT_EQ(1, run({ZPOREG, "restore", kHome.dir / "broken"}).exitCode); // restores nothing
    expectNoMore(1, 3);
    ASSERT_EQ(ZPO_OK, ZpoNotifyRegBackupAndRestore("both", count, 1)); // the mask is replaced, too
    run({ZPOREG, "restore", file});
    run({ZPOREG, "backup", file});
    expectNoMore(2, 3);
}

TEST(Notifier, FollowsAStateDirectoryOrFileThatIsReplaced) {
    const std::string file = kHome.dir / "backup";
    ASSERT_EQ(ZPO_OK, ZpoNotifyRegBackupAndRestore("both", count, 3));
    reset();
    ASSERT_EQ(0, run({ZPOREG, "backup", file}).exitCode);
    EXPECT_TRUE(waitUntil([] { return backups == 1; }));
    reset();
    std::filesystem::remove_all(kHome.dir / "state");
    ASSERT_EQ(0, run({ZPOREG, "restore", file}).exitCode);
    expectNoMore(0, 1);
    const std::vector<std::string> elsewhere{"env", "ZPO_STATE_DIR=" + kHome.dir / "other", ZPOREG, "restore", file};
    ASSERT_EQ(0, run(elsewhere).exitCode + run(elsewhere).exitCode);
    std::filesystem::rename(kHome.dir / "other/registry.mdb", kHome.dir / "state/registry.mdb");
    expectNoMore(0, 3);
    std::filesystem::remove_all(kHome.dir / "state");
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(std::filesystem::exists(kHome.dir / "state")) << "watching must not create it";
}

long threadCount() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

// Exit handlers run last in, first out: the one set here comes after the library's own, which has ended its thread.
// What the child inherited and cannot free is not looked for.
int exitThroughHandlers(ZpoRegBackupAndRestoreCallback callback) {
    alarm(20);
    std::atexit([] { _exit(static_cast<int>(threadCount())); });
    if (ZpoNotifyRegBackupAndRestore("child", callback, 3) != ZPO_OK) {
        return 101;
    }
    if (callback == count) {
        std::exit(0);
    }
    run({ZPOREG, "backup", kHome.dir / "backup"});
    std::this_thread::sleep_for(std::chrono::seconds(10));
    return 102;
}

TEST(Notifier, EndsWithTheProcessAlsoFromACallbackInAForkedChild) {
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "ThreadSanitizer does not follow threads that a forked child starts";
#endif
    EXPECT_EQ(1, support::inChild([] { return exitThroughHandlers(count); }));
    const auto exits = [](unsigned long) { std::exit(0); }; // on the library's thread; the main one still sleeps
    EXPECT_EQ(2, support::inChild([&] { return exitThroughHandlers(exits); }));
}

TEST(Notifier, RefusesUnusableArguments) {
    const std::string longName(65, 'n');
    for (const char* name : std::initializer_list<const char*>{nullptr, "", longName.c_str()}) {
        EXPECT_EQ(ZPO_NOTIFY_BAD_ARGUMENT, ZpoNotifyRegBackupAndRestore(name, count, 2));
    }
    EXPECT_EQ(ZPO_NOTIFY_BAD_ARGUMENT, ZpoNotifyRegBackupAndRestore("n", nullptr, 2));
    for (const std::uint32_t events : {0U, 4U}) {
        EXPECT_EQ(ZPO_NOTIFY_BAD_ARGUMENT, ZpoNotifyRegBackupAndRestore("n", count, events));
    }
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "ThreadSanitizer does not follow threads that a forked child starts";
#endif
    const auto registerNames = [&] { // in a child: names are never given back
        for (int i = 0; i < 64; ++i) {
            const std::string name = std::to_string(i) + longName.substr(0, 62);
            if (ZpoNotifyRegBackupAndRestore(name.c_str(), count, 3) != ZPO_OK) {
                return 1;
            }
        }
        return ZpoNotifyRegBackupAndRestore("65th", count, 3) == ZPO_NOTIFY_TOO_MANY ? 0 : 2;
    };
    EXPECT_EQ(0, support::inChild(registerNames));
}

} // namespace
