// Message queues between processes.

#include "Home.hpp"
#include "osa.h"

#include <sched.h>
#include <sys/msg.h>
#include <sys/resource.h>

namespace {

// Deletes its queue at the end: kernel queues outlive the test.
struct Queue {
    explicit Queue(const char* name) { EXPECT_EQ(OSA_OK, osQueueCreate(name, &id)); }
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;
    ~Queue() { osQueueDelete(id); }

    std::uint32_t id = 0;
};

std::string receive(std::uint32_t id, std::int32_t timeoutMs = 0) {
    char buffer[64];
    std::uint32_t length = 0;
    const std::uint32_t status = osQueueReceive(id, buffer, sizeof buffer, &length, timeoutMs);
    return status == OSA_OK ? std::string(buffer, length) : std::to_string(status);
}

TEST(Queue, AnIdMeansTheSameQueueInEveryProcess) {
    const Queue queue("Same");
    EXPECT_EQ(0, support::inChild([&] {
                  std::uint32_t found = 0;
                  osQueueGetId("Same", &found);
                  return found == queue.id && osQueueSend(found, "by id", 5) == OSA_OK ? 0 : 1;
              }));
    std::uint32_t again = 0;
    EXPECT_EQ(OSA_OK, osQueueCreate("Same", &again)); // a restarted owner
    EXPECT_EQ(queue.id, again);
    EXPECT_EQ("by id", receive(again));
    EXPECT_EQ(std::to_string(OSA_TIMEOUT), receive(again));
}

TEST(Queue, SendingNeverBlocks) {
    const Queue queue("Full");
    const std::string message(OSA_MAX_MESSAGE, 'x');
    std::uint32_t status = OSA_OK;
    for (int i = 0; i < 1000 && status == OSA_OK; ++i) {
        status = osQueueSend(queue.id, message.data(), OSA_MAX_MESSAGE);
    }
    EXPECT_EQ(OSA_QUEUE_FULL, status);
    char small[8];
    std::uint32_t length = 0;
    EXPECT_EQ(OSA_BUFFER_TOO_SMALL, osQueueReceive(queue.id, small, sizeof small, &length, 0));
}

TEST(Queue, WaitsForAMessageButNotLonger) {
    const Queue queue("Wait");
    EXPECT_EQ(std::to_string(OSA_TIMEOUT), receive(queue.id, 60));
    for (const std::int32_t timeout : {5000, -1}) {
        std::thread sender([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            osQueueSend(queue.id, "1", 1);
        });
        EXPECT_EQ("1", receive(queue.id, timeout));
        sender.join();
    }
}

TEST(Queue, ADeletedQueueIsGoneForEveryone) {
    std::uint32_t id = 0;
    ASSERT_EQ(OSA_OK, osQueueCreate("Deleted", &id));
    std::thread deleter([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        EXPECT_EQ(OSA_OK, osQueueDelete(id));
    });
    EXPECT_EQ(std::to_string(OSA_QUEUE_NOT_FOUND), receive(id, -1));
    deleter.join();
    std::uint32_t found = 0;
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueGetId("Deleted", &found));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueSend(id, "0", 1));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueDelete(id));
    EXPECT_FALSE(std::filesystem::exists(kHome.dir / "state/queues/Deleted"));
}

// To the library a queue whose time of creation differs is another one that has got the id.
TEST(Queue, AnIdThatSomebodyElseGotIsRefused) {
    std::uint32_t id = 0;
    ASSERT_EQ(OSA_OK, osQueueCreate("Reused", &id));
    msqid_ds state{};
    ASSERT_EQ(0, msgctl(static_cast<int>(id), IPC_STAT, &state));
    const std::time_t created = state.msg_ctime;
    EXPECT_TRUE(support::waitUntil([&] {
        return msgctl(static_cast<int>(id), IPC_SET, &state) == 0 &&
               msgctl(static_cast<int>(id), IPC_STAT, &state) == 0 && state.msg_ctime != created;
    }));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueSend(id, "0", 1));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueGetId("Reused", &id));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueDelete(id));
    EXPECT_EQ(0, msgctl(static_cast<int>(id), IPC_RMID, nullptr));
}

TEST(Queue, AFileThatNamesNoQueueCountsAsNone) {
    const Queue queue("File");
    const std::string file = kHome.dir / "state/queues/File";
    const std::string good = support::contentOf(file);
    std::uint32_t id = 0;
    for (const std::string& content : {good.substr(0, good.size() - 1), good + std::string(128, ' '),
                                       good.substr(0, good.size() - 1) + "x\n", "-" + good, std::string("1 2\n")}) {
        support::writeFile(file, content);
        EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueGetId("File", &id)) << content;
    }
    support::writeFile(file, good);
    EXPECT_TRUE(osQueueGetId("File", &id) == OSA_OK && id == queue.id);
}

// In a kernel name space of its own, on a disk that takes no byte.
int failToCreate() {
    if (unshare(CLONE_NEWIPC) != 0) {
        return support::kNoRight;
    }
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit nothing{0, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &nothing);
    std::uint32_t id = 0;
    const bool failed = osQueueCreate("Failed", &id) == OSA_STATE_DIRECTORY;
    const std::string queues = support::contentOf("/proc/sysvipc/msg");
    support::writeFile("/proc/sys/kernel/msgmni", "0"); // no queue more
    const bool isLast = osQueueCreate("Failed", &id) == OSA_NO_RESOURCES;
    return failed && isLast && std::count(queues.begin(), queues.end(), '\n') == 1 ? 0 : 1; // only the headline
}

TEST(Queue, ACreationThatFailsLeavesNothing) {
    support::expectInChild(failToCreate, "a name space of its own");
}

TEST(Queue, RefusesUnusableArguments) {
    const Queue queue("Arguments");
    std::uint32_t id = 0;
    const Queue plain("AZaz09._-");
    for (const std::string& name : {std::string(), std::string("../x"), std::string(65, 'q')}) {
        EXPECT_EQ(OSA_BAD_NAME, osQueueGetId(name.c_str(), &id)) << name;
        EXPECT_EQ(OSA_BAD_NAME, osQueueCreate(name.c_str(), &id)) << name;
    }
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueGetId(std::string(64, 'q').c_str(), &id));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueGetId(nullptr, &id));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueGetId("Arguments", nullptr));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueSend(queue.id, nullptr, 1));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueSend(queue.id, "", 0));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueSend(queue.id, std::string(5000, 'x').data(), 4097));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueSend(0xFFFFFFFF, "0", 1));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueCreate(nullptr, &id));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueCreate("Arguments", nullptr));
    char byte = 0;
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueReceive(queue.id, nullptr, 1, &id, 0));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueReceive(queue.id, &byte, 1, nullptr, 0));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueReceive(queue.id, &byte, 0, &id, 0));
}

} // namespace
