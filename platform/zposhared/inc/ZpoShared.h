/*
 * The shared platform library: configuration registry, diagnostic log, task scheduler, backup/restore notification.
 *
 * Every function that can fail returns a status, 0 (ZPO_OK) on success; the statuses are listed below and described,
 * with what to do about them, in docs/PLATFORM.md. No function keeps a pointer passed to it, except the notification
 * callback. Every function may be called from any thread, and in a forked child. No function throws.
 *
 * Environment (read once, at first use; ignored in set-user-ID programs; a directory must be an absolute path):
 *   ZPO_STATE_DIR      registry, locks, queue names           default /var/lib/zpo
 *   ZPO_LOG_DIR        the log files                          default /var/log/zpo
 *   ZPO_CRONTAB_DIR    a crontabs directory to edit           default none: the crontab program is used
 *   ZPO_CRONTAB_SUNDAY how a crontab line names day 7: 7 or 0   default 7
 *   ZPO_REGISTRY_MB    largest size of the registry, 1-1024   default 16
 *   ZPO_LOG_KB         size at which a log is rotated, 16-65536   default 1024
 *   ZPO_LOCK_TIMEOUT   longest wait for another process's lock, 1-60 seconds   default 5
 */
#pragma once

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define ZPO_API __attribute__((visibility("default")))
#else
#define ZPO_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Statuses ---------------------------------------------------------------------------------------------------- */

#define ZPO_OK 0u

/* configuration registry */
#define ZPO_REG_BAD_ARGUMENT 0x200001u /* null pointer, zero length or size, binary value above 65536 bytes */
#define ZPO_REG_BAD_NAME 0x200002u   /* component, section or key empty, above 127 bytes, or with control characters */
#define ZPO_REG_WRONG_KIND 0x200003u /* the entry is of another kind than the one asked for */
#define ZPO_REG_WRONG_LENGTH 0x200004u     /* the binary entry has another length than the one asked for */
#define ZPO_REG_TEXT_TOO_LONG 0x200005u    /* a text to be written is longer than 511 bytes */
#define ZPO_REG_BUFFER_TOO_SMALL 0x200006u /* the stored text with its NUL does not fit the buffer */
#define ZPO_REG_STORE_MISSING 0x200007u    /* the state directory does not exist and cannot be created */
#define ZPO_REG_NO_ACCESS 0x200008u        /* no permission to open the store */
#define ZPO_REG_NOT_WRITABLE 0x200009u     /* the store can be read but not written */
#define ZPO_REG_STORE_CORRUPT 0x20000Au    /* the store's file is damaged or is not a registry */
#define ZPO_REG_STORE_FULL 0x20000Bu       /* the store has reached its largest size, or the disk is full */
#define ZPO_REG_STORE_BUSY 0x20000Cu       /* more threads read at once than the store has places for */
#define ZPO_REG_ENTRY_NOT_FOUND 0x20000Du  /* no entry of that name */
#define ZPO_REG_ENTRY_DAMAGED 0x20000Eu    /* the stored record is not one that this library writes */
#define ZPO_REG_STORE_VERSION 0x20000Fu    /* the store was written by a later version of this library */
#define ZPO_REG_DEVICE_ERROR 0x200010u     /* the system failed to read or write the store */
#define ZPO_REG_NO_RESOURCES 0x200011u     /* memory or file descriptors are exhausted */
#define ZPO_REG_BAD_SETTING 0x200012u      /* an environment variable above has an unusable value */
#define ZPO_REG_LOCKED 0x200013u           /* a writer has kept the registry locked for ZPO_LOCK_TIMEOUT */

/* diagnostics */
#define ZPO_DIAG_BAD_ARGUMENT 0x210001u   /* null pointer, empty or unusable name */
#define ZPO_DIAG_UNKNOWN_HANDLE 0x210002u /* no module is registered under the handle */
#define ZPO_DIAG_TOO_MANY 0x210003u       /* 256 modules are registered already */
#define ZPO_DIAG_WRITE_FAILED 0x210004u   /* the log file cannot be opened or written */
#define ZPO_DIAG_NO_RESOURCES 0x210005u   /* memory is exhausted */
#define ZPO_DIAG_BAD_SETTING 0x210006u    /* an environment variable above has an unusable value */

