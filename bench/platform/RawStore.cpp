#include "RawStore.hpp"

#include <stdexcept>

namespace bench {
namespace {

void require(int error) {
    if (error != 0) {
        throw std::runtime_error(std::string("LMDB: ") + mdb_strerror(error));
    }
}

MDB_val valueOf(const std::string& bytes) {
    return {bytes.size(), const_cast<char*>(bytes.data())};
}

} // namespace

RawStore::RawStore(const std::string& file, std::size_t mapBytes) {
    require(mdb_env_create(&env_));
    require(mdb_env_set_mapsize(env_, mapBytes));
    require(mdb_env_open(env_, file.c_str(), MDB_NOSUBDIR | MDB_NOTLS, 0600));
    require(mdb_txn_begin(env_, nullptr, MDB_RDONLY, &reader_));
    require(mdb_dbi_open(reader_, nullptr, 0, &entries_));
    mdb_txn_reset(reader_);
}

RawStore::~RawStore() {
    mdb_txn_abort(reader_);
    mdb_env_close(env_);
}

void RawStore::read(const std::vector<std::string>& keys) {
    for (const std::string& text : keys) {
        MDB_val key = valueOf(text);
        MDB_val value{};
        require(mdb_txn_renew(reader_));
        const int error = mdb_get(reader_, entries_, &key, &value);
        mdb_txn_reset(reader_);
        require(error == MDB_NOTFOUND ? 0 : error);
    }
}

void RawStore::commit() {
    MDB_txn* transaction = nullptr;
    require(mdb_txn_begin(env_, nullptr, 0, &transaction));
    const std::string name("raw");
    const std::string text = std::to_string(++changes_);
    MDB_val key = valueOf(name);
    MDB_val value = valueOf(text);
    require(mdb_put(transaction, entries_, &key, &value, 0));
    require(mdb_txn_commit(transaction));
}

} // namespace bench
