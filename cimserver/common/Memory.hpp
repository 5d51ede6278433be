// The memory for requests that are being received or served and for answers that wait to be taken.
#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace cimserver {

/// One amount for all, of which one peer may have three quarters. What an account holds up to kFree is counted, but
/// never refused nor charged to its peer, so that small requests are served whatever the large ones take.
class MemoryBudget {
  public:
    static constexpr std::size_t kFree = 8192;

    explicit MemoryBudget(std::size_t bytes) : limit_(bytes) {}

  private:
    friend class MemoryAccount;
    bool change(const std::string& peer, std::size_t from, std::size_t to);

    const std::size_t limit_;
    std::mutex mutex_;
    std::size_t used_ = 0;
    std::map<std::string, std::size_t> peers_; ///< beyond kFree; none with 0
};

/// What one request and its answer hold. One thread at a time.
class MemoryAccount {
  public:
    MemoryAccount(MemoryBudget& budget, std::string peer) : budget_(budget), peer_(std::move(peer)) {}
    ~MemoryAccount() { hold(0); }
    MemoryAccount(const MemoryAccount&) = delete;
    MemoryAccount& operator=(const MemoryAccount&) = delete;

    const std::string& peer() const { return peer_; }
    /// Sets what is held. False, and nothing has changed, when there is not so much.
    bool hold(std::size_t bytes);
    bool grow(std::size_t bytes) { return hold(held_ + bytes); }
    void shrink(std::size_t bytes) { hold(held_ - bytes); }
    /// True when something has been refused since the last release().
    bool refused() const { return refused_; }
    void release();

  private:
    MemoryBudget& budget_;
    const std::string peer_;
    std::size_t held_ = 0;
    bool refused_ = false;
};

} // namespace cimserver
