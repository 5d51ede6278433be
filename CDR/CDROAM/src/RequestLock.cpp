#include "RequestLock.hpp"

#include <mutex>
#include <utility>

namespace cdroam {
namespace {

std::mutex requestMutex;

// How many RequestLocks this thread holds; the mutex is locked by the first.
thread_local unsigned heldByThread = 0;

} // namespace

RequestLock::RequestLock() {
    if (heldByThread == 0) {
        requestMutex.lock();
    }
    ++heldByThread;
}

RequestLock::~RequestLock() {
    if (--heldByThread == 0) {
        requestMutex.unlock();
    }
}

RequestPause::RequestPause() : held_(std::exchange(heldByThread, 0)) {
    if (held_ != 0) {
        requestMutex.unlock();
    }
}

RequestPause::~RequestPause() {
    if (held_ != 0) {
        requestMutex.lock();
        heldByThread = held_;
    }
}

} // namespace cdroam
