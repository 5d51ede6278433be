/*
 * The platform's message queues, over the kernel's System V queues.
 *
 * A queue is created under a name by its owner and found by that name in every process that uses the same state
 * directory (ZPO_STATE_DIR, default /var/lib/zpo; see docs/PLATFORM.md). Its id means the same queue in all of them,
 * and never another one: after a queue has been deleted, its id is refused. All functions return a status, 0 on
 * success, may be called from any thread and do not throw.
 */
#pragma once

#include <stdint.h>

#if defined(__GNUC__)
#define OSA_API __attribute__((visibility("default")))
#else
#define OSA_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

#define OSA_OK 0u
#define OSA_BAD_ARGUMENT 0x300001u     /* null pointer, buffer of 0 bytes, message of 0 or more than 4096 bytes */
#define OSA_BAD_NAME 0x300002u         /* not 1 to 64 letters, digits, '.', '_', '-', or a leading dot */
#define OSA_QUEUE_NOT_FOUND 0x300003u  /* nobody has created the queue, or it has been deleted */
#define OSA_QUEUE_FULL 0x300004u       /* the queue has no room for the message */
#define OSA_TIMEOUT 0x300005u          /* no message came in time */
#define OSA_BUFFER_TOO_SMALL 0x300006u /* the next message does not fit the buffer; it stays in the queue */
#define OSA_NO_ACCESS 0x300007u        /* no permission for the queue or its name file */
#define OSA_NO_RESOURCES 0x300008u     /* the system has no room for a further queue, or memory is exhausted */
#define OSA_STATE_DIRECTORY 0x300009u  /* the state directory is missing or not writable, or a setting is unusable */
#define OSA_SYSTEM_ERROR 0x30000Au     /* the system failed otherwise */
#define OSA_BUSY 0x30000Bu             /* another process has kept the queues' names locked for ZPO_LOCK_TIMEOUT */

#define OSA_MAX_MESSAGE 4096u

/* Finds the queue `name` and stores its id in `*id`, which a failure leaves unchanged. */
OSA_API uint32_t osQueueGetId(const char* name, uint32_t* id);

/* Puts a message of `length` bytes (1 to 4096) at the end of the queue. Never blocks: OSA_QUEUE_FULL when there is no
 * room. */
OSA_API uint32_t osQueueSend(uint32_t id, const void* message, uint32_t length);

/* Creates the queue `name` and stores its id in `*id`. An existing queue of that name is taken over with its messages,
 * so a restarted owner continues with its queue. */
OSA_API uint32_t osQueueCreate(const char* name, uint32_t* id);

/* Takes the oldest message from the queue, copies it to `buffer` of `size` bytes and stores its length in `*length`.
 * Waits up to `timeoutMs` milliseconds (0: does not wait, below 0: without limit). OSA_QUEUE_NOT_FOUND when the queue
 * is deleted meanwhile. */
OSA_API uint32_t osQueueReceive(uint32_t id, void* buffer, uint32_t size, uint32_t* length, int32_t timeoutMs);

/* Deletes the queue with the messages it holds; whoever waits for one gets OSA_QUEUE_NOT_FOUND. */
OSA_API uint32_t osQueueDelete(uint32_t id);

#ifdef __cplusplus
}
#endif
