// Requests from several threads at once, beside restores on a thread of the platform.
#include "CDROAMWrap.hpp"
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

// What may run while `first` waits in a function of the platform.
TEST_F(ConcurrencyTest, ReadsGoOnDuringAChangeAndOtherChangesWait) {
    using Work = std::function<void()>;
    const Work read = [this] { get(kService); };
    const Work list = [this] { instances("QTX_CDRServicePrefixBin"); };
    const Work refresh = [this] { invoke(path(kService), "Refresh"); };
    const Work limit = [this] { EXPECT_EQ(set(kService, "DigitsLimit", value("uint16", "9")), ""); };
    const Work two = [this] {
        EXPECT_EQ(failure([this] {
                      modify(changed(kService,
                                     {{"DigitsLimit", value("uint16", "8")}, {"FeatureCode", value("string", "7")}}));
                  }),
                  "");
    };
    const Work clear = [this] { invoke(path(kPullStatistics), "Refresh"); };
    const Work bin = [this] { EXPECT_EQ(set(binPath("CDRServicePrefixBin", 1), "PrefixBin", "11"), ""); };
    struct Case {
        const char* function;
        Work first;
        std::vector<Work> run;
        std::vector<Work> wait;
    };
    const std::vector<Work> reads{read, list, refresh};
    for (const Case& c : {Case{"ZpoGetScheduledTaskList", arm, reads, {arm, restore, limit}},
                          Case{"ZpoGetScheduledTaskList", restore, reads, {arm, restore, two}},
                          Case{"ZpoSetRegEntryBinary", limit, {read, list, limit, bin}, {arm, two}},
                          Case{"ZpoSetRegEntryBinary", two, reads, {two, limit, bin}},
                          Case{"ZpoSetRegEntryBinary", clear, reads, {clear, limit}},
                          Case{"ZpoSetRegEntryBinary", bin, {read, list, limit}, {bin, two}}}) {
        const auto during = [&](const Work& second, std::chrono::milliseconds patience, std::future_status expected) {
            std::future<void> other;
            platform.during(c.function, [&] {
                other = std::async(std::launch::async, second);
                EXPECT_EQ(other.wait_for(patience), expected);
            });
            c.first();
            other.get();
        };
        for (const Work& second : c.run) {
            during(second, std::chrono::seconds(60), std::future_status::ready);
        }
        for (const Work& second : c.wait) {
            during(second, std::chrono::milliseconds(30), std::future_status::timeout);
        }
    }
}

// Rows that are changed while the table is written are written together afterwards, and none is lost.
TEST_F(ConcurrencyTest, RowsThatWaitShareAWrite) {
    const auto change = [this](int row, const std::string& digits) {
        EXPECT_EQ(set(binPath("CDRServicePrefixBin", row), "PrefixBin", digits), "");
    };
    std::size_t writes = 4;
    for (int round = 0; round < 100 && writes == 4; ++round) { // until the three arrive in time
        platform.forget();
        std::vector<std::future<void>> others;
        platform.during("ZpoSetRegEntryBinary", [&] {
            for (int row = 1; row < 4; ++row) {
                others.push_back(std::async(std::launch::async, change, row, std::to_string(round)));
            }
            others.back().wait_for(std::chrono::milliseconds(round));
        });
        change(0, std::to_string(round));
        for (std::future<void>& other : others) {
            other.get();
        }
        for (int row = 0; row < 4; ++row) {
            EXPECT_EQ(shown(get(binPath("CDRServicePrefixBin", row)), "PrefixBin"), std::to_string(round));
        }
        writes = platform.calls("ZpoSetRegEntryBinary").size();
    }
    EXPECT_LT(writes, 4U);
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

TEST_F(ConcurrencyTest, ReleasingTheObjectsWaitsForARestore) {
    std::future<void> released;
    platform.during("ZpoGetScheduledTaskList", [&] {
        released = std::async(std::launch::async, [] { delete std::exchange(myInstance, nullptr); });
        EXPECT_EQ(released.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    });
    restore();
    released.get();
    EXPECT_EQ(platform.created.size(), 1U);
}

} // namespace
