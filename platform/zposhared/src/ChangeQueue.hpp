#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <lmdb.h>
#include <mutex>
#include <vector>

namespace zpo {

/// One change of the store: what it does within a write transaction, and what became of it.
struct Change {
    using Work = std::function<std::uint32_t(MDB_txn*, MDB_dbi)>;
    using Clock = std::chrono::steady_clock;

    Change(const Work& itsWork, Clock::time_point itsEnd) : work(itsWork), until(itsEnd) {}

    const Work& work;
    const Clock::time_point until; ///< how long it may wait for other writers
    std::uint32_t status = 0;
    enum class State { Waiting, Taken, Done } state = State::Waiting;
    std::condition_variable wake;
};

/// The threads of this process that want to change the store. The first of them leads: it makes the changes of all who
/// wait by then, in the order in which they came, while the next ones gather behind.
class ChangeQueue {
  public:
    /// Leads from its construction to its end, unless another thread has made the change or its time is over by then;
    /// its status says which.
    class Turn {
      public:
        Turn(ChangeQueue& queue, Change& change);
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        /// Tells the threads whose changes were taken, and lets the next one lead.
        ~Turn();

        bool leads() const { return leads_; }
        /// Takes the changes that wait. May be called again for those that have come since.
        void take();
        /// The changes to be made, this thread's first.
        const std::vector<Change*>& taken() const { return taken_; }

      private:
        ChangeQueue& queue_;
        Change& own_;
        bool leads_ = false;
        std::vector<Change*> taken_;
    };

  private:
    std::mutex mutex_;
    std::deque<Change*> waiting_; ///< the leader's first, until it takes them
    bool led_ = false;
};

} // namespace zpo