/* task scheduler */
#define ZPO_SCHED_BAD_ARGUMENT 0x220001u    /* null pointer */
#define ZPO_SCHED_BAD_PATH 0x220002u        /* path empty, relative, unterminated, with '%' or a control character */
#define ZPO_SCHED_BAD_FIELD 0x220003u       /* a time or day outside its range */
#define ZPO_SCHED_TASK_NOT_FOUND 0x220004u  /* no task of this library matches the record */
#define ZPO_SCHED_NOT_READABLE 0x220005u    /* the crontab exists but cannot be read */
#define ZPO_SCHED_NOT_WRITABLE 0x220006u    /* the crontab cannot be written */
#define ZPO_SCHED_TABLE_TOO_LARGE 0x220007u /* the crontab is larger than 1 MiB */
#define ZPO_SCHED_BUSY 0x220008u            /* another process has kept the crontab locked for ZPO_LOCK_TIMEOUT */
#define ZPO_SCHED_LOCK_FAILED 0x220009u     /* the lock file in the state directory cannot be opened */
#define ZPO_SCHED_NO_PROGRAM 0x22000Au      /* the crontab program is not installed */
#define ZPO_SCHED_NO_USER 0x22000Bu         /* the process's user has no name, or one with '.' or '/' */
#define ZPO_SCHED_NO_RESOURCES 0x22000Cu    /* memory, processes or file descriptors are exhausted */
#define ZPO_SCHED_BAD_SETTING 0x22000Du     /* an environment variable above has an unusable value */

/* backup/restore notification */
#define ZPO_NOTIFY_BAD_ARGUMENT 0x230001u /* null pointer, empty or overlong name, kind outside 1-3 */
#define ZPO_NOTIFY_TOO_MANY 0x230002u     /* 64 names are registered already */
#define ZPO_NOTIFY_NO_THREAD 0x230003u    /* the library's thread cannot be started */
#define ZPO_NOTIFY_BAD_SETTING 0x230004u  /* an environment variable above has an unusable value */

/* ---- Configuration registry -------------------------------------------------------------------------------------- */

/* One store shared by all processes of the device. An entry is named by component, section and key (each 1 to 127
 * bytes, no control characters) and is binary (1 to 65536 bytes), a text (up to 511 bytes) or a 32-bit integer; writing
 * an entry replaces both value and kind. A write has reached the disk when the function returns 0; an interrupted write
 * has no effect. A write waits for other writers, at most ZPO_LOCK_TIMEOUT: ZPO_REG_LOCKED. A read never waits for
 * another process. A failed read leaves the destination unchanged. */

#define ZPO_REG_MAX_NAME 127u
#define ZPO_REG_MAX_TEXT 511u
#define ZPO_REG_MAX_BINARY 65536u

/* Reads a binary entry of exactly `length` bytes into `buffer`. ZPO_REG_WRONG_LENGTH when it has another length. */
ZPO_API uint32_t ZpoGetRegEntryBinary(const char* component, const char* section, const char* key, void* buffer,
                                      uint32_t length);

/* Writes `length` bytes as a binary entry. */
ZPO_API uint32_t ZpoSetRegEntryBinary(const char* component, const char* section, const char* key, const void* buffer,
                                      uint32_t length);

/* Reads a text entry and its terminating NUL into `buffer` of `size` bytes. A text is never cut:
 * ZPO_REG_BUFFER_TOO_SMALL when it does not fit; 512 bytes always suffice. */
ZPO_API uint32_t ZpoGetRegEntryString(const char* component, const char* section, const char* key, char* buffer,
                                      uint32_t size);

/* Writes a NUL-terminated text, any bytes, possibly empty. ZPO_REG_TEXT_TOO_LONG above 511 bytes. */
ZPO_API uint32_t ZpoSetRegEntryString(const char* component, const char* section, const char* key, const char* text);

/* Reads an integer entry into `*value`. */
ZPO_API uint32_t ZpoGetRegEntryInt(const char* component, const char* section, const char* key, uint32_t* value);

/* Writes an integer entry. */
ZPO_API uint32_t ZpoSetRegEntryInt(const char* component, const char* section, const char* key, uint32_t value);

/* ---- Diagnostics ------------------------------------------------------------------------------------------------- */

/* Registers a module that writes to `logFile` in the log directory (a plain file name: letters, digits, '.', '_', '-',
 * up to 64 bytes, no leading dot) and stores its handle, never 0, in `*handle`. `moduleName` (1 to 64 printable bytes,
 * no blank) marks its lines. The file is opened by the first entry. Each registration gets a handle of its own. */
ZPO_API uint32_t ZpoDiagRegisterModule(const char* moduleFile, const char* component, const char* moduleName,
                                       const char* logFile, uint32_t* handle);

/* Appends one line: time, module, process, category, level, identifier and the text, control characters and backslashes
 * escaped. At most the first 2000 bytes of the text are written; a longer text is marked as cut. */
ZPO_API uint32_t ZpoDiagAddLogEntry(uint32_t handle, int32_t category, int32_t level, int32_t identifier,
                                    const char* text);

