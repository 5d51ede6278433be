#include "ServiceQueue.hpp"

#include "StatusText.hpp"
#include "ZpoShared.h"
#include "osa.h"

#include <array>
#include <stdexcept>
#include <thread>

namespace cdrsim {
namespace {

constexpr const char* kName = "CDRService";

void require(std::uint32_t status) {
    if (status != OSA_OK) {
        throw std::runtime_error(std::string("the queue ") + kName + ": " + zpo::statusText(status));
    }
}

void onRestore(unsigned long) {
    std::uint32_t id = 0;
    if (osQueueGetId(kName, &id) == OSA_OK) {
        osQueueSend(id, kSettingsChanged, 1); // a full queue holds enough messages to re-read the settings
    }
}

} // namespace

ServiceQueue::ServiceQueue() {
    create();
    const std::uint32_t status = ZpoNotifyRegBackupAndRestore("cdrsim", onRestore, ZPO_EVENT_RESTORE);
    if (status != ZPO_OK) {
        throw std::runtime_error("restores of the registry are not told: " + zpo::statusText(status));
    }
}

ServiceQueue::~ServiceQueue() {
    osQueueDelete(id_);
}

void ServiceQueue::create() {
    require(osQueueCreate(kName, &id_));
}

std::string ServiceQueue::receive(std::chrono::milliseconds wait) {
    std::array<char, OSA_MAX_MESSAGE> buffer{};
    std::uint32_t length = 0;
    const std::uint32_t status =
        osQueueReceive(id_, buffer.data(), OSA_MAX_MESSAGE, &length, static_cast<std::int32_t>(wait.count()));
    if (status == OSA_OK) {
        return {buffer.data(), length};
    }
    if (status != OSA_TIMEOUT) {
        std::this_thread::sleep_for(wait);
        create();
    }
    return "";
}

} // namespace cdrsim
