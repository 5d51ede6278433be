#include "osa.h"

#include "Diagnostics.hpp"
#include "PerProcess.hpp"
#include "QueueFile.hpp"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <exception>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <sys/msg.h>
#include <thread>

namespace {

using namespace zpo;

struct Message {
    long type;
    char bytes[OSA_MAX_MESSAGE];
};

// The kernel's own wait has no limit, so a bounded wait polls, in growing steps.
constexpr std::chrono::milliseconds kShortestStep{1};
constexpr std::chrono::milliseconds kLongestStep{20};

template <class Work>
std::uint32_t withoutThrowing(Work work) noexcept {
    try {
        return work();
    } catch (const std::exception&) {
        return OSA_NO_RESOURCES;
    }
}

// The queues that this process has used, to notice when the kernel has given an id to another queue.
class KnownQueues {
  public:
    std::mutex mutex; ///< for the members and, over a fork, for sharedState()

    void add(const QueueIdentity& identity) {
        const std::lock_guard<std::mutex> lock(mutex);
        byId_[identity.id] = identity;
    }

    /// True when the queue was usable, or not asked for, at the last call.
    bool firstRefusal(const std::string& name) {
        const std::lock_guard<std::mutex> lock(mutex);
        return refused_.insert(name).second;
    }
    void endRefusal(const std::string& name) {
        const std::lock_guard<std::mutex> lock(mutex);
        refused_.erase(name);
    }

    enum class Comparison { Unknown, Same, Other };

    Comparison compare(const QueueIdentity& identity) {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto known = byId_.find(identity.id);
        if (known == byId_.end()) {
            return Comparison::Unknown;
        }
        return known->second == identity ? Comparison::Same : Comparison::Other;
    }

  private:
    std::map<int, QueueIdentity> byId_;
    std::set<std::string> refused_; ///< queues that exist and may not be used
};

KnownQueues& knownQueues() {
    return sharedState<KnownQueues>();
}

// A queue that exists and cannot be used is worth a line, once: senders pass over queues that they do not find.
void reportAccess(const std::string& name, std::uint32_t status, int id) {
    if (status != OSA_NO_ACCESS) {
        knownQueues().endRefusal(name);
    } else if (knownQueues().firstRefusal(name)) {
        const std::string known = id < 0 ? "" : " (id " + std::to_string(id) + ")";
        logInternal(4, "queue " + name + known + " exists, but this user may not use it (0x300007): see osqueue list");
    }
}

// Returns OSA_OK when the id is that of a live queue of the state directory.
std::uint32_t checkId(std::uint32_t id) {
    QueueIdentity present;
    const int error = id > 0x7fffffffU ? EINVAL : inspectQueue(static_cast<int>(id), present);
    if (error != 0) {
        return error == EACCES ? OSA_NO_ACCESS : OSA_QUEUE_NOT_FOUND;
    }
    const KnownQueues::Comparison comparison = knownQueues().compare(present);
    if (comparison != KnownQueues::Comparison::Unknown) {
        // If the kernel has given the id to another queue, only a new look-up by name makes it valid again.
        return comparison == KnownQueues::Comparison::Same ? OSA_OK : OSA_QUEUE_NOT_FOUND;
    }
    QueueIdentity named;
    std::string name;
    const std::uint32_t status = findQueueFile(present.id, named, name);
    if (status == OSA_OK) {
        knownQueues().add(named);
    }
    return status;
}

std::uint32_t statusOfQueueError(int error) {
    switch (error) {
    case EAGAIN:
        return OSA_QUEUE_FULL;
    case E2BIG:
        return OSA_BUFFER_TOO_SMALL;
    case EIDRM:
    case EINVAL:
        return OSA_QUEUE_NOT_FOUND;
    case EACCES:
        return OSA_NO_ACCESS;
    case ENOMEM:
        return OSA_NO_RESOURCES;
    default:
        return OSA_SYSTEM_ERROR;
    }
}

// One attempt. With IPC_NOWAIT in `flags` an empty queue gives OSA_TIMEOUT; without it the kernel waits.
std::uint32_t receiveOnce(std::uint32_t id, Message& message, std::uint32_t size, std::uint32_t& length, int flags) {
    ssize_t count = -1;
    do {
        count = msgrcv(static_cast<int>(id), &message, size, 0, flags);
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        return errno == ENOMSG ? OSA_TIMEOUT : statusOfQueueError(errno);
    }
    length = static_cast<std::uint32_t>(count);
    return OSA_OK;
}

std::uint32_t receiveWithin(std::uint32_t id, Message& message, std::uint32_t size, std::uint32_t& length,
                            std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (auto step = kShortestStep;; step = std::min(2 * step, kLongestStep)) {
        const std::uint32_t status = receiveOnce(id, message, size, length, IPC_NOWAIT);
        const auto now = std::chrono::steady_clock::now();
        if (status != OSA_TIMEOUT || now >= deadline) {
            return status;
        }
        std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(step, deadline - now));
    }
}

} // namespace

