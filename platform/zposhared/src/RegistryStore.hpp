#pragma once

#include "ChangeQueue.hpp"
#include "Files.hpp"
#include "RegistryEntry.hpp"
#include "StoreEnvironment.hpp"
#include "StoreHead.hpp"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <vector>

namespace zpo {

/// The configuration registry in one LMDB file. Opened at first use and again after a failure or when the file has been
/// replaced. All operations return a status of ZpoShared.h and may be called from any thread; EntryName has checked the
/// names.
class RegistryStore {
  public:
    /// The store `directory`/registry.mdb, at most `mapBytes` large. Nothing is opened yet.
    /// A write waits at most `lockTimeout` for another writer: ZPO_REG_LOCKED.
    RegistryStore(const std::string& directory, std::size_t mapBytes, std::chrono::milliseconds lockTimeout);

    std::uint32_t readBinary(const EntryName& name, void* buffer, std::size_t length);
    std::uint32_t readText(const EntryName& name, char* buffer, std::size_t size);
    std::uint32_t readInteger(const EntryName& name, std::uint32_t& value);
    std::uint32_t readEntry(const EntryName& name, Entry& entry);

    std::uint32_t write(const EntryName& name, EntryKind kind, std::string_view bytes);
    std::uint32_t remove(const EntryName& name);

    /// Writes all entries or none; with `keepExisting` those whose names exist already stay as they are.
    std::uint32_t writeAll(const std::vector<Entry>& entries, bool keepExisting);
    /// Replaces the whole content by the entries, or changes nothing, and counts a restore in the same transaction.
    std::uint32_t replaceAll(const std::vector<Entry>& entries);
    /// Appends all entries, in the order of their names. Adds the number of damaged records, which are skipped, to
    /// `damaged`.
    std::uint32_t list(std::vector<Entry>& entries, std::size_t& damaged);

    std::uint32_t countBackup();
    /// Goes all the way of a write without one: neither the disk nor a counter changes.
    std::uint32_t checkWritable();
    /// Reads the counters; a store that was never written has all zero.
    std::uint32_t counters(StoreCounters& counters);

  private:
    using Work = Change::Work;
    using Deadline = Change::Clock::time_point;

    // `read` is a Work, `consume` takes the kind and the bytes of an entry; templates, since reads are many and short.
    template <class Read>
    std::uint32_t reading(const Read& read);
    template <class Read>
    std::uint32_t readingOnce(const Read& read, int& error);
    template <class Consume>
    std::uint32_t read(const EntryName& name, const Consume& consume);
    std::uint32_t writing(const Work& work);
    void makeAll(ChangeQueue::Turn& turn, Change& own);
    std::uint32_t committing(const Work& work, Deadline until);
    std::uint32_t committingOnce(const Work& work, Deadline until, int& error);
    std::uint32_t lockForWriting(FileLock& lock, Deadline until);
    std::uint32_t acquire(std::shared_lock<std::shared_mutex>& lock, bool toWrite);
    std::uint32_t reopen(bool toWrite);
    std::uint32_t checkFormat();
    bool isUsable(bool toWrite);
    void recover(int error);
    bool dropForeignReaders();
    void report(std::uint32_t status, const std::string& problem);

    const std::string path_;
    const std::string lockPath_; ///< locked while a thread of any process writes
    const std::size_t mapBytes_;
    const std::chrono::milliseconds lockTimeout_;
    ChangeQueue changes_;
    std::shared_mutex mutex_; ///< shared: using store_; exclusive: replacing it
    std::unique_ptr<StoreEnvironment> store_;
    std::atomic<std::int64_t> nextFileCheck_{0};
    std::uint32_t reported_ = 0;
    bool replaced_ = false; ///< the path has led to another file since the last success
};

} // namespace zpo
