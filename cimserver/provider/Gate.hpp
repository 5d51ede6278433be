// The way into one provider: who may be inside together, and who waits.
//
// A request that cannot enter at once is queued as a value, without a thread. A thread that is inside a provider
// already waits as it is, for providers may call one another through the server. With plain mutexes, two threads, each
// inside the provider that the other wants, would wait for ever. Here a thread may also enter a provider whose present
// callers all wait for something that this thread itself holds: they are suspended until it is done, so the provider's
// calls still exclude one another, just as when a provider calls back into itself.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <list>
#include <optional>
#include <thread>
#include <vector>

namespace cimserver::provider {

enum class Access { Read, Write };

/// What may be inside together.
enum class Sharing { None, Reads, All };

struct GateLimits {
    std::size_t lanes = 8;   ///< calls inside at a time, where they share; one of them is kept for reads
    std::size_t queue = 128; ///< waiters in the queue; a quarter as many threads may wait besides, at least `lanes`
};

class Gate {
    struct Holder {
        std::thread::id thread; ///< none: a place promised to a waiter
        Access access;
        bool shared;
    };
    using Holders = std::list<Holder>;

  public:
    using Clock = std::chrono::steady_clock;

    /// The right to be inside; ends at destruction.
    class Pass {
      public:
        Pass(Pass&& other) noexcept;
        Pass& operator=(Pass&&) = delete;
        ~Pass();

        bool isFor(const Gate& gate) const { return gate_ == &gate; }
        /// Makes a promised place the calling thread's, which must also be the one that destroys the pass.
        void claim();

      private:
        friend class Gate;
        Pass(Gate& gate, Holders::iterator holder) : gate_(&gate), holder_(holder) {}
        Gate* gate_;
        Holders::iterator holder_;
    };

    /// Who waits in the queue. `resume` is called once, on any thread: with the pass when it is its turn, with none
    /// when its time is over or it has been abandoned.
    struct Waiter {
        Access access;
        Clock::time_point until;
        std::function<bool()> abandoned;
        std::function<void(std::optional<Pass>)> resume;
    };

    explicit Gate(Sharing sharing, GateLimits limits = {}) : sharing_(sharing), limits_(limits) {}
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    /// A pass if the calling thread may enter at once. Writers exclude everybody, and readers one another, unless they
    /// share.
    std::optional<Pass> tryEnter(Access access);
    /// Waits until the calling thread may enter, at most `limit`, before those in the queue. Empty when the time is
    /// over, or when too many threads wait already.
    std::optional<Pass> enter(Access access, std::chrono::milliseconds limit);
    /// False when the queue is full, even without those who were abandoned.
    bool enqueue(Waiter waiter);
    /// Removes from the queue those who were abandoned or whose time is over.
    void tidy(Clock::time_point now);

    /// True when the calling thread is inside a provider.
    static bool isInside();

  private:
    using Resumptions = std::vector<std::function<void()>>;

    bool mayEnter(std::thread::id thread, Access access) const;
    bool hasRoom(Access access) const;
    bool isShared(Access access) const;
    bool waitsFor(std::thread::id waiter, std::thread::id holder, unsigned depth) const;
    Pass admit(std::thread::id thread, Access access);
    template <class Unwanted>
    void remove(Unwanted unwanted, Resumptions& resumptions);
    void callUp(Resumptions& resumptions);
    void leave(Holders::iterator holder);

    const Sharing sharing_;
    const GateLimits limits_;
    Holders holders_;
    std::list<Waiter> queue_;
    std::size_t blocked_ = 0; ///< threads that wait in enter()
};

} // namespace cimserver::provider
