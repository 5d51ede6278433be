#include "QueueStatus.hpp"

#include "osa.h"

namespace zpo {
namespace {

constexpr StatusRow kQueueRows[] = {
    {OSA_BAD_ARGUMENT, "OSA_BAD_ARGUMENT", "a message has 1 to 4096 bytes", "correct the caller"},
    {OSA_BAD_NAME, "OSA_BAD_NAME", "a name has 1 to 64 letters, digits, '.', '_' or '-' and no leading dot",
     "correct the name"},
    {OSA_QUEUE_NOT_FOUND, "OSA_QUEUE_NOT_FOUND", "no such queue", "start its owner"},
    {OSA_QUEUE_FULL, "OSA_QUEUE_FULL", "the queue is full", "osqueue listen, or delete the queue"},
    {OSA_TIMEOUT, "OSA_TIMEOUT", "no message in time", ""},
    {OSA_BUFFER_TOO_SMALL, "OSA_BUFFER_TOO_SMALL", "the next message is larger than the buffer",
     "receive into 4096 bytes"},
    {OSA_NO_ACCESS, "OSA_NO_ACCESS", "no permission", "osqueue list shows who has it, ipcrm -q ID removes the queue"},
    {OSA_NO_RESOURCES, "OSA_NO_RESOURCES", "the system has no room for it", "ipcs -q, kernel.msgmni"},
    {OSA_STATE_DIRECTORY, "OSA_STATE_DIRECTORY",
     "the state directory is missing or not writable, or ZPO_STATE_DIR or ZPO_LOCK_TIMEOUT is unusable", ""},
    {OSA_SYSTEM_ERROR, "OSA_SYSTEM_ERROR", "the system failed", "the system's log"},
    {OSA_BUSY, "OSA_BUSY", "another process keeps the queues' names locked", "see who holds queues/.lock (lslocks)"},
};

} // namespace

const StatusRow* findQueueStatus(std::uint32_t status) {
    return findRow(kQueueRows, status);
}

std::string queueStatusText(std::uint32_t status) {
    return textWithNumber(findQueueStatus(status), status, "the system failed");
}

} // namespace zpo
