// The threads that serve requests.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace cimserver {

/// Runs tasks on a fixed number of threads, plus one for each task that has stepped aside. Threads are made when they
/// are needed and kept.
class Workers {
  public:
    explicit Workers(unsigned count) : count_(count) {}
    /// Drops tasks that have not begun and waits for the others.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    using Task = std::function<void()>;

    /// From any thread. A task must not throw. Senders take turns, so that many tasks of one do not delay another's.
    void post(const std::string& sender, Task task);

    /// While it lives, the calling thread does not count as a worker, so that another serves in its place: for calls
    /// that may take any time. Without effect within another one, and on a thread that is no worker.
    class Aside {
      public:
        Aside();
        Aside(Aside&& other) noexcept;
        Aside& operator=(Aside&&) = delete;
        ~Aside();

      private:
        Workers* workers_;
    };

  private:
    struct Queue {
        std::string sender;
        std::list<Task> tasks;
    };

    bool hasWork() const { return waiting_ > 0 && busy_ < count_; }
    Task next();
    void await(std::unique_lock<std::mutex>& lock);
    void run();
    void employ();

    const unsigned count_;
    std::mutex mutex_; ///< guards the members below
    std::condition_variable changed_;
    std::list<Queue> queues_; ///< of senders with tasks, the next one first
    std::list<Task> spare_;   ///< emptied, for the next tasks
    std::size_t waiting_ = 0; ///< tasks in them
    std::vector<std::thread> threads_;
    unsigned busy_ = 0; ///< threads with a task that have not stepped aside
    unsigned idle_ = 0;
    unsigned called_ = 0; ///< threads started or woken that have not come yet
    bool ending_ = false;
};

} // namespace cimserver
