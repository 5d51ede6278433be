// The C functions: argument checks, and no exception leaves the library.

#include "ZpoShared.h"

#include "Diagnostics.hpp"
#include "Notifier.hpp"
#include "ProcessRegistry.hpp"
#include "Scheduler.hpp"

#include <cstring>
#include <exception>

namespace {

using namespace zpo;

template <class Work>
std::uint32_t withoutThrowing(std::uint32_t failure, Work work) noexcept {
    try {
        return work();
    } catch (const std::exception&) {
        return failure; // memory, threads or locks are exhausted
    }
}

template <class Work>
std::uint32_t onEntry(const char* component, const char* section, const char* key, const void* data,
                      Work work) noexcept {
    return withoutThrowing(ZPO_REG_NO_RESOURCES, [&]() -> std::uint32_t {
        if (data == nullptr) {
            return ZPO_REG_BAD_ARGUMENT;
        }
        EntryName name;
        const std::uint32_t status = name.assign(component, section, key);
        if (status != ZPO_OK) {
            return status;
        }
        RegistryStore* registry = processRegistry();
        return registry == nullptr ? ZPO_REG_BAD_SETTING : work(*registry, name);
    });
}

} // namespace

uint32_t ZpoGetRegEntryBinary(const char* component, const char* section, const char* key, void* buffer,
                              uint32_t length) {
    return onEntry(component, section, key, buffer, [&](RegistryStore& registry, const EntryName& name) {
        return length == 0 ? ZPO_REG_BAD_ARGUMENT : registry.readBinary(name, buffer, length);
    });
}

uint32_t ZpoSetRegEntryBinary(const char* component, const char* section, const char* key, const void* buffer,
                              uint32_t length) {
    return onEntry(component, section, key, buffer, [&](RegistryStore& registry, const EntryName& name) {
        return registry.write(name, EntryKind::Binary, {static_cast<const char*>(buffer), length});
    });
}

uint32_t ZpoGetRegEntryString(const char* component, const char* section, const char* key, char* buffer,
                              uint32_t size) {
    return onEntry(component, section, key, buffer, [&](RegistryStore& registry, const EntryName& name) {
        return size == 0 ? ZPO_REG_BAD_ARGUMENT : registry.readText(name, buffer, size);
    });
}

uint32_t ZpoSetRegEntryString(const char* component, const char* section, const char* key, const char* text) {
    return onEntry(component, section, key, text, [&](RegistryStore& registry, const EntryName& name) {
        return registry.write(name, EntryKind::Text, {text, strnlen(text, ZPO_REG_MAX_TEXT + 1)});
    });
}

uint32_t ZpoGetRegEntryInt(const char* component, const char* section, const char* key, uint32_t* value) {
    return onEntry(component, section, key, value,
                   [&](RegistryStore& registry, const EntryName& name) { return registry.readInteger(name, *value); });
}

uint32_t ZpoSetRegEntryInt(const char* component, const char* section, const char* key, uint32_t value) {
    return onEntry(component, section, key, &value, [&](RegistryStore& registry, const EntryName& name) {
        return registry.write(name, EntryKind::Integer, encodeInteger(value));
    });
}

uint32_t ZpoDiagRegisterModule(const char* moduleFile, const char* component, const char* moduleName,
                               const char* logFile, uint32_t* handle) {
    return withoutThrowing(ZPO_DIAG_NO_RESOURCES,
                           [&] { return registerModule(moduleFile, component, moduleName, logFile, handle); });
}

uint32_t ZpoDiagAddLogEntry(uint32_t handle, int32_t category, int32_t level, int32_t identifier, const char* text) {
    return withoutThrowing(ZPO_DIAG_NO_RESOURCES,
                           [&] { return addLogEntry(handle, category, level, identifier, text); });
}

uint32_t ZpoDiagDeregisterModule(uint32_t handle) {
    return withoutThrowing(ZPO_DIAG_NO_RESOURCES, [&] { return deregisterModule(handle); });
}

uint32_t ZpoSetScheduledTask(ZpoScheduledTask task, uint32_t, uint32_t, uint32_t) {
    return withoutThrowing(ZPO_SCHED_NO_RESOURCES, [&] { return setTask(task); });
}

uint32_t ZpoGetScheduledTaskList(const char* path, ZpoScheduledTaskEntry** head, uint32_t) {
    return withoutThrowing(ZPO_SCHED_NO_RESOURCES, [&] { return listTasks(path, head); });
}

uint32_t ZpoDeleteScheduledTaskEx(ZpoScheduledTaskRecord record, uint32_t, uint32_t, uint32_t) {
    return withoutThrowing(ZPO_SCHED_NO_RESOURCES, [&] { return deleteTask(record); });
}

void ZpoDeallocateScheduledTaskList(ZpoScheduledTaskEntry* head) {
    freeTasks(head);
}

uint32_t ZpoNotifyRegBackupAndRestore(const char* name, ZpoRegBackupAndRestoreCallback callback, uint32_t kind) {
    return withoutThrowing(ZPO_NOTIFY_NO_THREAD, [&] { return registerCallback(name, callback, kind); });
}
