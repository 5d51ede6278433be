#pragma once

#include <boost/lockfree/stack.hpp>
#include <cstdint>
#include <lmdb.h>
#include <memory>
#include <string>
#include <sys/types.h>

namespace zpo {

constexpr unsigned kMaxReaders = 1024; ///< threads of all processes that read at once

/// The status of ZpoShared.h for an LMDB or system error code.
std::uint32_t statusOfError(int error);

/// An opened and checked store file: LMDB's environment and what identifies the file.
class StoreEnvironment {
  public:
    static constexpr const char* kForeignReaders = "the table of readers belongs to another file";
    /// Opens the file `path`, creating it and its directory if needed; opens it read-only when it cannot be written.
    /// Returns a status; for a damaged file `problem` says what is wrong. LMDB's table of readers that belongs to
    /// another file, because a process still has a file open that was replaced, gives ZPO_REG_STORE_BUSY and
    /// kForeignReaders; while somebody writes, so may this file's own.
    static std::uint32_t open(const std::string& path, std::size_t mapBytes, std::unique_ptr<StoreEnvironment>& result,
                              std::string& problem);
    StoreEnvironment(const StoreEnvironment&) = delete;
    StoreEnvironment& operator=(const StoreEnvironment&) = delete;
    ~StoreEnvironment();

    MDB_env* env() const { return env_; }
    MDB_dbi entries() const { return entries_; }
    bool isReadOnly() const { return readOnly_; }
    /// Whether the path still leads to this file and its table of readers, and the file has not been truncated.
    bool isCurrent() const;
    /// To be called by each writer: after a power cut the file's name must be there too, not only its content.
    void keepName();

  private:
    friend class ReadTransaction;

    StoreEnvironment() = default;
    std::uint32_t openMap(std::size_t mapBytes, unsigned flags);
    std::uint32_t checkPages(std::string& problem);
    std::uint32_t rememberFile();

    MDB_env* env_ = nullptr;
    MDB_dbi entries_ = 0;
    bool readOnly_ = false;
    bool nameKept_ = false;
    std::string path_;
    std::string readersPath_;
    dev_t device_ = 0;
    ino_t inode_ = 0;
    ino_t readersInode_ = 0;
    off_t size_ = 0;
    /// Read transactions that have been reset, for the next readers.
    boost::lockfree::stack<MDB_txn*, boost::lockfree::capacity<kMaxReaders>> idle_;
};

/// A view of the store as it is now, for one thread. Ended ones are kept and begun again, which neither allocates nor
/// looks for a place in LMDB's table of readers. Must end before the environment does.
class ReadTransaction {
  public:
    /// `error` becomes LMDB's error code, 0 for success.
    ReadTransaction(StoreEnvironment& store, int& error);
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;
    ~ReadTransaction();

    MDB_txn* get() const { return transaction_; }

  private:
    StoreEnvironment& store_;
    MDB_txn* transaction_ = nullptr;
};

} // namespace zpo
