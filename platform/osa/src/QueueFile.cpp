#include "QueueFile.hpp"

#include "Characters.hpp"
#include "Files.hpp"
#include "Settings.hpp"
#include "osa.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zpo {
namespace {

// STATE/queues holds one file per queue, named like it: "ID KEY CREATED". Changes are made under the lock
// STATE/queues/.lock.
constexpr std::size_t kMaxFile = 128;
constexpr int kKeyAttempts = 100;

std::string queueDirectory() {
    return settings().stateDirectory ? *settings().stateDirectory + "/queues" : std::string();
}

std::uint32_t statusOfFileError(int error) {
    switch (error) {
    case 0:
        return OSA_OK;
    case EACCES:
    case EPERM:
        return OSA_NO_ACCESS;
    case ETIMEDOUT:
        return OSA_BUSY;
    case ENOMEM:
    case ENOSPC:
    case EMFILE:
    case ENFILE:
        return OSA_NO_RESOURCES;
    default:
        return OSA_STATE_DIRECTORY;
    }
}

bool parseIdentity(const std::string& content, QueueIdentity& identity) {
    long long created = 0;
    char end = '\0';
    const int read = std::sscanf(content.c_str(), "%d %d %lld%c", &identity.id, &identity.key, &created, &end);
    identity.created = created;
    return read == 4 && end == '\n' && identity.id >= 0;
}

std::uint32_t lockQueues(FileLock& lock) {
    const std::string directory = queueDirectory();
    if (directory.empty() || !settings().lockSeconds) {
        return OSA_STATE_DIRECTORY;
    }
    int error = ensureDirectory(*settings().stateDirectory);
    if (error == 0) {
        error = ensureDirectory(directory);
    }
    if (error == 0) {
        error = lock.acquire(directory + "/.lock", std::chrono::seconds(*settings().lockSeconds));
    }
    return statusOfFileError(error);
}

// Whoever creates it: the group of the state directory may send and receive.
int shareWithGroup(int id) {
    struct stat directory {};
    msqid_ds state{};
    if (stat(settings().stateDirectory->c_str(), &directory) != 0 || msgctl(id, IPC_STAT, &state) != 0) {
        return errno;
    }
    if (state.msg_perm.gid == directory.st_gid) {
        return 0;
    }
    state.msg_perm.gid = directory.st_gid;
    return msgctl(id, IPC_SET, &state) == 0 ? 0 : errno;
}

int newKernelQueue(QueueIdentity& identity) {
    std::random_device random;
    for (int attempt = 0; attempt < kKeyAttempts; ++attempt) {
        const auto key = static_cast<key_t>(random());
        const int id = key == IPC_PRIVATE ? -1 : msgget(key, IPC_CREAT | IPC_EXCL | 0660);
        if (id >= 0) {
            int error = shareWithGroup(id);
            if (error == 0) {
                error = inspectQueue(id, identity);
            }
            if (error != 0) {
                msgctl(id, IPC_RMID, nullptr);
            }
            return error;
        }
        if (errno != EEXIST) {
            return errno;
        }
    }
    return EEXIST;
}

} // namespace

bool isQueueName(const char* name) {
    return isPlainName({name, strnlen(name, kMaxPlainName + 1)});
}

int inspectQueue(int id, QueueIdentity& identity) {
    msqid_ds state{};
    if (msgctl(id, IPC_STAT, &state) != 0) {
        return errno;
    }
    identity = {id, state.msg_perm.__key, static_cast<std::int64_t>(state.msg_ctime)};
    return 0;
}

std::uint32_t readQueueFile(const std::string& name, QueueIdentity& identity) {
    const std::string directory = queueDirectory();
    if (directory.empty()) {
        return OSA_STATE_DIRECTORY;
    }
    std::string content;
    const int error = readFile(directory + "/" + name, kMaxFile, content);
    if (error != 0) {
        return error == ENOENT || error == ENOTDIR || error == EFBIG ? OSA_QUEUE_NOT_FOUND : statusOfFileError(error);
    }
    QueueIdentity named;
    QueueIdentity present;
    if (!parseIdentity(content, named)) {
        return OSA_QUEUE_NOT_FOUND;
    }
    const int gone = inspectQueue(named.id, present);
    if (gone == EACCES && msgget(named.key, 0) == named.id) { // any user may ask which queue has the key
        identity = named;
        return OSA_NO_ACCESS;
    }
    if (gone != 0 || !(present == named)) {
        return OSA_QUEUE_NOT_FOUND;
    }
    identity = named;
    return OSA_OK;
}

std::vector<std::string> queueNames() {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator file(queueDirectory(), error), end; !error && file != end;
         file.increment(error)) {
        const std::string name = file->path().filename();
        if (isQueueName(name.c_str())) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::uint32_t findQueueFile(int id, QueueIdentity& identity, std::string& name) {
    for (const std::string& one : queueNames()) {
        if (readQueueFile(one, identity) == OSA_OK && identity.id == id) {
            name = one;
            return OSA_OK;
        }
    }
    return OSA_QUEUE_NOT_FOUND;
}

std::uint32_t createQueue(const std::string& name, QueueIdentity& identity) {
    FileLock lock;
    std::uint32_t status = lockQueues(lock);
    if (status != OSA_OK) {
        return status;
    }
    status = readQueueFile(name, identity);
    if (status != OSA_QUEUE_NOT_FOUND) {
        return status;
    }
    int error = newKernelQueue(identity);
    if (error != 0) {
        return statusOfFileError(error);
    }
    const std::string content = std::to_string(identity.id) + ' ' + std::to_string(identity.key) + ' ' +
                                std::to_string(identity.created) + '\n';
    const std::string file = queueDirectory() + "/" + name;
    unlink(file.c_str()); // of a queue that is gone, perhaps another user's
    error = replaceFile(file, content, 0664);
    if (error != 0) {
        msgctl(identity.id, IPC_RMID, nullptr);
    }
    return statusOfFileError(error);
}

std::uint32_t deleteQueue(int id) {
    FileLock lock;
    std::uint32_t status = lockQueues(lock);
    QueueIdentity identity;
    std::string name;
    if (status != OSA_OK || (status = findQueueFile(id, identity, name)) != OSA_OK) {
        return status;
    }
    if (msgctl(id, IPC_RMID, nullptr) != 0 && errno != EINVAL && errno != EIDRM) {
        return statusOfFileError(errno);
    }
    unlink((queueDirectory() + "/" + name).c_str());
    return OSA_OK;
}

} // namespace zpo
