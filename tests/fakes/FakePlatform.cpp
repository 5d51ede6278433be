#include "FakePlatform.hpp"

#include "osa.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace fakes {
namespace {

template <class... Numbers>
std::string texts(Numbers... numbers) {
    std::string text;
    ((text += (text.empty() ? "" : " ") + std::to_string(numbers)), ...);
    return text;
}

} // namespace

FakePlatform& FakePlatform::get() {
    static FakePlatform one;
    return one;
}

std::uint32_t FakePlatform::called(const std::string& function, const std::string& arguments) {
    const std::string record = function + " " + arguments;
    calls_.push_back(record);
    if (function == during_.first && during_.second) {
        const std::function<void()> work = std::exchange(during_.second, nullptr);
        mutex_.unlock();
        work();
        mutex_.lock();
    }
    for (Switch& s : switches_) {
        const bool meets = s.function == function && record.find(s.argument) != std::string::npos;
        if (meets && (++s.met == s.nth || s.nth == 0)) {
            return s.status;
        }
    }
    return 0;
}

std::vector<std::string> FakePlatform::calls(const std::string& prefix) const {
    std::vector<std::string> found;
    std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found),
                 [&](const std::string& call) { return call.compare(0, prefix.size(), prefix) == 0; });
    return found;
}

} // namespace fakes

using namespace fakes;

// ---- Diagnostics

uint32_t ZpoDiagRegisterModule(const char* moduleFile, const char* component, const char* moduleName,
                               const char* logFile, uint32_t* handle) {
    const Call platform;
    const std::uint32_t status =
        platform->called(__func__, std::string(moduleFile) + " " + component + " " + moduleName + " " + logFile);
    if (status == 0) {
        *handle = 40 + ++platform->modules;
    }
    return status;
}

uint32_t ZpoDiagAddLogEntry(uint32_t handle, int32_t category, int32_t level, int32_t identifier, const char* text) {
    const std::string entry = texts(category, level, identifier) + " " + text;
    const Call platform;
    platform->log.push_back(entry);
    return platform->called(__func__, texts(handle) + " " + entry);
}

uint32_t ZpoDiagDeregisterModule(uint32_t handle) {
    return Call()->called(__func__, texts(handle));
}

// ---- Scheduler

uint32_t ZpoSetScheduledTask(ZpoScheduledTask task, uint32_t a, uint32_t b, uint32_t c) {
    const Call platform;
    platform->created.push_back(task);
    const std::uint32_t status = platform->called(__func__, texts(a, b, c));
    if (status == 0) {
        platform->tasks.emplace_back();
        std::memcpy(platform->tasks.back().path, task.path, sizeof task.path);
    }
    return status;
}

uint32_t ZpoGetScheduledTaskList(const char* path, ZpoScheduledTaskEntry** head, uint32_t a) {
    const Call platform;
    const std::string emptied = *head == nullptr ? "" : " head not set to none";
    const std::uint32_t status = platform->called(__func__, path + (" " + texts(a)) + emptied);
    if (status != 0) {
        return status;
    }
    *head = nullptr;
    for (auto task = platform->tasks.rbegin(); task != platform->tasks.rend(); ++task) {
        if (std::strcmp(task->path, path) == 0) {
            *head = new ZpoScheduledTaskEntry{*task, *head};
        }
    }
    platform->openLists += *head == nullptr ? 0 : 1;
    return 0;
}

uint32_t ZpoDeleteScheduledTaskEx(ZpoScheduledTaskRecord record, uint32_t a, uint32_t b, uint32_t c) {
    const Call platform;
    platform->deleted.push_back(record);
    const std::uint32_t status = platform->called(__func__, texts(a, b, c));
    const auto found = std::find_if(platform->tasks.begin(), platform->tasks.end(),
                                    [&](const auto& task) { return std::memcmp(&task, &record, sizeof record) == 0; });
    if (status != 0 || found == platform->tasks.end()) {
        return status != 0 ? status : ZPO_SCHED_TASK_NOT_FOUND;
    }
    platform->tasks.erase(found);
    return 0;
}

void ZpoDeallocateScheduledTaskList(ZpoScheduledTaskEntry* head) {
    const Call platform;
    (void)platform->called(__func__, "");
    --platform->openLists;
    while (head != nullptr) {
        ZpoScheduledTaskEntry* next = head->next;
        delete head;
        head = next;
    }
}

// ---- Notification

uint32_t ZpoNotifyRegBackupAndRestore(const char* name, ZpoRegBackupAndRestoreCallback callback, uint32_t kind) {
    const Call platform;
    const std::uint32_t status = platform->called(__func__, name + (" " + texts(kind)));
    if (status == 0) {
        platform->callbacks[name] = callback;
    }
    return status;
}

// ---- Queues

uint32_t osQueueGetId(const char* name, uint32_t* id) {
    const Call platform;
    const std::uint32_t status = platform->called(__func__, name);
    if (status != 0 || platform->queues.count(name) == 0) {
        return status != 0 ? status : OSA_QUEUE_NOT_FOUND;
    }
    *id = platform->queues[name];
    return 0;
}

uint32_t osQueueSend(uint32_t id, const void* message, uint32_t length) {
    const std::string text(static_cast<const char*>(message), length);
    return Call()->called(__func__, texts(id) + " " + text);
}

// ---- C library

extern "C" int system(const char* command) {
    return static_cast<int>(Call()->called(__func__, command));
}
