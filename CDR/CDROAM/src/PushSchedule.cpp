// The scheduled push task: the part of QTX_CDRPushSettingImpl that keeps one entry of the transfer program in the
// platform's task scheduler. Its log entries have deliberate levels: success is logged as an error, a failed scheduler
// call as a notice.
#include "QTX_CDRPushSettingImpl.hpp"
#include "RequestLock.hpp"
#include "TimeText.hpp"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace cdroam;

namespace {

constexpr char kTransferProgram[] = "/qv/bin/CDRTransfer";
constexpr std::uint16_t kAny = 1024;
// Passed to every scheduler operation.
constexpr std::uint32_t kReserved = 1000;
// Asks the platform for notifications of restores.
constexpr std::uint32_t kRestoreNotification = 2;
constexpr int kSunday = 7;

// The object that restore notifications reach; read on a thread of the platform.
std::atomic<QTX_CDRPushSettingImpl*> gCDRPushInstance{nullptr};

// Counts the calls of the method while the module is loaded.
unsigned int PushFileNowReturn = 0;

template <class Task>
void setProgram(Task& task) {
    std::memset(task.path, 0, sizeof task.path);
    std::memcpy(task.path, kTransferProgram, sizeof kTransferProgram);
}

// Calls the scheduler, which may wait for another process.
template <class Call>
std::uint32_t paused(Call call) {
    const WritePause pause;
    return call();
}

// Deletes one listed task and logs how it went; returns the scheduler's status.
std::uint32_t deleteTask(const ZpoScheduledTaskEntry& entry) {
    ZpoScheduledTaskRecord record = entry.record;
    setProgram(record);
    const std::uint32_t status =
        paused([&] { return ZpoDeleteScheduledTaskEx(record, kReserved, kReserved, kReserved); });
    if (status == 0) {
        (void)addLogEntry(LogError, "CDR: push task deleted successfully");
        return status;
    }
    // The number in the line is deliberately the address of this text, not the status: the text was once passed as the
    // first argument of the format, and the line is kept as it was.
    static constexpr char kDetails[] = "Time=%02d:%02d, DayOfMonth=%s,DayofWeek=%s, Month=%d, ExePath=%s";
    const auto number = static_cast<int>(reinterpret_cast<std::uintptr_t>(&kDetails[0]));
    (void)logFormatted(LogNotice, "CDR: delete push task failed, rc=%d,", number);
    return status;
}

} // namespace

QTX_CDRPushSettingImpl::QTX_CDRPushSettingImpl(const std::string& instanceId) : QTX_CDRPushSetting(instanceId) {
    (void)std::printf(" QTX_CDRPushSettingImpl created !!!!!!!!!!!!!!!!!!!!!!!!!\n");
    gCDRPushInstance = this;
    (void)ZpoNotifyRegBackupAndRestore("CDROAMProvider", &C_RestoreCallBackHdlr, kRestoreNotification);
}

QTX_CDRPushSettingImpl::~QTX_CDRPushSettingImpl() {
    gCDRPushInstance = nullptr;
}

int QTX_CDRPushSettingImpl::setPushSchedule() {
    ZpoScheduledTask task{};
    setProgram(task);
    task.minute = task.hour = task.dayOfMonth = task.dayOfWeek = task.month = kAny;
    const std::string prefix = setTaskDay(task);
    const TimeOfDay time = parseTimeOfDay(transferTime_.cached().c_str());
    task.hour = static_cast<std::uint16_t>(time.hour);
    task.minute = static_cast<std::uint16_t>(time.minute);
    char description[128];
    (void)std::snprintf(description, sizeof description, "%s Time=%02d:%02d ", prefix.c_str(), time.hour, time.minute);

    const int removed = removePushSchedule();
    const std::uint32_t status = paused([&] { return ZpoSetScheduledTask(task, kReserved, kReserved, kReserved); });
    if (status != 0) {
        (void)logFormatted(LogNotice, "CDR: schedule push task failed, %s, rc=%d", description,
                           static_cast<int>(status));
        throw CFG_WriteError();
    }
    (void)logFormatted(LogError, "CDR: push task scheduled successfully, %s", description);
    return removed;
}

std::string QTX_CDRPushSettingImpl::setTaskDay(ZpoScheduledTask& task) const {
    switch (transferType_.cached()) {
    case Weekly: {
        const int stored = leadingInteger(transferDayOfWeek_.cached().c_str());
        const int day = stored == 0 ? kSunday : stored;
        task.dayOfWeek = static_cast<std::uint16_t>(day);
        return "PUSH_WEEKLY: DayOfWeek=" + std::to_string(day) + ",";
    }
    case Monthly: {
        const int day = leadingInteger(transferDayOfMonth_.cached().c_str());
        task.dayOfMonth = static_cast<std::uint16_t>(day);
        return "PUSH_MONTHLY: DayOfMonth=" + std::to_string(day) + ",";
    }
    case Daily:
        return "PUSH_DAILY:";
    default:
        return ""; // any other type is scheduled daily, without a name
    }
}

int QTX_CDRPushSettingImpl::removePushSchedule() {
    ZpoScheduledTaskEntry* tasks = nullptr;
    (void)paused([&] { return ZpoGetScheduledTaskList(kTransferProgram, &tasks, kReserved); });
    std::uint32_t last = 0; // a failure followed by a success is only logged
    for (const ZpoScheduledTaskEntry* task = tasks; task != nullptr; task = task->next) {
        last = deleteTask(*task);
    }
    if (tasks != nullptr) {
        ZpoDeallocateScheduledTaskList(tasks);
    }
    if (last != 0) {
        (void)addLogEntry(LogError, "CDR: push task Unsuccessful delete");
        throw CFG_WriteError();
    }
    return 0;
}

unsigned int QTX_CDRPushSettingImpl::PushFileNow() {
    {
        const RequestPause pause; // a long transfer must not hold up the other requests
        (void)!std::system(kTransferProgram);
    }
    return ++PushFileNowReturn;
}

void QTX_CDRPushSettingImpl::refreshScheduleTexts() {
    if (transferType_.cached() == Monthly) {
        transferDayOfMonth_.refresh();
    } else if (transferType_.cached() == Weekly) {
        transferDayOfWeek_.refresh();
    }
    transferTime_.refresh();
}

int QTX_CDRPushSettingImpl::RestoreCallBackHdlr(unsigned long /*event*/) {
    const std::uint32_t status = transferType_.load();
    if (status != 0) {
        return static_cast<int>(status);
    }
    const unsigned char type = transferType_.cached();
    if (type != Daily && type != Weekly && type != Monthly) {
        return removePushSchedule();
    }
    refreshScheduleTexts();
    return setPushSchedule();
}

void C_RestoreCallBackHdlr(unsigned long value) {
    const RequestLock lock;
    const ChangeLock change(ChangeLock::Sharing::Alone);
    QTX_CDRPushSettingImpl* const object = gCDRPushInstance;
    if (object == nullptr) {
        return;
    }
    try {
        (void)object->RestoreCallBackHdlr(value);
    } catch (...) {
        // The failure has been logged; the platform is C, so no exception may reach it.
        return;
    }
}
