#include "RegistryStore.hpp"

#include "Diagnostics.hpp"
#include "StatusText.hpp"
#include "StoreHead.hpp"
#include "ZpoShared.h"

#include <cstring>
#include <ctime>
#include <fmt/format.h>
#include <functional>
#include <mutex>
#include <unistd.h>

namespace zpo {
namespace {

constexpr std::int64_t kFileCheckInterval = 100; // milliseconds

std::int64_t coarseMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

std::uint32_t put(MDB_txn* transaction, MDB_dbi entries, std::string_view name, const std::string& record,
                  bool keepExisting) {
    MDB_val key = valueOf(name);
    MDB_val value = valueOf(record);
    const int error = mdb_put(transaction, entries, &key, &value, keepExisting ? MDB_NOOVERWRITE : 0);
    return error == MDB_KEYEXIST ? ZPO_OK : statusOfError(error);
}

std::uint32_t putAll(MDB_txn* transaction, MDB_dbi dbi, const std::vector<Entry>& entries, bool keepExisting) {
    for (const Entry& entry : entries) {
        EntryName name;
        std::uint32_t status = name.assign(entry.component.c_str(), entry.section.c_str(), entry.key.c_str());
        if (status == ZPO_OK) {
            status = checkValue(entry.kind, entry.bytes);
        }
        if (status == ZPO_OK) {
            status = put(transaction, dbi, name.encoded(), encodeRecord(entry.kind, entry.bytes), keepExisting);
        }
        if (status != ZPO_OK) {
            return status;
        }
    }
    return ZPO_OK;
}

// Calls `each` for every entry.
template <class Each>
std::uint32_t forEach(MDB_txn* transaction, MDB_dbi entries, Each each) {
    MDB_cursor* cursor = nullptr;
    int error = mdb_cursor_open(transaction, entries, &cursor);
    if (error != 0) {
        return statusOfError(error);
    }
    MDB_val key{};
    MDB_val value{};
    while ((error = mdb_cursor_get(cursor, &key, &value, MDB_NEXT)) == 0) {
        if (!isHeadKey(viewOf(key))) {
            each(viewOf(key), viewOf(value));
        }
    }
    mdb_cursor_close(cursor);
    return error == MDB_NOTFOUND ? ZPO_OK : statusOfError(error);
}

} // namespace

RegistryStore::RegistryStore(const std::string& directory, std::size_t mapBytes, std::chrono::milliseconds lockTimeout)
    : path_(directory + "/registry.mdb"), lockPath_(directory + "/registry.lock"), mapBytes_(mapBytes),
      lockTimeout_(lockTimeout) {}

bool RegistryStore::isUsable(bool toWrite) {
    if (store_ == nullptr || (toWrite && store_->isReadOnly())) {
        return false;
    }
    const std::int64_t now = coarseMilliseconds();
    // A read may be a moment out of date; a write must not go to a file that has been replaced.
    if (!toWrite && now < nextFileCheck_.load(std::memory_order_relaxed)) {
        return true;
    }
    if (!store_->isCurrent()) {
        return false;
    }
    nextFileCheck_.store(now + kFileCheckInterval, std::memory_order_relaxed);
    return true;
}

std::uint32_t RegistryStore::reopen(bool toWrite) {
    const std::unique_lock<std::shared_mutex> lock(mutex_);
    if (isUsable(toWrite)) {
        return ZPO_OK; // another thread has reopened it
    }
    replaced_ = replaced_ || (store_ != nullptr && !store_->isCurrent());
    store_.reset();
    std::string problem;
    std::uint32_t status = StoreEnvironment::open(path_, mapBytes_, store_, problem);
    if (status == ZPO_OK && (status = checkFormat()) != ZPO_OK) {
        store_.reset();
    }
    report(status, problem);
    return status == ZPO_OK && toWrite && store_->isReadOnly() ? ZPO_REG_NOT_WRITABLE : status;
}

std::uint32_t RegistryStore::checkFormat() {
    int error = 0;
    const ReadTransaction transaction(*store_, error);
    HeadRecord head{};
    return error == 0 ? getHead(transaction.get(), store_->entries(), head) : statusOfError(error);
}

// One line for a failure, and one for its end.
void RegistryStore::report(std::uint32_t status, const std::string& problem) {
    if (status == ZPO_REG_STORE_BUSY && problem == StoreEnvironment::kForeignReaders) {
        return; // a step of taking over a file that replaced another
    }
    if (status != ZPO_OK && status != reported_) {
        logInternal(
            4, fmt::format("registry {}: {}{}{}", path_, statusText(status), problem.empty() ? "" : ": ", problem));
    } else if (status == ZPO_OK && (reported_ != ZPO_OK || replaced_)) {
        logInternal(2, fmt::format("registry {}: {}", path_,
                                   reported_ != ZPO_OK ? "in use again" : "was replaced; the new file is in use"));
    }
    replaced_ = replaced_ && status != ZPO_OK;
    reported_ = status;
}

std::uint32_t RegistryStore::acquire(std::shared_lock<std::shared_mutex>& lock, bool toWrite) {
    for (;;) {
        lock = std::shared_lock<std::shared_mutex>(mutex_);
        if (isUsable(toWrite)) {
            return ZPO_OK;
        }
        lock.unlock();
        const std::uint32_t status = reopen(toWrite);
        if (status != ZPO_OK) {
            return status;
        }
    }
}

void RegistryStore::recover(int error) {
    const std::unique_lock<std::shared_mutex> lock(mutex_);
    if (store_ == nullptr) {
        return;
    }
    if (error == MDB_MAP_RESIZED) {
        mdb_env_set_mapsize(store_->env(), 0); // another process has enlarged the store: adopt its size
    } else if (error == MDB_PANIC) {
        store_.reset();
    } else {
        int dead = 0;
        mdb_reader_check(store_->env(), &dead); // free the places of processes that died
    }
}

// Removes LMDB's table of readers when it belongs to a file that was replaced; those who still use it notice within the
// interval. Nobody writes meanwhile, so the table cannot be this file's own. False when opening again is of no use.
bool RegistryStore::dropForeignReaders() {
    FileLock writeLock;
    if (lockForWriting(writeLock, Change::Clock::now() + lockTimeout_) != ZPO_OK) {
        return false;
    }
    const std::unique_lock<std::shared_mutex> lock(mutex_);
    store_.reset();
    std::string problem;
    const std::uint32_t status = StoreEnvironment::open(path_, mapBytes_, store_, problem);
    store_.reset();
    return status == ZPO_OK || (status == ZPO_REG_STORE_BUSY && problem == StoreEnvironment::kForeignReaders &&
                                unlink((path_ + "-lock").c_str()) == 0);
}

template <class Read>
std::uint32_t RegistryStore::readingOnce(const Read& read, int& error) {
    std::shared_lock<std::shared_mutex> lock;
    const std::uint32_t status = acquire(lock, false);
    if (status != ZPO_OK) {
        return status;
    }
    const ReadTransaction transaction(*store_, error);
    return error == 0 ? read(transaction.get(), store_->entries()) : statusOfError(error);
}

template <class Read>
std::uint32_t RegistryStore::reading(const Read& read) {
    int error = 0;
    std::uint32_t status = readingOnce(read, error);
    if (status == ZPO_REG_STORE_BUSY && error == 0 && dropForeignReaders()) {
        status = readingOnce(read, error);
    }
    if (error != MDB_MAP_RESIZED && error != MDB_READERS_FULL && error != MDB_PANIC) {
        return status;
    }
    recover(error);
    return readingOnce(read, error);
}

template <class Consume>
std::uint32_t RegistryStore::read(const EntryName& name, const Consume& consume) {
    return reading([&](MDB_txn* transaction, MDB_dbi entries) {
        MDB_val key = valueOf(name.encoded());
        MDB_val record{};
        const int error = mdb_get(transaction, entries, &key, &record);
        if (error != 0) {
            return statusOfError(error);
        }
        EntryKind kind{};
        std::string_view bytes;
        const std::uint32_t status = decodeRecord(viewOf(record), kind, bytes);
        return status == ZPO_OK ? consume(kind, bytes) : status;
    });
}

std::uint32_t RegistryStore::readBinary(const EntryName& name, void* buffer, std::size_t length) {
    return read(name, [&](EntryKind kind, std::string_view bytes) {
        if (kind != EntryKind::Binary) {
            return ZPO_REG_WRONG_KIND;
        }
        if (bytes.size() != length) {
            return ZPO_REG_WRONG_LENGTH;
        }
        std::memcpy(buffer, bytes.data(), length);
        return ZPO_OK;
    });
}

std::uint32_t RegistryStore::readText(const EntryName& name, char* buffer, std::size_t size) {
    return read(name, [&](EntryKind kind, std::string_view bytes) {
        if (kind != EntryKind::Text) {
            return ZPO_REG_WRONG_KIND;
        }
        if (bytes.size() >= size) {
            return ZPO_REG_BUFFER_TOO_SMALL;
        }
        std::memcpy(buffer, bytes.data(), bytes.size());
        buffer[bytes.size()] = '\0';
        return ZPO_OK;
    });
}

std::uint32_t RegistryStore::readInteger(const EntryName& name, std::uint32_t& value) {
    return read(name, [&](EntryKind kind, std::string_view bytes) {
        if (kind != EntryKind::Integer) {
            return ZPO_REG_WRONG_KIND;
        }
        value = decodeInteger(bytes);
        return ZPO_OK;
    });
}

std::uint32_t RegistryStore::readEntry(const EntryName& name, Entry& entry) {
    return read(name, [&](EntryKind kind, std::string_view bytes) {
        return decodeEntry(name.encoded(), encodeRecord(kind, bytes), entry);
    });
}

std::uint32_t RegistryStore::write(const EntryName& name, EntryKind kind, std::string_view bytes) {
    const std::uint32_t valid = checkValue(kind, bytes);
    if (valid != ZPO_OK) {
        return valid;
    }
    const std::string record = encodeRecord(kind, bytes);
    const auto putting = [&](MDB_txn* transaction, MDB_dbi entries) {
        HeadRecord head{};
        const std::uint32_t status = ensureHead(transaction, entries, head);
        return status == ZPO_OK ? put(transaction, entries, name.encoded(), record, false) : status;
    };
    return writing(std::cref(putting));
}

std::uint32_t RegistryStore::remove(const EntryName& name) {
    return writing([&](MDB_txn* transaction, MDB_dbi entries) {
        MDB_val key = valueOf(name.encoded());
        return statusOfError(mdb_del(transaction, entries, &key, nullptr));
    });
}

std::uint32_t RegistryStore::writeAll(const std::vector<Entry>& entries, bool keepExisting) {
    return writing([&](MDB_txn* transaction, MDB_dbi dbi) {
        HeadRecord head{};
        const std::uint32_t status = ensureHead(transaction, dbi, head);
        return status == ZPO_OK ? putAll(transaction, dbi, entries, keepExisting) : status;
    });
}

std::uint32_t RegistryStore::replaceAll(const std::vector<Entry>& entries) {
    return writing([&](MDB_txn* transaction, MDB_dbi dbi) {
        HeadRecord head{};
        std::uint32_t status = ensureHead(transaction, dbi, head);
        if (status == ZPO_OK) {
            status = statusOfError(mdb_drop(transaction, dbi, 0));
        }
        if (status == ZPO_OK) {
            ++head.counters.restores;
            status = putHead(transaction, dbi, head);
        }
        return status == ZPO_OK ? putAll(transaction, dbi, entries, false) : status;
    });
}

std::uint32_t RegistryStore::list(std::vector<Entry>& entries, std::size_t& damaged) {
    return reading([&](MDB_txn* transaction, MDB_dbi dbi) {
        return forEach(transaction, dbi, [&](std::string_view name, std::string_view record) {
            Entry entry;
            if (decodeEntry(name, record, entry) == ZPO_OK) {
                entries.push_back(std::move(entry));
            } else {
                ++damaged;
            }
        });
    });
}

std::uint32_t RegistryStore::countBackup() {
    return writing([&](MDB_txn* transaction, MDB_dbi entries) {
        HeadRecord head{};
        const std::uint32_t status = ensureHead(transaction, entries, head);
        ++head.counters.backups;
        return status == ZPO_OK ? putHead(transaction, entries, head) : status;
    });
}

std::uint32_t RegistryStore::checkWritable() {
    return writing([](MDB_txn* /*transaction*/, MDB_dbi /*entries*/) { return std::uint32_t{ZPO_OK}; });
}

std::uint32_t RegistryStore::counters(StoreCounters& counters) {
    nextFileCheck_ = 0; // the old file must not answer once it has been replaced
    return reading([&](MDB_txn* transaction, MDB_dbi entries) {
        HeadRecord head{};
        const std::uint32_t status = getHead(transaction, entries, head);
        counters = head.counters;
        return status;
    });
}

} // namespace zpo
