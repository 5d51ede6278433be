// Who may be inside a provider together, and that no cycle of waiting is for ever.
#include "cimserver/provider/Gate.hpp"
#include "Support.hpp"
#include "cimserver/provider/Attempt.hpp"

#include <atomic>
#include <future>

using namespace std::chrono_literals;
using cimserver::provider::Access;
using cimserver::provider::Gate;
using cimserver::provider::Sharing;

namespace {

constexpr auto kSoon = 30ms;
constexpr auto kAmple = 20s;

bool entersElsewhere(Gate& gate, Access access) {
    return std::async(std::launch::async, [&] { return gate.enter(access, kSoon).has_value(); }).get();
}

TEST(Gate, LetsOnlyConcurrentReadsBeTogether) {
    const std::tuple<Sharing, std::size_t, Access, Access, bool> rules[] = {
        {Sharing::None, 8, Access::Read, Access::Read, false},
        {Sharing::None, 8, Access::Write, Access::Read, false},
        {Sharing::Reads, 8, Access::Read, Access::Read, true},
        {Sharing::Reads, 8, Access::Read, Access::Write, false},
        {Sharing::Reads, 8, Access::Write, Access::Read, false},
        {Sharing::Reads, 8, Access::Write, Access::Write, false},
        {Sharing::Reads, 1, Access::Read, Access::Read, false},
        {Sharing::All, 3, Access::Write, Access::Write, true},
        {Sharing::All, 2, Access::Write, Access::Write, false},
        {Sharing::All, 2, Access::Write, Access::Read, true},
        {Sharing::All, 1, Access::Write, Access::Read, false},
    };
    for (const auto& [sharing, lanes, first, second, together] : rules) {
        Gate gate(sharing, {lanes, 1});
        {
            const auto inside = gate.enter(first, kSoon);
            EXPECT_TRUE(gate.enter(Access::Write, kSoon)) << "of the same thread, which is still inside when it left";
            EXPECT_EQ(entersElsewhere(gate, second), together) << lanes;
        }
        EXPECT_TRUE(entersElsewhere(gate, Access::Write)) << "after it was left";
    }
}

// Two threads, each inside the gate the other wants next: both get through, one inside the other's pause.
TEST(Gate, ResolvesCyclesOfWaiting) {
    for (const Sharing sharing : {Sharing::None, Sharing::Reads}) {
        Gate a(sharing);
        Gate b(sharing);
        std::atomic<int> ready{0};
        const auto cross = [&](Gate& first, Gate& second) {
            const auto outer = first.enter(Access::Write, kAmple);
            ++ready;
            while (ready < 2) {
                std::this_thread::yield();
            }
            return second.enter(Access::Read, kAmple).has_value();
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
    Gate gates[2] = {Gate(Sharing::None), Gate(Sharing::None)};
    long counters[2] = {0, 0}; // plain on purpose: a race shows in the sum, and to the thread sanitizer
    const auto work = [&](int self) {
        for (int i = 0; i < 500; ++i) {
            const int outer = (self + i) % 2;
            const auto pass = gates[outer].enter(Access::Write, kAmple);
            const long before = counters[outer];
            counters[outer] = before + 1;
            const auto nested = gates[1 - outer].enter(Access::Write, kAmple);
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

/// A gate with room for two in its queue, and who was called up from it, by name; "-" before those without a pass.
class Queue : public testing::Test {
  protected:
    bool enqueue(const std::string& name, Access access = Access::Write) {
        const auto resume = [this, name](std::optional<Gate::Pass> pass) {
            called_ += (pass ? "" : "-") + name + " ";
            if (pass) {
                passes_.push_back(std::move(*pass));
            }
        };
        return gate_.enqueue({access, end_, [this, name] { return name == gone_; }, resume});
    }

    const Gate::Clock::time_point end_ = Gate::Clock::now() + 1h;
    Gate gate_{Sharing::Reads, {8, 2}};
    std::string gone_;
    std::string called_;
    std::list<Gate::Pass> passes_;
};

TEST_F(Queue, IsBoundedAndServedInOrder) {
    passes_.push_back(std::move(*gate_.tryEnter(Access::Write)));
    EXPECT_TRUE(enqueue("a") && enqueue("b"));
    EXPECT_FALSE(enqueue("c")) << "it is full";
    gone_ = "a";
    EXPECT_TRUE(enqueue("c", Access::Read)) << "who has left makes room";
    EXPECT_EQ(called_, "-a ");
    passes_.pop_front();
    EXPECT_EQ(called_, "-a b ");
    EXPECT_FALSE(entersElsewhere(gate_, Access::Read)) << "the place is promised";
    passes_.pop_front();
    EXPECT_EQ(called_, "-a b c ");
    EXPECT_TRUE(enqueue("d") && enqueue("e", Access::Read));
    EXPECT_FALSE(std::async([this] { return gate_.tryEnter(Access::Read).has_value(); }).get()) << "no read overtakes";
    gate_.tidy(end_);
    EXPECT_EQ(called_, "-a b c -d -e ");
}

TEST_F(Queue, IsServedWhenThePlaceBecameFreeMeanwhile) {
    EXPECT_TRUE(enqueue("a"));
    EXPECT_EQ(called_, "a ");
}

TEST(Gate, CallsUpAReadBehindAChangeThatWaitsForALane) {
    std::string called;
    Gate gate(Sharing::All, {2, 2});
    const auto change = gate.tryEnter(Access::Write);
    auto read = gate.tryEnter(Access::Read);
    for (const Access access : {Access::Write, Access::Read}) {
        const auto resume = [&called, access](const auto&) { called += access == Access::Read ? "read" : "change"; };
        gate.enqueue({access, Gate::Clock::now() + 1h, [] { return false; }, resume});
    }
    read.reset();
    EXPECT_EQ(called, "read");
}

TEST(Gate, ACallOutOfAProviderWaitsForTheNext) {
    Gate outer(Sharing::None);
    Gate inner(Sharing::None);
    std::promise<void> held;
    std::promise<void> leave;
    auto holder = std::async(std::launch::async, [&] {
        const auto pass = inner.tryEnter(Access::Write);
        held.set_value();
        leave.get_future().wait();
    });
    held.get_future().wait();
    auto caller = std::async(std::launch::async, [&] {
        const auto first = admitTo(outer, Access::Write, 1h);
        return first && admitTo(inner, Access::Write, 1h);
    });
    EXPECT_EQ(caller.wait_for(50ms), std::future_status::timeout) << "it has not given up";
    leave.set_value();
    EXPECT_TRUE(caller.get());
}

} // namespace
