// How the store is written: alone among processes, and for all threads of this one that wait.

#include "RegistryStore.hpp"

#include "Diagnostics.hpp"
#include "Files.hpp"
#include "StatusText.hpp"
#include "ZpoShared.h"

#include <cerrno>
#include <exception>
#include <fmt/format.h>

namespace zpo {
namespace {

// An exception must not leave a transaction open.
std::uint32_t attempt(const Change::Work& work, MDB_txn* transaction, MDB_dbi entries) {
    try {
        return work(transaction, entries);
    } catch (const std::exception&) {
        return ZPO_REG_NO_RESOURCES;
    }
}

} // namespace

// LMDB waits for its own write lock without limit. Whoever holds this lock finds LMDB's free.
std::uint32_t RegistryStore::lockForWriting(FileLock& lock, Deadline until) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Change::Clock::now());
    const int error = lock.acquire(lockPath_, left);
    if (error == ETIMEDOUT) {
        logInternal(4, fmt::format("registry {}: {}", path_, statusText(ZPO_REG_LOCKED)));
        return ZPO_REG_LOCKED;
    }
    return error == EACCES || error == EPERM ? ZPO_REG_NOT_WRITABLE : statusOfError(error);
}

std::uint32_t RegistryStore::committingOnce(const Work& work, Deadline until, int& error) {
    FileLock writeLock;
    std::shared_lock<std::shared_mutex> lock;
    std::uint32_t status = acquire(lock, true); // also creates the directory that the lock lies in
    if (status == ZPO_OK) {
        lock.unlock(); // so that the process's readers can reopen the store meanwhile
        status = lockForWriting(writeLock, until);
    }
    if (status != ZPO_OK || (status = acquire(lock, true)) != ZPO_OK) {
        return status;
    }
    MDB_txn* transaction = nullptr;
    error = mdb_txn_begin(store_->env(), nullptr, 0, &transaction);
    if (error != 0) {
        return statusOfError(error);
    }
    status = attempt(work, transaction, store_->entries());
    if (status != ZPO_OK) {
        mdb_txn_abort(transaction);
        error = status == ZPO_REG_STORE_FULL ? MDB_MAP_FULL : 0;
        return status;
    }
    store_->keepName();
    error = mdb_txn_commit(transaction);
    // LMDB reports a write cut short by a full disk as an input/output error.
    return error == EIO && isDiskFull(path_) ? ZPO_REG_STORE_FULL : statusOfError(error);
}

std::uint32_t RegistryStore::committing(const Work& work, Deadline until) {
    int error = 0;
    std::uint32_t status = committingOnce(work, until, error);
    if (status == ZPO_REG_STORE_BUSY && error == 0 && dropForeignReaders()) {
        status = committingOnce(work, until, error);
    }
    if (error != MDB_MAP_RESIZED && error != MDB_MAP_FULL && error != MDB_PANIC) {
        return status;
    }
    recover(error);
    return committingOnce(work, until, error);
}

// Makes the changes of all who wait in one transaction. When that fails, each is made alone, so that none fails for
// another's sake.
void RegistryStore::makeAll(ChangeQueue::Turn& turn, Change& own) {
    const auto making = [&turn](MDB_txn* transaction, MDB_dbi entries) {
        turn.take();
        std::uint32_t made = ZPO_OK;
        for (std::size_t i = 0; i < turn.taken().size() && made == ZPO_OK; ++i) {
            made = turn.taken()[i]->work(transaction, entries);
        }
        return made;
    };
    const std::uint32_t status = committing(making, own.until);
    if (status == ZPO_OK || turn.taken().size() < 2) {
        own.status = status;
        for (Change* const change : turn.taken()) {
            change->status = status;
        }
        return;
    }
    for (Change* const change : turn.taken()) {
        change->status = committing(change->work, change->until);
    }
}

std::uint32_t RegistryStore::writing(const Work& work) {
    Change change(work, Change::Clock::now() + lockTimeout_);
    ChangeQueue::Turn turn(changes_, change);
    if (turn.leads()) {
        makeAll(turn, change);
    }
    return change.status;
}

} // namespace zpo
