#include "PullStatistics.hpp"

#include "RecordFormat.hpp"
#include "StatusText.hpp"
#include "ZpoShared.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace cdrsim {
namespace {

constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
constexpr const char* kTimeForm = "%Y-%m-%d %H:%M:%S";
constexpr unsigned char kPull = 3;

void require(std::uint32_t status, const char* key) {
    if (status != ZPO_OK) {
        throw std::runtime_error(std::string("CDR CDRPull ") + key + ": " + zpo::statusText(status));
    }
}

/// An absent counter is 0. Counters are kept in the device's own byte order.
std::uint32_t counter(const char* key) {
    std::uint32_t value = 0;
    const std::uint32_t status = ZpoGetRegEntryBinary("CDR", "CDRPull", key, &value, sizeof value);
    require(status == ZPO_REG_ENTRY_NOT_FOUND ? ZPO_OK : status, key);
    return value;
}

/// Sets a counter; it stays at its highest value instead of beginning again.
void setCounter(const char* key, std::uint64_t value) {
    const auto stored = static_cast<std::uint32_t>(std::min(value, kMost));
    require(ZpoSetRegEntryBinary("CDR", "CDRPull", key, &stored, sizeof stored), key);
}

void add(const char* key, std::uint64_t more) {
    setCounter(key, counter(key) + more);
}

void setText(const char* key, const std::string& text) {
    require(ZpoSetRegEntryString("CDR", "CDRPull", key, text.c_str()), key);
}

} // namespace

void countPull(const std::vector<FinishedFile>& files, std::time_t now) {
    std::uint64_t bytes = 0;
    std::uint64_t largest = counter("Pull-LargestFile");
    std::uint64_t smallest = counter("Pull-NumberOfFiles") == 0 ? kMost : counter("Pull-SmallestFile");
    for (const FinishedFile& file : files) {
        bytes += file.size;
        largest = std::max(largest, file.size);
        smallest = std::min(smallest, file.size);
    }
    setCounter("Pull-LargestFile", largest);
    setCounter("Pull-SmallestFile", smallest);
    add("Pull-NumberOfBytes", bytes);
    add("Pull-NumberOfFiles", files.size());
    add("Pull-NumSuccesses", 1);
    setText("Pull-MostRecentSuccess", timeText(now, kTimeForm));
}

void countFailedPull(const std::string& reason, std::time_t now) {
    setText("Pull-MostRecentFailureReason", reason);
    setText("Pull-MostRecentFailure", timeText(now, kTimeForm));
    add("Pull-NumFailures", 1);
}

bool isPullSet() {
    unsigned char type = kPull;
    return ZpoGetRegEntryBinary("CDR", "CDRPush", "TransferType", &type, 1) != ZPO_OK || type == kPull;
}

} // namespace cdrsim
