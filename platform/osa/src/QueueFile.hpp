#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zpo {

/// A kernel queue, and what distinguishes it from one that gets its id later: its random key and time of creation.
struct QueueIdentity {
    int id = -1;
    key_t key = 0;
    std::int64_t created = 0;

    bool operator==(const QueueIdentity& other) const {
        return id == other.id && key == other.key && created == other.created;
    }
};

/// Letters, digits, '.', '_', '-', 1 to 64 of them, no leading dot.
bool isQueueName(const char* name);

/// Asks the kernel for the queue with this id. Returns 0 or an errno.
int inspectQueue(int id, QueueIdentity& identity);

/// Reads the file that names a queue in the state directory and checks that the kernel's queue is still the one it
/// names. Returns a status of osa.h; `identity` is known with OSA_OK, and with OSA_NO_ACCESS unless the file itself
/// cannot be read.
std::uint32_t readQueueFile(const std::string& name, QueueIdentity& identity);

/// The names that have files, sorted. Their queues may be gone.
std::vector<std::string> queueNames();

/// Finds the name file of the queue with this id. OSA_QUEUE_NOT_FOUND when no file names a live queue with it.
std::uint32_t findQueueFile(int id, QueueIdentity& identity, std::string& name);

/// Creates the queue and its file, or takes over an existing queue. Returns a status of osa.h.
std::uint32_t createQueue(const std::string& name, QueueIdentity& identity);

/// Removes the queue and its file. Returns a status of osa.h.
std::uint32_t deleteQueue(int id);

} // namespace zpo
