#include "StatusText.hpp"

#include "ZpoShared.h"
#include "osa.h"

#include <fmt/format.h>

namespace zpo {
namespace {

struct Row {
    std::uint32_t status;
    const char* text;
};

constexpr Row kRows[] = {
    {ZPO_OK, "success"},
    {ZPO_REG_BAD_ARGUMENT, "an argument is missing, empty or too long"},
    {ZPO_REG_BAD_NAME, "component, section and key must have 1 to 127 bytes and no control characters"},
    {ZPO_REG_WRONG_KIND, "the entry is of another kind"},
    {ZPO_REG_WRONG_LENGTH, "the entry has another length"},
    {ZPO_REG_TEXT_TOO_LONG, "the text is longer than 511 bytes"},
    {ZPO_REG_BUFFER_TOO_SMALL, "the text does not fit the buffer"},
    {ZPO_REG_STORE_MISSING, "the state directory does not exist and cannot be created"},
    {ZPO_REG_NO_ACCESS, "no permission to open the registry"},
    {ZPO_REG_NOT_WRITABLE, "the registry cannot be written"},
    {ZPO_REG_STORE_CORRUPT, "the registry's file is damaged or is not a registry"},
    {ZPO_REG_STORE_FULL, "the registry has reached its largest size, or the disk is full"},
    {ZPO_REG_STORE_BUSY, "too many threads read the registry at once"},
    {ZPO_REG_ENTRY_NOT_FOUND, "no such entry"},
    {ZPO_REG_ENTRY_DAMAGED, "the entry's record is damaged"},
    {ZPO_REG_STORE_VERSION, "the registry was written by a later version"},
    {ZPO_REG_DEVICE_ERROR, "the system failed to read or write the registry"},
    {ZPO_REG_NO_RESOURCES, "memory or file descriptors are exhausted"},
    {ZPO_REG_BAD_SETTING, "ZPO_STATE_DIR, ZPO_REGISTRY_MB or ZPO_LOCK_TIMEOUT has an unusable value"},
    {ZPO_REG_LOCKED, "another writer keeps the registry locked"},
    {ZPO_DIAG_BAD_ARGUMENT, "an argument is missing, or a name is unusable"},
    {ZPO_DIAG_UNKNOWN_HANDLE, "no module is registered under the handle"},
    {ZPO_DIAG_TOO_MANY, "too many modules are registered"},
    {ZPO_DIAG_WRITE_FAILED, "the log file cannot be opened or written"},
    {ZPO_DIAG_NO_RESOURCES, "memory is exhausted"},
    {ZPO_DIAG_BAD_SETTING, "ZPO_LOG_DIR or ZPO_LOG_KB has an unusable value"},
    {ZPO_SCHED_BAD_ARGUMENT, "an argument is missing"},
    {ZPO_SCHED_BAD_PATH, "the program's path is unusable in a crontab"},
    {ZPO_SCHED_BAD_FIELD, "a time or day is outside its range"},
    {ZPO_SCHED_TASK_NOT_FOUND, "no such task"},
    {ZPO_SCHED_NOT_READABLE, "the crontab cannot be read"},
    {ZPO_SCHED_NOT_WRITABLE, "the crontab cannot be written"},
    {ZPO_SCHED_TABLE_TOO_LARGE, "the crontab is larger than 1 MiB"},
    {ZPO_SCHED_BUSY, "another process keeps the crontab locked"},
    {ZPO_SCHED_LOCK_FAILED, "the crontab's lock file in the state directory cannot be opened"},
    {ZPO_SCHED_NO_PROGRAM, "the crontab program is not installed"},
    {ZPO_SCHED_NO_USER, "the process's user has no name"},
    {ZPO_SCHED_NO_RESOURCES, "memory, processes or file descriptors are exhausted"},
    {ZPO_SCHED_BAD_SETTING,
     "ZPO_CRONTAB_DIR, ZPO_CRONTAB_SUNDAY, ZPO_STATE_DIR or ZPO_LOCK_TIMEOUT has an unusable value"},
    {ZPO_NOTIFY_BAD_ARGUMENT, "an argument is missing, or the kind is not 1 to 3"},
    {ZPO_NOTIFY_TOO_MANY, "too many names are registered"},
    {ZPO_NOTIFY_NO_THREAD, "the notification thread cannot be started"},
    {ZPO_NOTIFY_BAD_SETTING, "ZPO_STATE_DIR, ZPO_REGISTRY_MB or ZPO_LOCK_TIMEOUT has an unusable value"},
    {OSA_BAD_ARGUMENT, "a message has 1 to 4096 bytes"},
    {OSA_BAD_NAME, "a name has 1 to 64 letters, digits, '.', '_' or '-' and no leading dot"},
    {OSA_QUEUE_NOT_FOUND, "no such queue"},
    {OSA_QUEUE_FULL, "the queue is full"},
    {OSA_TIMEOUT, "no message in time"},
    {OSA_BUFFER_TOO_SMALL, "the message is larger than the buffer"},
    {OSA_NO_ACCESS, "no permission: osqueue list shows who has it, ipcrm -q ID removes the queue"},
    {OSA_NO_RESOURCES, "the system has no room for it"},
    {OSA_STATE_DIRECTORY,
     "the state directory is missing or not writable, or ZPO_STATE_DIR or ZPO_LOCK_TIMEOUT is unusable"},
    {OSA_SYSTEM_ERROR, "the system failed"},
    {OSA_BUSY, "another process keeps the queues' names locked"},
};

} // namespace

const char* findStatusText(std::uint32_t status) {
    for (const Row& row : kRows) {
        if (row.status == status) {
            return row.text;
        }
    }
    return nullptr;
}

std::string statusText(std::uint32_t status) {
    const char* const text = findStatusText(status);
    return fmt::format("{} ({:#x})", text == nullptr ? "unknown status" : text, status);
}

} // namespace zpo
