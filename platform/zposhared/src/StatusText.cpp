#include "StatusText.hpp"

#include "ZpoShared.h"
#include "osa.h"

namespace zpo {
namespace {

constexpr StatusRow kRows[] = {
    {ZPO_OK, "ZPO_OK", "success", ""},
    {ZPO_REG_BAD_ARGUMENT, "ZPO_REG_BAD_ARGUMENT", "an argument is missing, empty or too long", "correct the caller"},
    {ZPO_REG_BAD_NAME, "ZPO_REG_BAD_NAME",
     "component, section and key must have 1 to 127 bytes and no control characters", "correct the name"},
    {ZPO_REG_WRONG_KIND, "ZPO_REG_WRONG_KIND", "the entry is of another kind", "zporeg list shows the kind"},
    {ZPO_REG_WRONG_LENGTH, "ZPO_REG_WRONG_LENGTH", "the entry has another length",
     "write it with the length that its reader expects"},
    {ZPO_REG_TEXT_TOO_LONG, "ZPO_REG_TEXT_TOO_LONG", "the text is longer than 511 bytes", "shorten it"},
    {ZPO_REG_BUFFER_TOO_SMALL, "ZPO_REG_BUFFER_TOO_SMALL", "the text does not fit the buffer", "read into 512 bytes"},
    {ZPO_REG_STORE_MISSING, "ZPO_REG_STORE_MISSING", "the state directory does not exist and cannot be created",
     "create it"},
    {ZPO_REG_NO_ACCESS, "ZPO_REG_NO_ACCESS", "no permission to open the registry", "give the user or group access"},
    {ZPO_REG_NOT_WRITABLE, "ZPO_REG_NOT_WRITABLE", "the registry cannot be written",
     "permissions, read-only file system"},
    {ZPO_REG_STORE_CORRUPT, "ZPO_REG_STORE_CORRUPT", "the registry's file is damaged or is not a registry",
     "see ZpoShared.log; then start over from the last backup: delete registry.mdb, zporeg restore FILE"},
    {ZPO_REG_STORE_FULL, "ZPO_REG_STORE_FULL", "the registry has reached its largest size, or the disk is full",
     "ZPO_REGISTRY_MB, free disk space"},
    {ZPO_REG_STORE_BUSY, "ZPO_REG_STORE_BUSY", "too many threads read the registry at once", "try again"},
    {ZPO_REG_ENTRY_NOT_FOUND, "ZPO_REG_ENTRY_NOT_FOUND", "no such entry", ""},
    {ZPO_REG_ENTRY_DAMAGED, "ZPO_REG_ENTRY_DAMAGED", "the entry's record is damaged", "write or delete the entry"},
    {ZPO_REG_STORE_VERSION, "ZPO_REG_STORE_VERSION", "the registry was written by a later version",
     "install that version"},
    {ZPO_REG_DEVICE_ERROR, "ZPO_REG_DEVICE_ERROR", "the system failed to read or write the registry",
     "the system's log"},
    {ZPO_REG_NO_RESOURCES, "ZPO_REG_NO_RESOURCES", "memory or file descriptors are exhausted", ""},
    {ZPO_REG_BAD_SETTING, "ZPO_REG_BAD_SETTING",
     "ZPO_STATE_DIR, ZPO_REGISTRY_MB or ZPO_LOCK_TIMEOUT has an unusable value", "correct the environment"},
    {ZPO_REG_LOCKED, "ZPO_REG_LOCKED", "another writer keeps the registry locked",
     "see who holds registry.lock (lslocks)"},
    {ZPO_DIAG_BAD_ARGUMENT, "ZPO_DIAG_BAD_ARGUMENT", "an argument is missing, or a name is unusable",
     "correct the caller"},
    {ZPO_DIAG_UNKNOWN_HANDLE, "ZPO_DIAG_UNKNOWN_HANDLE", "no module is registered under the handle", "register first"},
    {ZPO_DIAG_TOO_MANY, "ZPO_DIAG_TOO_MANY", "too many modules are registered", "deregister"},
    {ZPO_DIAG_WRITE_FAILED, "ZPO_DIAG_WRITE_FAILED", "the log file cannot be opened or written",
     "directory, permissions, disk space"},
    {ZPO_DIAG_NO_RESOURCES, "ZPO_DIAG_NO_RESOURCES", "memory is exhausted", ""},
    {ZPO_DIAG_BAD_SETTING, "ZPO_DIAG_BAD_SETTING", "ZPO_LOG_DIR or ZPO_LOG_KB has an unusable value",
     "correct the environment"},
    {ZPO_SCHED_BAD_ARGUMENT, "ZPO_SCHED_BAD_ARGUMENT", "an argument is missing", "correct the caller"},
    {ZPO_SCHED_BAD_PATH, "ZPO_SCHED_BAD_PATH", "the program's path is unusable in a crontab",
     "the rules for paths are in PLATFORM.md, \"Task scheduler\""},
    {ZPO_SCHED_BAD_FIELD, "ZPO_SCHED_BAD_FIELD", "a time or day is outside its range", "correct the caller"},
    {ZPO_SCHED_TASK_NOT_FOUND, "ZPO_SCHED_TASK_NOT_FOUND", "no such task", "list again"},
    {ZPO_SCHED_NOT_READABLE, "ZPO_SCHED_NOT_READABLE", "the crontab cannot be read", "permissions, cron.allow"},
    {ZPO_SCHED_NOT_WRITABLE, "ZPO_SCHED_NOT_WRITABLE", "the crontab cannot be written",
     "directory, permissions, disk space"},
    {ZPO_SCHED_TABLE_TOO_LARGE, "ZPO_SCHED_TABLE_TOO_LARGE", "the crontab is larger than 1 MiB", ""},
    {ZPO_SCHED_BUSY, "ZPO_SCHED_BUSY", "another process keeps the crontab locked",
     "see who holds crontab.lock (lslocks)"},
    {ZPO_SCHED_LOCK_FAILED, "ZPO_SCHED_LOCK_FAILED", "the crontab's lock file in the state directory cannot be opened",
     "state directory, permissions"},
    {ZPO_SCHED_NO_PROGRAM, "ZPO_SCHED_NO_PROGRAM", "the crontab program is not installed",
     "install cron or set ZPO_CRONTAB_DIR"},
    {ZPO_SCHED_NO_USER, "ZPO_SCHED_NO_USER", "the process's user has no name, or one with '.' or '/'", ""},
    {ZPO_SCHED_NO_RESOURCES, "ZPO_SCHED_NO_RESOURCES", "memory, processes or file descriptors are exhausted", ""},
    {ZPO_SCHED_BAD_SETTING, "ZPO_SCHED_BAD_SETTING",
     "ZPO_CRONTAB_DIR, ZPO_CRONTAB_SUNDAY, ZPO_STATE_DIR or ZPO_LOCK_TIMEOUT has an unusable value",
     "correct the environment"},
    {ZPO_NOTIFY_BAD_ARGUMENT, "ZPO_NOTIFY_BAD_ARGUMENT", "an argument is missing, or the kind is not 1 to 3",
     "correct the caller"},
    {ZPO_NOTIFY_TOO_MANY, "ZPO_NOTIFY_TOO_MANY", "too many names are registered", ""},
    {ZPO_NOTIFY_NO_THREAD, "ZPO_NOTIFY_NO_THREAD", "the notification thread cannot be started", ""},
    {ZPO_NOTIFY_BAD_SETTING, "ZPO_NOTIFY_BAD_SETTING",
     "ZPO_STATE_DIR, ZPO_REGISTRY_MB or ZPO_LOCK_TIMEOUT has an unusable value", "correct the environment"},
    {OSA_BAD_ARGUMENT, "OSA_BAD_ARGUMENT", "a message has 1 to 4096 bytes", "correct the caller"},
    {OSA_BAD_NAME, "OSA_BAD_NAME", "a name has 1 to 64 letters, digits, '.', '_' or '-' and no leading dot",
     "correct the name"},
    {OSA_QUEUE_NOT_FOUND, "OSA_QUEUE_NOT_FOUND", "no such queue", "start its owner"},
    {OSA_QUEUE_FULL, "OSA_QUEUE_FULL", "the queue is full", "osqueue listen, or delete the queue"},
    {OSA_TIMEOUT, "OSA_TIMEOUT", "no message in time", ""},
    {OSA_BUFFER_TOO_SMALL, "OSA_BUFFER_TOO_SMALL", "the message is larger than the buffer", "receive into 4096 bytes"},
    {OSA_NO_ACCESS, "OSA_NO_ACCESS", "no permission: osqueue list shows who has it, ipcrm -q ID removes the queue", ""},
    {OSA_NO_RESOURCES, "OSA_NO_RESOURCES", "the system has no room for it", "ipcs -q, kernel.msgmni"},
    {OSA_STATE_DIRECTORY, "OSA_STATE_DIRECTORY",
     "the state directory is missing or not writable, or ZPO_STATE_DIR or ZPO_LOCK_TIMEOUT is unusable", ""},
    {OSA_SYSTEM_ERROR, "OSA_SYSTEM_ERROR", "the system failed", "the system's log"},
    {OSA_BUSY, "OSA_BUSY", "another process keeps the queues' names locked", "see who holds queues/.lock (lslocks)"},
};

} // namespace

const StatusRow* findStatus(std::uint32_t status) {
    return findRow(kRows, status);
}

std::string statusText(std::uint32_t status) {
    return textWithNumber(findStatus(status), status, "unknown status");
}

} // namespace zpo
