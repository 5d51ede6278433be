// Who may be inside a provider together, and that no cycle of waiting is for ever.
#include "cimserver/provider/Gate.hpp"
#include "Support.hpp"

#include <atomic>
#include <future>

using namespace std::chrono_literals;
using cimserver::provider::Access;
using cimserver::provider::Gate;

namespace {

constexpr auto soon = 30ms;
constexpr auto ample = 20s;

bool entersElsewhere(Gate& gate, Access access) {
    return std::async(std::launch::async, [&] { return gate.enter(access, soon).has_value(); }).get();
}

TEST(Gate, LetsOnlyConcurrentReadsBeTogether) {
    const std::tuple<bool, Access, Access, bool> rules[] = {
        {false, Access::Read, Access::Read, false}, {false, Access::Write, Access::Read, false},
        {true, Access::Read, Access::Read, true},   {true, Access::Read, Access::Write, false},
        {true, Access::Write, Access::Read, false}, {true, Access::Write, Access::Write, false},
    };
    for (const auto& [concurrentReads, first, second, together] : rules) {
        Gate gate(concurrentReads);
        {
            const auto inside = gate.enter(first, soon);
            EXPECT_EQ(entersElsewhere(gate, second), together);
            EXPECT_TRUE(gate.enter(Access::Write, soon)) << "of the same thread";
        }
        EXPECT_TRUE(entersElsewhere(gate, Access::Write)) << "after it was left";
    }
}

TEST(Gate, CountsEntriesOfOneThread) {
    Gate gate(false);
    const auto outer = gate.enter(Access::Read, soon);
    { const auto inner = gate.enter(Access::Write, soon); }
    EXPECT_FALSE(entersElsewhere(gate, Access::Read)) << "the outer entry still holds";
}

// Two threads, each inside the gate the other wants next: both get through, one inside the other's pause.
TEST(Gate, ResolvesCyclesOfWaiting) {
    for (const bool concurrentReads : {false, true}) {
        Gate a(concurrentReads);
        Gate b(concurrentReads);
        std::atomic<int> ready{0};
        const auto cross = [&](Gate& first, Gate& second) {
            const auto outer = first.enter(Access::Write, ample);
            ++ready;
            while (ready < 2) {
                std::this_thread::yield();
            }
            return second.enter(Access::Read, ample).has_value();
        };
        auto one = std::async(std::launch::async, cross, std::ref(a), std::ref(b));
        auto two = std::async(std::launch::async, cross, std::ref(b), std::ref(a));
        ASSERT_EQ(one.wait_for(10s), std::future_status::ready);
        ASSERT_EQ(two.wait_for(10s), std::future_status::ready);
        EXPECT_TRUE(one.get());
        EXPECT_TRUE(two.get());
    }
}

// Many threads through nested gates in both orders: what a gate guards is never touched by two that run.
TEST(Gate, ExcludesUnderLoad) {
    Gate gates[2] = {Gate(false), Gate(false)};
    long counters[2] = {0, 0}; // plain on purpose: a race shows in the sum, and to the thread sanitizer
    const auto work = [&](int self) {
        for (int i = 0; i < 500; ++i) {
            const int outer = (self + i) % 2;
            const auto pass = gates[outer].enter(Access::Write, ample);
            const long before = counters[outer];
            counters[outer] = before + 1;
            const auto nested = gates[1 - outer].enter(Access::Write, ample);
            ++counters[1 - outer];
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(counters[0] + counters[1], 4 * 500 * 2);
}

} // namespace
