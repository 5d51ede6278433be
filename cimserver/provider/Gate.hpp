// The lock of one provider, which detects deadlocks.
//
// Providers may call one another through the server. With plain mutexes, two threads, each inside the provider that the
// other wants, would wait for ever. Here a thread may also enter a provider whose present callers all wait for
// something that this thread itself holds: they are suspended until it is done, so the provider's calls still exclude
// one another, just as when a provider calls back into itself.
#pragma once

#include <chrono>
#include <optional>
#include <thread>
#include <vector>

namespace cimserver::provider {

enum class Access { Read, Write };

class Gate {
  public:
    /// The right to be inside; released at destruction, which must be on the thread that got it.
    class Pass {
      public:
        Pass(Pass&& other) noexcept : gate_(other.gate_) { other.gate_ = nullptr; }
        Pass& operator=(Pass&&) = delete;
        ~Pass();

      private:
        friend class Gate;
        explicit Pass(Gate& gate) : gate_(&gate) {}
        Gate* gate_;
    };

    explicit Gate(bool concurrentReads) : concurrentReads_(concurrentReads) {}
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    /// Waits until the calling thread may enter, at most `limit`; empty when the time is over. Writers exclude
    /// everybody; readers exclude one another too, unless the gate allows concurrent reads.
    std::optional<Pass> enter(Access access, std::chrono::milliseconds limit);

  private:
    struct Holder {
        std::thread::id thread;
        bool shared;
    };

    bool mayEnter(std::thread::id thread, bool shared) const;
    bool waitsFor(std::thread::id waiter, std::thread::id holder, unsigned depth) const;
    void leave();

    const bool concurrentReads_;
    std::vector<Holder> holders_;
};

} // namespace cimserver::provider
