// Requests from several threads at once, beside restores on a thread of the platform.
#include "ModuleTest.hpp"

#include <chrono>
#include <future>
#include <thread>

namespace {

class ConcurrencyTest : public ModuleTest {
  protected:
    ConcurrencyTest() { platform.put("CDR/CDRPush/TransferType", "bytes 02"); }

    // Reads every instance and changes every property. Calls that fail, and values that are not as set, are noted.
    void useAll() {
        for (const PropertyCase& c : propertyCases()) {
            EXPECT_FALSE(names(c.className()).empty());
            EXPECT_EQ(set(c.path, c.property, value(c.type, c.shown)), "") << c;
            const std::string read = shown(get(c.path), c.property);
            EXPECT_TRUE(!c.writable || !c.appliesIn('2') || read == c.shown) << c << " reads " << read;
        }
    }
    void restore() { platform.callbacks.at("CDROAMProvider")(2); }
    unsigned int push() { return invoke(path(kPushSetting), "PushFileNow"); }
};

TEST_F(ConcurrencyTest, RequestsAndRestoresTakeTurns) {
    constexpr unsigned kThreads = 3;
    constexpr unsigned kRounds = 5;
    const unsigned pushed = push();
    std::vector<std::thread> threads;
    for (unsigned thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([this] {
            for (unsigned round = 0; round < kRounds; ++round) {
                push();
                useAll();
            }
        });
    }
    threads.emplace_back([this] {
        for (int round = 0; round < 300; ++round) {
            restore();
        }
    });
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(push(), pushed + kThreads * kRounds + 1);
    EXPECT_EQ(platform.mostTasks, 1U) << "a task is removed and created in one go";
    EXPECT_EQ(platform.openLists, 0);
}

TEST_F(ConcurrencyTest, ALongPushHoldsUpNobody) {
    std::promise<void> started;
    std::promise<void> mayEnd;
    platform.transfer = [&] {
        started.set_value();
        mayEnd.get_future().wait();
    };
    std::future<unsigned int> pushing = std::async(std::launch::async, [this] { return push(); });
    started.get_future().wait();
    std::future<void> others = std::async(std::launch::async, [this] {
        useAll();
        restore();
    });
    EXPECT_EQ(others.wait_for(std::chrono::seconds(60)), std::future_status::ready) << "waits for the push";
    mayEnd.set_value();
    EXPECT_GT(pushing.get(), 0U);
}

} // namespace
