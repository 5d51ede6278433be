#include "Scheduler.hpp"

#include "CrontabBackend.hpp"
#include "CrontabTable.hpp"
#include "Diagnostics.hpp"
#include "Files.hpp"
#include "Settings.hpp"
#include "StatusText.hpp"

#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <functional>
#include <memory>
#include <unistd.h>

namespace zpo {
namespace {

std::string pendingFile() {
    return *settings().stateDirectory + "/crontab.pending";
}

std::unique_ptr<CrontabBackend> makeBackend() {
    const std::string& directory = *settings().crontabDirectory;
    return directory.empty() ? makeCrontabProgram() : makeCrontabDirectory(directory);
}

// Remembers in the state directory that the crontab may not hold what the settings say, or that it does again.
void keepPending(std::uint32_t status) {
    if (!settings().stateDirectory) {
        return;
    }
    const std::string file = pendingFile();
    if (status == ZPO_OK) {
        unlink(file.c_str());
    } else if (status != ZPO_SCHED_TASK_NOT_FOUND) {
        openFile(file, O_WRONLY | O_CREAT | O_NONBLOCK | O_NOFOLLOW, 0660);
        logInternal(4, fmt::format("crontab: {}; the settings are stored, the task is not as they say: it is set again "
                                   "after the next start or restore",
                                   statusText(status)));
    }
}

std::uint32_t lockTable(FileLock& lock) {
    const std::string& directory = *settings().stateDirectory;
    if (ensureDirectory(directory) != 0) {
        return ZPO_SCHED_LOCK_FAILED;
    }
    const int error = lock.acquire(directory + "/crontab.lock", std::chrono::seconds(*settings().lockSeconds));
    if (error == ETIMEDOUT) {
        return ZPO_SCHED_BUSY;
    }
    return error == 0 ? ZPO_OK : ZPO_SCHED_LOCK_FAILED;
}

std::uint32_t checkSettings() {
    const Settings& given = settings();
    return given.stateDirectory && given.crontabDirectory && given.sunday && given.lockSeconds ? ZPO_OK
                                                                                               : ZPO_SCHED_BAD_SETTING;
}

// Reads the table, lets `change` edit it and writes it back, all under the lock.
std::uint32_t edit(const std::function<std::uint32_t(CrontabTable&)>& change) {
    std::uint32_t status = checkSettings();
    FileLock lock;
    if (status != ZPO_OK || (status = lockTable(lock)) != ZPO_OK) {
        return status;
    }
    const std::unique_ptr<CrontabBackend> backend = makeBackend();
    std::string text;
    status = backend->read(text);
    if (status != ZPO_OK) {
        return status;
    }
    CrontabTable table(text);
    status = change(table);
    return status == ZPO_OK ? backend->write(table.text()) : status;
}

ZpoScheduledTaskEntry* makeElement(const CrontabTask& task) {
    auto* element = new ZpoScheduledTaskEntry{}; // zeros: every text is NUL-terminated
    ZpoScheduledTaskRecord& record = element->record;
    task.path.copy(record.path, sizeof record.path - 1);
    task.dayOfMonth.copy(record.dayOfMonth, sizeof record.dayOfMonth - 1);
    task.dayOfWeek.copy(record.dayOfWeek, sizeof record.dayOfWeek - 1);
    record.minute = task.minute;
    record.hour = task.hour;
    record.month = task.month;
    return element;
}

} // namespace

std::uint32_t setTask(const ZpoScheduledTask& record) {
    CrontabTask task;
    std::uint32_t status = taskFrom(record, task);
    if (status != ZPO_OK || (status = checkSettings()) != ZPO_OK) {
        return status;
    }
    if (task.dayOfWeek == "7") {
        task.dayOfWeek = std::to_string(*settings().sunday);
    }
    status = edit([&](CrontabTable& table) {
        table.add(task);
        return ZPO_OK;
    });
    keepPending(status);
    return status;
}

std::uint32_t listTasks(const char* path, ZpoScheduledTaskEntry** head) {
    if (head == nullptr) {
        return ZPO_SCHED_BAD_ARGUMENT;
    }
    *head = nullptr;
    std::uint32_t status = path == nullptr ? ZPO_SCHED_BAD_ARGUMENT : checkPath(path);
    if (status != ZPO_OK || (status = checkSettings()) != ZPO_OK) {
        return status;
    }
    std::string text;
    status = makeBackend()->read(text); // needs no lock: the table is replaced atomically
    if (status != ZPO_OK) {
        keepPending(status); // the caller may mean to remove what it cannot see
        return status;
    }
    const auto tasks = CrontabTable(text).list(path);
    std::unique_ptr<ZpoScheduledTaskEntry, decltype(&freeTasks)> list(nullptr, &freeTasks);
    for (auto task = tasks.rbegin(); task != tasks.rend(); ++task) {
        ZpoScheduledTaskEntry* element = makeElement(*task); // throws without leaving half a list
        element->next = list.release();
        list.reset(element);
    }
    *head = list.release();
    return ZPO_OK;
}

std::uint32_t deleteTask(const ZpoScheduledTaskRecord& record) {
    CrontabTask task;
    const std::uint32_t status = taskFrom(record, task);
    if (status != ZPO_OK) {
        return status;
    }
    const std::uint32_t result =
        edit([&](CrontabTable& table) { return table.remove(task) ? ZPO_OK : ZPO_SCHED_TASK_NOT_FOUND; });
    keepPending(result);
    return result;
}

bool isTaskPending() {
    return settings().stateDirectory && access(pendingFile().c_str(), F_OK) == 0;
}

void freeTasks(ZpoScheduledTaskEntry* head) {
    while (head != nullptr) {
        ZpoScheduledTaskEntry* next = head->next;
        delete head;
        head = next;
    }
}

} // namespace zpo
