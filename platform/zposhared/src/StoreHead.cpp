#include "StoreHead.hpp"

#include "StoreEnvironment.hpp"
#include "ZpoShared.h"

#include <cstring>
#include <random>

namespace zpo {
namespace {

constexpr std::string_view kHeadKey = "\1store";
constexpr std::uint64_t kFormatNumber = 1;

static_assert(sizeof(HeadRecord) == 32, "the record is stored as it lies in memory");

std::uint64_t newIdentity() {
    std::random_device random;
    return (std::uint64_t{random()} << 32U | random()) | 1U;
}

} // namespace

MDB_val valueOf(std::string_view bytes) {
    return {bytes.size(), const_cast<char*>(bytes.data())};
}

std::string_view viewOf(const MDB_val& value) {
    return {static_cast<const char*>(value.mv_data), value.mv_size};
}

bool isHeadKey(std::string_view key) {
    return !key.empty() && key.front() == kHeadKey.front();
}

std::uint32_t getHead(MDB_txn* transaction, MDB_dbi entries, HeadRecord& head) {
    MDB_val key = valueOf(kHeadKey);
    MDB_val value{};
    const int error = mdb_get(transaction, entries, &key, &value);
    if (error == MDB_NOTFOUND) {
        head = {};
        return ZPO_OK;
    }
    if (error != 0) {
        return statusOfError(error);
    }
    if (value.mv_size != sizeof head) {
        return ZPO_REG_STORE_CORRUPT;
    }
    std::memcpy(&head, value.mv_data, sizeof head);
    return head.format > kFormatNumber ? ZPO_REG_STORE_VERSION : ZPO_OK;
}

std::uint32_t putHead(MDB_txn* transaction, MDB_dbi entries, const HeadRecord& head) {
    MDB_val key = valueOf(kHeadKey);
    MDB_val value = valueOf({reinterpret_cast<const char*>(&head), sizeof head});
    return statusOfError(mdb_put(transaction, entries, &key, &value, 0));
}

std::uint32_t ensureHead(MDB_txn* transaction, MDB_dbi entries, HeadRecord& head) {
    const std::uint32_t status = getHead(transaction, entries, head);
    if (status != ZPO_OK || head.format != 0) {
        return status;
    }
    head.format = kFormatNumber;
    head.counters.identity = newIdentity();
    return putHead(transaction, entries, head);
}

} // namespace zpo
