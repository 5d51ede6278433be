#include "cimserver/common/Memory.hpp"

namespace cimserver {
namespace {

std::size_t charged(std::size_t bytes) {
    return bytes > MemoryBudget::kFree ? bytes - MemoryBudget::kFree : 0;
}

} // namespace

bool MemoryBudget::change(const std::string& peer, std::size_t from, std::size_t to) {
    const std::lock_guard lock(mutex_);
    const auto entry = peers_.find(peer);
    const auto left = used_ - from;
    const auto others = (entry == peers_.end() ? 0 : entry->second) - charged(from);
    const auto more = charged(to);
    if (to > from && more > 0 && (left + to > limit_ || others + more > limit_ / 4 * 3)) {
        return false;
    }
    used_ = left + to;
    if (others + more > 0) {
        peers_[peer] = others + more;
    } else if (entry != peers_.end()) {
        peers_.erase(entry);
    }
    return true;
}

bool MemoryAccount::hold(std::size_t bytes) {
    const bool done = bytes == held_ || budget_.change(peer_, held_, bytes);
    held_ = done ? bytes : held_;
    refused_ = refused_ || !done;
    return done;
}

void MemoryAccount::release() {
    hold(0);
    refused_ = false;
}

} // namespace cimserver
