#include "StoreEnvironment.hpp"

#include "Files.hpp"
#include "StoreCheck.hpp"
#include "ZpoShared.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace zpo {
namespace {

// LMDB needs 64 bytes per reader and 128 of its own. The rest gives more places.
constexpr off_t kLockFileBytes = off_t{kMaxReaders} * 64 + 4096;
constexpr int kHeadAttempts = 20;

// Checks the file before LMDB maps it. A missing file is not an error.
std::uint32_t checkFile(const std::string& path, std::string& problem) {
    const UniqueFd fd = openFile(path, O_RDONLY | O_NONBLOCK);
    if (!fd) {
        return errno == ENOENT ? ZPO_OK : statusOfError(errno);
    }
    problem = checkStoreHeads(fd.get());
    return problem.empty() ? ZPO_OK : ZPO_REG_STORE_CORRUPT;
}

// LMDB extends its lock file without allocating it, and a full disk would end in a bus error when it is first touched.
std::uint32_t allocateLockFile(const std::string& path) {
    const UniqueFd fd = openFile(path + "-lock", O_RDWR | O_CREAT | O_NONBLOCK, 0660);
    struct stat status {};
    if (!fd || fstat(fd.get(), &status) != 0 || status.st_size >= kLockFileBytes) {
        return ZPO_OK; // when it cannot be opened, LMDB says why
    }
    return statusOfError(posix_fallocate(fd.get(), 0, kLockFileBytes));
}

// 0 when there is none: on a read-only file system.
ino_t inodeAt(const std::string& readersPath) {
    struct stat status {};
    return stat(readersPath.c_str(), &status) == 0 ? status.st_ino : 0;
}

std::uint32_t ensureParent(const std::string& path) {
    const int error = ensureDirectory(directoryOf(path));
    return error == EACCES || error == EPERM || error == EROFS ? ZPO_REG_STORE_MISSING : statusOfError(error);
}

} // namespace

std::uint32_t statusOfError(int error) {
    switch (error) {
    case 0:
        return ZPO_OK;
    case MDB_NOTFOUND:
        return ZPO_REG_ENTRY_NOT_FOUND;
    case MDB_MAP_FULL:
    case MDB_TXN_FULL:
    case ENOSPC:
    case EDQUOT:
        return ZPO_REG_STORE_FULL;
    case MDB_READERS_FULL:
        return ZPO_REG_STORE_BUSY;
    case MDB_CORRUPTED:
    case MDB_PAGE_NOTFOUND:
    case MDB_PANIC:
    case MDB_INVALID:
    case MDB_CURSOR_FULL:
    case MDB_PAGE_FULL:
    case EISDIR:
        return ZPO_REG_STORE_CORRUPT;
    case MDB_VERSION_MISMATCH:
        return ZPO_REG_STORE_VERSION;
    case EACCES:
    case EPERM:
        return ZPO_REG_NO_ACCESS;
    case EROFS:
        return ZPO_REG_NOT_WRITABLE;
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
        return ZPO_REG_STORE_MISSING;
    case ENOMEM:
    case EMFILE:
    case ENFILE:
    case EAGAIN:
        return ZPO_REG_NO_RESOURCES;
    default:
        return ZPO_REG_DEVICE_ERROR;
    }
}

std::uint32_t StoreEnvironment::open(const std::string& path, std::size_t mapBytes,
                                     std::unique_ptr<StoreEnvironment>& result, std::string& problem) {
    std::uint32_t status = ensureParent(path);
    if (status == ZPO_OK) {
        status = checkFile(path, problem);
    }
    if (status == ZPO_OK) {
        status = allocateLockFile(path);
    }
    if (status != ZPO_OK) {
        return status;
    }
    std::unique_ptr<StoreEnvironment> store(new StoreEnvironment);
    store->path_ = path;
    store->readersPath_ = path + "-lock";
    status = store->openMap(mapBytes, 0);
    if (status == ZPO_REG_NO_ACCESS || status == ZPO_REG_NOT_WRITABLE) {
        store->readOnly_ = true;
        status = store->openMap(mapBytes, MDB_RDONLY);
    }
    if (status == ZPO_OK) {
        status = store->checkPages(problem);
    }
    if (status == ZPO_OK) {
        status = store->rememberFile();
    }
    if (status == ZPO_OK) {
        result = std::move(store);
    }
    return status;
}

