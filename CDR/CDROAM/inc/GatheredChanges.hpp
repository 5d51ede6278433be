// Changes of one thing that wait for the registry at the same time, made with one write.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace cdroam {

/// Gathers edits of something that can only be written as a whole. Edits that arrive while a thread writes wait, and
/// are then written together by the first of their threads; one without others is written at once.
template <class Edit>
class GatheredChanges {
  public:
    /// Returns when the edit is written, with the status of that write. `put` applies edits, in their order, to what is
    /// stored, writes it and returns a status; it is called by one thread at a time, not necessarily by this one, and
    /// must not throw.
    template <class Put>
    std::uint32_t write(Edit edit, Put put) {
        std::shared_ptr<Batch> following = std::make_shared<Batch>(); // later, a failure would leave others waiting
        std::unique_lock<std::mutex> lock(mutex_);
        const std::shared_ptr<Batch> batch = next_;
        batch->edits.push_back(std::move(edit));
        if (batch->edits.size() > 1) { // the first writes for all
            changed_.wait(lock, [&] { return batch->written; });
            return batch->status;
        }
        changed_.wait(lock, [this] { return !writing_; });
        writing_ = true;
        next_ = std::move(following);
        lock.unlock();
        const std::uint32_t status = put(batch->edits);
        lock.lock();
        writing_ = false;
        batch->status = status;
        batch->written = true;
        changed_.notify_all();
        return status;
    }

  private:
    struct Batch {
        std::vector<Edit> edits;
        std::uint32_t status = 0;
        bool written = false;
    };

    std::mutex mutex_;
    std::condition_variable changed_;
    std::shared_ptr<Batch> next_ = std::make_shared<Batch>();
    bool writing_ = false;
};

} // namespace cdroam
