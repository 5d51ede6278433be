// LMDB without anything around it: the floor of the registry.
#pragma once

#include <lmdb.h>

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// Throws std::runtime_error on failure.
class RawStore {
  public:
    /// Opens the file, which the platform library of this process must not use.
    explicit RawStore(const std::string& file, std::size_t mapBytes = std::size_t{16} << 20U);
    ~RawStore();
    RawStore(const RawStore&) = delete;
    RawStore& operator=(const RawStore&) = delete;

    /// Reads each entry in a transaction of its own; entries may be absent.
    void read(const std::vector<std::string>& keys);
    /// Changes an entry and waits until it is on the disk.
    void commit();

  private:
    MDB_env* env_ = nullptr;
    MDB_dbi entries_ = 0;
    MDB_txn* reader_ = nullptr;
    unsigned changes_ = 0;
};

} // namespace bench
