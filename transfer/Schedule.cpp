#include "Schedule.hpp"

#include "Failure.hpp"

#include <charconv>
#include <cstring>
#include <fmt/format.h>
#include <memory>

namespace transfer {
namespace {

constexpr char kTransferProgram[] = "/qv/bin/CDRTransfer";
constexpr std::uint32_t kReserved = 1000;
constexpr int kDays = 8 * 366; // 29 February comes back after 8 years at the latest
constexpr int kHours = 24;
constexpr int kMinutes = 60;

struct ListDeleter {
    void operator()(ZpoScheduledTaskEntry* head) const { ZpoDeallocateScheduledTaskList(head); }
};

bool matches(std::uint16_t field, int value) {
    return field == ZPO_SCHED_ANY || field == value;
}

bool isAny(const char* day) {
    return std::strcmp(day, "*") == 0;
}

/// Of a day field; -1 when it is none, or one that no day has.
int numberOf(const char* day) {
    int number = -1;
    std::from_chars(day, day + std::strlen(day), number);
    return number;
}

bool fallsOn(const ZpoScheduledTaskRecord& task, const std::tm& day) {
    if (!matches(task.month, day.tm_mon + 1)) {
        return false;
    }
    const bool dayOfMonth = numberOf(task.dayOfMonth) == day.tm_mday;
    const bool dayOfWeek = numberOf(task.dayOfWeek) % 7 == day.tm_wday;
    if (isAny(task.dayOfMonth)) {
        return isAny(task.dayOfWeek) || dayOfWeek;
    }
    return dayOfMonth || (!isAny(task.dayOfWeek) && dayOfWeek);
}

/// The first time of the task on the day that is after `now`; 0 when there is none.
std::time_t timeOn(const ZpoScheduledTaskRecord& task, std::tm day, std::time_t now) {
    for (int minute = 0; minute < kHours * kMinutes; ++minute) {
        if (matches(task.hour, minute / kMinutes) && matches(task.minute, minute % kMinutes)) {
            day.tm_hour = minute / kMinutes;
            day.tm_min = minute % kMinutes;
            std::tm normal = day;
            const std::time_t time = std::mktime(&normal);
            if (time > now) {
                return time;
            }
        }
    }
    return 0;
}

std::string field(std::uint16_t value) {
    return value == ZPO_SCHED_ANY ? "*" : std::to_string(value);
}

} // namespace

std::time_t nextTime(const ZpoScheduledTaskRecord& task, std::time_t now) {
    std::tm today{};
    localtime_r(&now, &today);
    for (int i = 0; i < kDays; ++i) {
        std::tm day{};
        day.tm_year = today.tm_year;
        day.tm_mon = today.tm_mon;
        day.tm_mday = today.tm_mday + i;
        day.tm_isdst = -1;
        std::tm normal = day;
        normal.tm_hour = kHours / 2; // noon exists on every day
        (void)std::mktime(&normal);
        const std::time_t time = fallsOn(task, normal) ? timeOn(task, day, now) : 0;
        if (time != 0) {
            return time;
        }
    }
    return 0;
}

std::vector<ScheduledPush> scheduledPushes(std::time_t now) {
    ZpoScheduledTaskEntry* head = nullptr;
    const std::uint32_t status = ZpoGetScheduledTaskList(kTransferProgram, &head, kReserved);
    const std::unique_ptr<ZpoScheduledTaskEntry, ListDeleter> list(head);
    if (status != ZPO_OK) {
        throw Failure(Scope::Run, fmt::format("the scheduler's table cannot be read: status {:#x}", status));
    }
    std::vector<ScheduledPush> pushes;
    for (const ZpoScheduledTaskEntry* entry = list.get(); entry != nullptr; entry = entry->next) {
        const ZpoScheduledTaskRecord task = entry->record;
        pushes.push_back({fmt::format("{} {} {} {} {}", field(task.minute), field(task.hour),
                                      static_cast<const char*>(task.dayOfMonth), field(task.month),
                                      static_cast<const char*>(task.dayOfWeek)),
                          nextTime(task, now)});
    }
    return pushes;
}

} // namespace transfer
