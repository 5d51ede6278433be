#pragma once

#include <cstdint>
#include <lmdb.h>
#include <string_view>

namespace zpo {

/// What the store counts. Each store has its own identity, so counters of different stores are never compared.
struct StoreCounters {
    std::uint64_t identity = 0;
    std::uint64_t backups = 0;
    std::uint64_t restores = 0;
};

/// The store's own record, under a key that no entry can have.
struct HeadRecord {
    std::uint64_t format = 0; ///< 0: never written
    StoreCounters counters;
};

/// Converts to LMDB's type and back. LMDB does not write to the bytes.
MDB_val valueOf(std::string_view bytes);
std::string_view viewOf(const MDB_val& value);

/// Whether a stored key is the store's own, not an entry's name.
bool isHeadKey(std::string_view key);

/// Reads the record; a new store's is all zero. ZPO_REG_STORE_VERSION when a later version of the library wrote it.
std::uint32_t getHead(MDB_txn* transaction, MDB_dbi entries, HeadRecord& head);
std::uint32_t putHead(MDB_txn* transaction, MDB_dbi entries, const HeadRecord& head);

/// Reads the record and gives a new store its format number and identity. Every write but a deletion begins with this.
std::uint32_t ensureHead(MDB_txn* transaction, MDB_dbi entries, HeadRecord& head);

} // namespace zpo
