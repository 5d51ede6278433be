// Requests from several threads at once, beside restores on a thread of the platform.
#include "ModuleTest.hpp"

#include <future>

namespace {

class ConcurrencyTest : public ModuleTest {
  protected:
    ConcurrencyTest() { platform.put("CDR/CDRPush/TransferType", "bytes 02"); }

    // Reads every instance and changes every property.
    void useAll() {
        for (const PropertyCase& c : propertyCases()) {
            EXPECT_FALSE(names(c.className()).empty());
            EXPECT_EQ(set(c.path, c.property, value(c.type, c.shown)), "") << c;
            const std::string read = shown(get(c.path), c.property);
            EXPECT_TRUE(!c.writable || !c.appliesIn('2') || read == c.shown) << c << " reads " << read;
        }
    }
    unsigned int push() { return invoke(path(kPushSetting), "PushFileNow"); }
    const std::function<void()> restore = [this] { platform.callbacks.at("CDROAMProvider")(2); };
    const std::function<void()> arm = [this] { EXPECT_EQ(set(kPushSetting, "TransferTime", "1:00"), ""); };
};

TEST_F(ConcurrencyTest, RequestsAndRestoresTakeTurns) {
    const std::function<void()> read = [this] { get(kService); };
    const std::function<void()> list = [this] { instances("QTX_CDRServicePrefixBin"); };
    const std::function<void()> refresh = [this] { invoke(path(kService), "Refresh"); };
    for (const auto& first : {arm, restore}) {
        for (const auto& second : {read, list, refresh, arm, restore}) {
            std::future<void> waiting;
            platform.during("ZpoGetScheduledTaskList", [&] {
                waiting = std::async(std::launch::async, second);
                EXPECT_EQ(waiting.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
            });
            first();
            waiting.get();
        }
    }
}

TEST_F(ConcurrencyTest, ALongPushHoldsUpNobody) {
    std::promise<void> started;
    std::promise<void> mayEnd;
    platform.during("system", [&] {
        started.set_value();
        mayEnd.get_future().wait();
    });
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
