// Message queues between processes.

#include "Home.hpp"
#include "osa.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <sys/msg.h>
#include <thread>

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
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(std::to_string(OSA_TIMEOUT), receive(queue.id, 60));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(60));
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
}

// The name file may point to a queue that is another one by now, or be damaged.
TEST(Queue, AQueueOfSomebodyElseIsNotMistakenForIt) {
    const int foreign = msgget(IPC_PRIVATE, IPC_CREAT | 0600);
    const std::string file = kHome.dir / "state/queues/Stale";
    Queue("Other").id;
    std::uint32_t id = 0;
    for (const std::string& content : {std::to_string(foreign) + " 12345 1\n", std::string("garbage"), std::string(),
                                       std::string(100000, '1'), std::to_string(foreign)}) {
        support::writeFile(file, content);
        EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueGetId("Stale", &id)) << content.substr(0, 40);
    }
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueSend(static_cast<std::uint32_t>(foreign), "0", 1));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueDelete(static_cast<std::uint32_t>(foreign)));
    msgctl(foreign, IPC_RMID, nullptr);
    const Queue replaced("Stale"); // an owner starts anew
    EXPECT_EQ(OSA_OK, osQueueGetId("Stale", &id));
}

TEST(Queue, RefusesUnusableArguments) {
    const Queue queue("Arguments");
    std::uint32_t id = 0;
    for (const char* name : {"", "../x", "a/b", ".hidden", "blank name"}) {
        EXPECT_EQ(OSA_BAD_NAME, osQueueGetId(name, &id)) << name;
        EXPECT_EQ(OSA_BAD_NAME, osQueueCreate(name, &id)) << name;
    }
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueGetId(nullptr, &id));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueGetId("Arguments", nullptr));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueSend(queue.id, nullptr, 1));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueSend(queue.id, "", 0));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueSend(queue.id, std::string(5000, 'x').data(), 4097));
    EXPECT_EQ(OSA_QUEUE_NOT_FOUND, osQueueSend(0xFFFFFFFF, "0", 1));
    EXPECT_EQ(OSA_BAD_ARGUMENT, osQueueReceive(queue.id, nullptr, 1, &id, 0));
}

} // namespace
