#include "RequestLock.hpp"

#include <mutex>
#include <shared_mutex>
#include <utility>

namespace cdroam {
namespace {

std::mutex requestMutex;

// How many RequestLocks this thread holds; the mutex is locked by the first.
thread_local unsigned heldByThread = 0;

// Each change passes it on its way to `changes`, so that a steady stream of changes that share cannot keep out one that
// must be alone.
std::mutex turnstile;
std::shared_mutex changes;

// How many ChangeLocks this thread holds; the first decides about sharing.
thread_local unsigned changesOfThread = 0;
thread_local ChangeLock::Sharing sharingOfThread = ChangeLock::Sharing::Alone;

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

ChangeLock::ChangeLock(Sharing sharing) {
    if (changesOfThread == 0) {
        const RequestPause pause;
        const std::lock_guard<std::mutex> turn(turnstile);
        if (sharing == Sharing::Together) {
            changes.lock_shared();
        } else {
            changes.lock();
        }
        sharingOfThread = sharing;
    }
    ++changesOfThread;
}

ChangeLock::~ChangeLock() {
    if (--changesOfThread != 0) {
        return;
    }
    if (sharingOfThread == Sharing::Together) {
        changes.unlock_shared();
    } else {
        changes.unlock();
    }
}

WritePause::WritePause() {
    if (changesOfThread != 0) {
        pause_.emplace();
    }
}

} // namespace cdroam