uint32_t osQueueGetId(const char* name, uint32_t* id) {
    return withoutThrowing([&]() -> std::uint32_t {
        if (name == nullptr || id == nullptr) {
            return OSA_BAD_ARGUMENT;
        }
        QueueIdentity identity;
        const std::uint32_t status = isQueueName(name) ? readQueueFile(name, identity) : OSA_BAD_NAME;
        if (status == OSA_OK) {
            knownQueues().add(identity);
            *id = static_cast<std::uint32_t>(identity.id);
        }
        if (status != OSA_BAD_NAME) {
            reportAccess(name, status, identity.id);
        }
        return status;
    });
}

uint32_t osQueueSend(uint32_t id, const void* message, uint32_t length) {
    return withoutThrowing([&]() -> std::uint32_t {
        if (message == nullptr || length == 0 || length > OSA_MAX_MESSAGE) {
            return OSA_BAD_ARGUMENT;
        }
        const std::uint32_t status = checkId(id);
        if (status != OSA_OK) {
            return status;
        }
        Message envelope{1, {}};
        std::memcpy(envelope.bytes, message, length);
        return msgsnd(static_cast<int>(id), &envelope, length, IPC_NOWAIT) == 0 ? OSA_OK : statusOfQueueError(errno);
    });
}

uint32_t osQueueCreate(const char* name, uint32_t* id) {
    return withoutThrowing([&]() -> std::uint32_t {
        if (name == nullptr || id == nullptr) {
            return OSA_BAD_ARGUMENT;
        }
        QueueIdentity identity;
        const std::uint32_t status = isQueueName(name) ? createQueue(name, identity) : OSA_BAD_NAME;
        if (status == OSA_OK) {
            knownQueues().add(identity);
            *id = static_cast<std::uint32_t>(identity.id);
        }
        return status;
    });
}

uint32_t osQueueReceive(uint32_t id, void* buffer, uint32_t size, uint32_t* length, int32_t timeoutMs) {
    return withoutThrowing([&]() -> std::uint32_t {
        if (buffer == nullptr || length == nullptr || size == 0) {
            return OSA_BAD_ARGUMENT;
        }
        std::uint32_t status = checkId(id);
        if (status != OSA_OK) {
            return status;
        }
        Message message{};
        const std::uint32_t room = std::min(size, OSA_MAX_MESSAGE);
        status = timeoutMs < 0 ? receiveOnce(id, message, room, *length, 0)
                               : receiveWithin(id, message, room, *length, std::chrono::milliseconds(timeoutMs));
        if (status == OSA_OK) {
            std::memcpy(buffer, message.bytes, *length);
        }
        return status;
    });
}

uint32_t osQueueDelete(uint32_t id) {
    return withoutThrowing([&]() -> std::uint32_t {
        const std::uint32_t status = checkId(id);
        return status == OSA_OK ? deleteQueue(static_cast<int>(id)) : status;
    });
}
