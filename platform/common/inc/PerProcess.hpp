#pragma once

#include <atomic>
#include <pthread.h>

namespace zpo {

// Objects that exist once per process. They are never destroyed: threads and late callers may use them while the
// process exits.

/// The process's only State, made at the first call. A fork waits for its member `mutex`, so that a child never
/// inherits it locked.
template <class State>
State& sharedState() {
    static State* const only = [] {
        auto* fresh = new State;
        const auto unlock = [] { sharedState<State>().mutex.unlock(); };
        pthread_atfork([] { sharedState<State>().mutex.lock(); }, unlock, unlock);
        return fresh;
    }();
    return *only;
}

/// The process's only Object, for objects that must not be used across a fork: a child leaves its parent's alone and
/// makes its own.
template <class Object>
class PerProcess {
  public:
    /// Null when it has not been made yet.
    static Object* find() { return present.load(std::memory_order_acquire); }

    /// `make` returns a new object; it may be called by several threads at once, and one result is kept.
    template <class Make>
    static Object& get(Make make) {
        static const int hooked = pthread_atfork(nullptr, nullptr, forget);
        static_cast<void>(hooked);
        Object* current = find();
        if (current != nullptr) {
            return *current;
        }
        Object* fresh = make();
        if (!present.compare_exchange_strong(current, fresh)) {
            delete fresh;
            return *current;
        }
        return *fresh;
    }

  private:
    static void forget() { inherited.store(present.exchange(nullptr)); }

    inline static std::atomic<Object*> present{nullptr};
    inline static std::atomic<Object*> inherited{nullptr}; // keeps the parent's object reachable for leak checkers
};

} // namespace zpo
