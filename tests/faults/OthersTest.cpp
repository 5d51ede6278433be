// What other users and programs do to queues and crontabs.
#include "CrontabBackend.hpp"
#include "Home.hpp"
#include "osa.h"

#include <fstream>
#include <sys/msg.h>
#include <sys/stat.h>

namespace {

/// As another user of the same group.
std::uint32_t asOther(const std::function<std::uint32_t()>& work) {
    return static_cast<std::uint32_t>(
        support::inChild([&] { return setuid(65534) == 0 ? static_cast<int>(work() & 0xffU) : 255; }));
}

std::uint32_t low(std::uint32_t status) {
    return status & 0xffU; // what fits an exit code
}

TEST(Queue, IsFoundAgainAfterAnotherUserMadeItAnew) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    umask(0);
    chmod(kHome.dir.path().c_str(), 0777);
    std::uint32_t id = 0;
    std::uint32_t again = 0;
    ASSERT_EQ(OSA_OK, osQueueCreate("Shared", &id));
    chmod((kHome.dir / "state/queues").c_str(), 0777);
    EXPECT_EQ(low(OSA_NO_ACCESS), asOther([&] { return osQueueDelete(id); }));
    EXPECT_EQ(0, msgctl(static_cast<int>(id), IPC_RMID, nullptr));
    EXPECT_EQ(OSA_OK, asOther([&] { return osQueueCreate("Shared", &again); }));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueSend(id, "0", 1));
    ASSERT_EQ(OSA_OK, osQueueGetId("Shared", &again));
    EXPECT_EQ(OSA_OK, osQueueSend(again, "0", 1));
    EXPECT_EQ(OSA_OK, osQueueDelete(again));
}

TEST(Queue, AForeignQueueUnderAnOldIdIsNoObstacle) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    const int foreign = msgget(IPC_PRIVATE, 0600);
    support::writeFile(kHome.dir / "state/queues/Old", std::to_string(foreign) + " 4711 1\n");
    std::uint32_t id = 0;
    EXPECT_EQ(low(OSA_QUEUE_NOT_FOUND), asOther([&] { return osQueueGetId("Old", &id); }));
    EXPECT_EQ(OSA_OK, asOther([&] {
                  const std::uint32_t status = osQueueCreate("Old", &id);
                  return status == OSA_OK ? osQueueDelete(id) : status;
              }));
    msgctl(foreign, IPC_RMID, nullptr);
}

struct Program {
    const char* script;
    std::uint32_t read, write;
};

TEST(CrontabProgram, MayFailHangOrPrintRubbish) {
    const support::TempDir dir;
    const std::string path = getenv("PATH");
    setenv("PATH", (dir.path() + ":" + path).c_str(), 1);
    const auto backend = zpo::makeCrontabProgram();
    for (const Program& program : std::vector<Program>{
             {"exec sleep 60", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
             {"exec yes", ZPO_SCHED_TABLE_TOO_LARGE, ZPO_SCHED_TABLE_TOO_LARGE},
             {"exec yes >&2", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
             {"sleep 60 & echo '* * * * * /bin/one'", ZPO_OK, ZPO_OK},
             {"head -c 3000 /dev/urandom; kill -SEGV $$", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
             {"exec 0<&-; head -c 3000 /dev/urandom", ZPO_OK, ZPO_OK},
             {"echo /nothing >&2; exit 1", ZPO_SCHED_NOT_READABLE, ZPO_SCHED_NOT_WRITABLE},
         }) {
        SCOPED_TRACE(program.script);
        support::writeFile(dir / "crontab", std::string("#!/bin/sh\n") + program.script + "\n");
        chmod((dir / "crontab").c_str(), 0755);
        std::string table;
        EXPECT_EQ(program.read, backend->read(table));
        EXPECT_LE(table.size(), zpo::kMaxCrontabBytes);
        EXPECT_EQ(program.write, backend->write(std::string(500000, '\n')));
    }
    setenv("PATH", path.c_str(), 1);
}

} // namespace
