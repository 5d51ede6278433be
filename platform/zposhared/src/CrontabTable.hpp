#pragma once

#include "ZpoShared.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zpo {

/// A task as it stands in a crontab.
struct CrontabTask {
    std::uint16_t minute = ZPO_SCHED_ANY;
    std::uint16_t hour = ZPO_SCHED_ANY;
    std::string dayOfMonth = "*";
    std::string dayOfWeek = "*";
    std::uint16_t month = ZPO_SCHED_ANY;
    std::string path;

    bool operator==(const CrontabTask& other) const;
};

/// Checks and converts a task to be created: 0, ZPO_SCHED_BAD_PATH or ZPO_SCHED_BAD_FIELD.
std::uint32_t taskFrom(const ZpoScheduledTask& record, CrontabTask& task);
/// Converts a record that names a task: 0, ZPO_SCHED_BAD_PATH or ZPO_SCHED_BAD_FIELD (a day text that is empty or not
/// NUL-terminated).
std::uint32_t taskFrom(const ZpoScheduledTaskRecord& record, CrontabTask& task);
/// Checks a program's path: absolute, at most 255 bytes, no '%' (a line feed to cron), no control character. Reads no
/// further than 256 bytes. 0 or ZPO_SCHED_BAD_PATH.
std::uint32_t checkPath(const char* path);

/// A crontab's text. Editing leaves everything but this library's tasks untouched.
///
/// A task is a line of exactly this form; the program's path is quoted for the shell where it needs it:
///     30 8 * * 3 /qv/bin/CDRTransfer
/// A line with lists, ranges, steps, names, arguments or anything else is not a task.
class CrontabTable {
  public:
    explicit CrontabTable(std::string text) : text_(std::move(text)) {}

    const std::string& text() const { return text_; }
    /// Adds a task at the end, before a last line that lacks its line feed.
    void add(const CrontabTask& task);
    /// This library's tasks that run `path`, in the table's order.
    std::vector<CrontabTask> list(std::string_view path) const;
    /// Removes the first task equal to `task`; false when there is none.
    bool remove(const CrontabTask& task);

  private:
    std::string text_;
};

} // namespace zpo
