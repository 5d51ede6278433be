// What other users do to queues.
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

} // namespace