/* Ends a registration; the handle is unknown from then on. */
ZPO_API uint32_t ZpoDiagDeregisterModule(uint32_t handle);

/* ---- Task scheduler ---------------------------------------------------------------------------------------------- */

/* Tasks are lines of the crontab of the process's user, in exactly the form that this library writes. Other lines are
 * neither listed nor changed. */

#define ZPO_SCHED_ANY 1024u /* a time or day field that takes every value */

/* The records have the same offsets on 32- and 64-bit targets. */
#pragma pack(push, 4)

/* A task to create. */
typedef struct ZpoScheduledTask {
    char path[256];      /* the program: an absolute path, NUL-terminated */
    uint16_t minute;     /* 0-59 or ZPO_SCHED_ANY */
    uint16_t hour;       /* 0-23 or ZPO_SCHED_ANY */
    uint16_t dayOfMonth; /* 1-31 or ZPO_SCHED_ANY */
    uint16_t dayOfWeek;  /* 0-7 or ZPO_SCHED_ANY; 0 and 7 are Sunday */
    uint16_t month;      /* 1-12 or ZPO_SCHED_ANY */
} ZpoScheduledTask;

/* A task as it stands in the table; also what names the task to delete. */
typedef struct ZpoScheduledTaskRecord {
    char path[256];
    uint16_t minute;     /* ZPO_SCHED_ANY for '*' */
    uint16_t hour;       /* ZPO_SCHED_ANY for '*' */
    char dayOfMonth[30]; /* the crontab field as text, "*" for any */
    char dayOfWeek[30];  /* the crontab field as text, "*" for any */
    uint16_t month;      /* ZPO_SCHED_ANY for '*' */
} ZpoScheduledTaskRecord;

/* An element of a task list. */
typedef struct ZpoScheduledTaskEntry {
    ZpoScheduledTaskRecord record;
    struct ZpoScheduledTaskEntry* next; /* null at the end */
} ZpoScheduledTaskEntry;
#pragma pack(pop)

/* Adds a task. `a`, `b`, `c` are reserved and ignored (callers pass 1000). An identical task is added again. When the
 * table cannot be changed here or in a deletion, or not read for a list, the next program that registers for restores
 * is told of one, so that it sets its tasks again.
 */
ZPO_API uint32_t ZpoSetScheduledTask(ZpoScheduledTask task, uint32_t a, uint32_t b, uint32_t c);

/* Stores in `*head` the list of this library's tasks that run `path`, in the table's order; null when there are none or
 * on failure. The caller frees it with ZpoDeallocateScheduledTaskList. `a` is reserved and ignored. */
ZPO_API uint32_t ZpoGetScheduledTaskList(const char* path, ZpoScheduledTaskEntry** head, uint32_t a);

/* Deletes the first task that equals the record in every field. `a`, `b`, `c` are reserved and ignored. */
ZPO_API uint32_t ZpoDeleteScheduledTaskEx(ZpoScheduledTaskRecord record, uint32_t a, uint32_t b, uint32_t c);

/* Frees a list; null is allowed. */
ZPO_API void ZpoDeallocateScheduledTaskList(ZpoScheduledTaskEntry* head);

/* ---- Backup/restore notification --------------------------------------------------------------------------------- */

#define ZPO_EVENT_BACKUP 1u
#define ZPO_EVENT_RESTORE 2u

/* Called with the event, ZPO_EVENT_BACKUP or ZPO_EVENT_RESTORE, on a thread of the library, one call at a time. */
typedef void (*ZpoRegBackupAndRestoreCallback)(unsigned long event);

/* Registers `callback` under `name` (1 to 64 bytes): it is called once for each backup or restore of the registry, by
 * whatever process, that is completed from now on. `kind` is a mask of the events wanted. A second registration under
 * the same name in the same process replaces the callback and the mask; events not yet delivered are not lost. While a
 * task is pending (see ZpoSetScheduledTask) a new registration is told of a restore at once. The shared object that
 * holds the callback stays loaded until the process ends. A forked child has no registrations.
 */
ZPO_API uint32_t ZpoNotifyRegBackupAndRestore(const char* name, ZpoRegBackupAndRestoreCallback callback, uint32_t kind);

#ifdef __cplusplus
}

static_assert(sizeof(ZpoScheduledTask) == 266 && offsetof(ZpoScheduledTask, month) == 264, "layout is fixed");
static_assert(sizeof(ZpoScheduledTaskRecord) == 322 && offsetof(ZpoScheduledTaskRecord, month) == 320,
              "layout is fixed");
static_assert(offsetof(ZpoScheduledTaskEntry, next) == 324, "layout is fixed");
#endif
