// A task armed through the library is run by a real cron daemon: BusyBox's, as root. Takes up to two minutes.

#include "Home.hpp"

#include <cstdio>
#include <sys/stat.h>

const Home kHome;

namespace {

TEST(Cron, RunsAnArmedTask) {
    if (getenv("CDR_SKIP_CRON") != nullptr || geteuid() != 0 ||
        support::run({"busybox", "crond", "--help"}).exitCode == 127) {
        GTEST_SKIP() << "needs root and BusyBox's crond, and CDR_SKIP_CRON unset";
    }
    std::filesystem::create_directories(kHome.dir / "crontabs");
    chmod(kHome.dir.path().c_str(), 0755);
    ZpoScheduledTask task{"", 1024, 1024, 1024, 1024, 1024};
    std::snprintf(task.path, sizeof task.path, "%s/it's armed", kHome.dir.path().c_str());
    support::writeFile(task.path, "#!/bin/sh\ntouch \"$(dirname \"$0\")/ran\"\n");
    chmod(task.path, 0755);
    // A daemon already running must take the change up, so it is started before the task is armed.
    const pid_t daemon = support::startChild([] {
        return support::become({"busybox", "crond", "-f", "-L", kHome.dir / "crond.log", "-c", kHome.dir / "crontabs"});
    });
    EXPECT_EQ(ZPO_OK, ZpoSetScheduledTask(task, 1000, 1000, 1000));
    EXPECT_TRUE(
        support::waitUntil([] { return std::filesystem::exists(kHome.dir / "ran"); }, std::chrono::seconds(130)))
        << support::contentOf(kHome.dir / "crond.log");
    kill(daemon, SIGTERM);
    support::waitForChild(daemon);
}

} // namespace