StoreEnvironment::~StoreEnvironment() {
    idle_.consume_all(mdb_txn_abort);
    mdb_env_close(env_);
}

std::uint32_t StoreEnvironment::openMap(std::size_t mapBytes, unsigned flags) {
    mdb_env_close(env_); // of the first attempt, or null
    env_ = nullptr;
    int error = mdb_env_create(&env_);
    if (error == 0) {
        error = mdb_env_set_mapsize(env_, mapBytes);
    }
    if (error == 0) {
        error = mdb_env_set_maxreaders(env_, kMaxReaders);
    }
    if (error == 0) {
        // MDB_NOTLS: a read transaction belongs to no thread.
        error = mdb_env_open(env_, path_.c_str(), flags | MDB_NOSUBDIR | MDB_NOTLS, 0660);
    }
    int dead = 0;
    if (error == 0) {
        error = mdb_reader_check(env_, &dead);
    }
    return statusOfError(error);
}

std::uint32_t StoreEnvironment::checkPages(std::string& problem) {
    mdb_filehandle_t fd = -1;
    mdb_env_get_fd(env_, &fd);
    bool headReplaced = true;
    for (int attempt = 0; headReplaced && attempt < kHeadAttempts; ++attempt) {
        MDB_txn* transaction = nullptr;
        int error = mdb_txn_begin(env_, nullptr, MDB_RDONLY, &transaction);
        if (error != 0) {
            return statusOfError(error);
        }
        problem = checkStorePages(fd, mdb_txn_id(transaction), headReplaced);
        if (problem.empty() && !headReplaced) {
            error = mdb_dbi_open(transaction, nullptr, 0, &entries_);
        }
        mdb_txn_abort(transaction);
        if (!problem.empty() || error != 0) {
            return problem.empty() ? statusOfError(error) : ZPO_REG_STORE_CORRUPT;
        }
    }
    problem = headReplaced ? kForeignReaders : "";
    return headReplaced ? ZPO_REG_STORE_BUSY : ZPO_OK;
}

std::uint32_t StoreEnvironment::rememberFile() {
    mdb_filehandle_t fd = -1;
    mdb_env_get_fd(env_, &fd);
    struct stat status {};
    if (fstat(fd, &status) != 0) {
        return statusOfError(errno);
    }
    device_ = status.st_dev;
    inode_ = status.st_ino;
    size_ = status.st_size;
    readersInode_ = inodeAt(readersPath_);
    return ZPO_OK;
}

void StoreEnvironment::keepName() {
    if (!nameKept_) {
        syncDirectory(directoryOf(path_));
        nameKept_ = true;
    }
}

ReadTransaction::ReadTransaction(StoreEnvironment& store, int& error) : store_(store) {
    error = store_.idle_.pop(transaction_) ? mdb_txn_renew(transaction_)
                                           : mdb_txn_begin(store_.env_, nullptr, MDB_RDONLY, &transaction_);
    if (error != 0) {
        mdb_txn_abort(transaction_); // null is allowed
        transaction_ = nullptr;
    }
}

ReadTransaction::~ReadTransaction() {
    if (transaction_ == nullptr) {
        return;
    }
    mdb_txn_reset(transaction_);
    if (!store_.idle_.push(transaction_)) {
        mdb_txn_abort(transaction_);
    }
}

bool StoreEnvironment::isCurrent() const {
    struct stat status {};
    return stat(path_.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_ &&
           status.st_size >= size_ && inodeAt(readersPath_) == readersInode_;
}

} // namespace zpo
