// What other users and programs do to queues and crontabs.
#include "CrontabBackend.hpp"
#include "Home.hpp"
#include "osa.h"

#include <sys/msg.h>
#include <sys/stat.h>

namespace {

/// As another user of the same group; the status's last byte.
std::uint32_t asOther(const std::function<std::uint32_t()>& work) {
    return static_cast<std::uint32_t>(
        support::inChild([&] { return setuid(65534) == 0 ? static_cast<int>(work() & 0xffU) : 255; }));
}

TEST(Queue, IsMadeAnewByAnotherUser) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    umask(0);
    chmod(kHome.dir.path().c_str(), 0777);
    std::uint32_t id = 0;
    std::uint32_t again = 0;
    ASSERT_EQ(OSA_OK, osQueueCreate("Shared", &id));
    EXPECT_EQ(OSA_NO_ACCESS & 0xffU, asOther([&] { return osQueueDelete(id); }));
    EXPECT_EQ(0, msgctl(static_cast<int>(id), IPC_RMID, nullptr));
    chmod((kHome.dir / "state/queues").c_str(), 0777);
    EXPECT_EQ(OSA_OK, asOther([&] { return osQueueCreate("Shared", &again); }));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueSend(id, "0", 1));
    ASSERT_EQ(OSA_OK, osQueueGetId("Shared", &again));
    EXPECT_EQ(OSA_OK, osQueueSend(again, "0", 1));
    EXPECT_EQ(OSA_OK, osQueueDelete(again));
    const int foreign = msgget(IPC_PRIVATE, 0600); // has got the id of a queue that is gone
    support::writeFile(kHome.dir / "state/queues/Old", std::to_string(foreign) + " 4711 1\n");
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND & 0xffU, asOther([&] { return osQueueGetId("Old", &id); }));
    EXPECT_EQ(OSA_OK, asOther([&] { return osQueueCreate("Old", &id) + osQueueDelete(id); }));
    msgctl(foreign, IPC_RMID, nullptr);
}

TEST(CrontabProgram, MayHangOrPrintRubbish) {
    const support::TempDir dir;
    const std::string path = getenv("PATH");
    setenv("PATH", (dir.path() + ":" + path).c_str(), 1);
    const auto backend = zpo::makeCrontabProgram();
    const std::vector<std::tuple<const char*, std::uint32_t, std::uint32_t>> programs = {
        {"exec sleep 60", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
        {"exec yes", ZPO_SCHED_TABLE_TOO_LARGE, ZPO_SCHED_TABLE_TOO_LARGE},
        {"exec yes >&2", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
        {"sleep 60 & echo '* * * * * /bin/one'", ZPO_OK, ZPO_OK},
        {"head -c 3000 /dev/urandom; kill -SEGV $$", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
    };
    for (const auto& [script, read, write] : programs) {
        SCOPED_TRACE(script);
        support::writeFile(dir / "crontab", std::string("#!/bin/sh\n") + script + "\n");
        chmod((dir / "crontab").c_str(), 0755);
        std::string table;
        EXPECT_EQ(read, backend->read(table));
        EXPECT_EQ(write, backend->write(std::string(500000, '\n')));
    }
    setenv("PATH", path.c_str(), 1);
}

} // namespace
