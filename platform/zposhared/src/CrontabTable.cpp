#include "CrontabTable.hpp"

#include "Characters.hpp"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <tuple>

namespace zpo {
namespace {

constexpr std::size_t kMaxDayText = sizeof(ZpoScheduledTaskRecord::dayOfMonth) - 1;

bool isPlainInShell(char c) {
    return static_cast<unsigned char>(c) >= 0x80 || isAlphanumeric(c) || std::strchr("/._-+,:@=", c) != nullptr;
}

std::string quoted(const std::string& path) {
    if (std::all_of(path.begin(), path.end(), isPlainInShell)) {
        return path;
    }
    std::string result = "'";
    for (const char c : path) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

std::string field(std::uint16_t value) {
    return value == ZPO_SCHED_ANY ? "*" : std::to_string(value);
}

std::string_view sundayAsZero(std::string_view day) {
    return day == "7" ? "0" : day;
}

std::string lineOf(const CrontabTask& task) {
    return field(task.minute) + ' ' + field(task.hour) + ' ' + task.dayOfMonth + ' ' + field(task.month) + ' ' +
           task.dayOfWeek + ' ' + quoted(task.path);
}

bool takeWord(std::string_view& rest, std::string_view& word) {
    const auto blank = rest.find(' ');
    word = rest.substr(0, blank);
    rest.remove_prefix(blank == std::string_view::npos ? rest.size() : blank + 1);
    return !word.empty() && !rest.empty();
}

bool takeNumber(std::string_view& rest, std::uint16_t& value) {
    std::string_view word;
    if (!takeWord(rest, word)) {
        return false;
    }
    value = ZPO_SCHED_ANY;
    if (word == "*") {
        return true;
    }
    const auto parsed = std::from_chars(word.data(), word.data() + word.size(), value);
    return parsed.ec == std::errc() && parsed.ptr == word.data() + word.size();
}

bool takeDay(std::string_view& rest, std::string& day) {
    std::string_view word;
    const bool ok = takeWord(rest, word) && word.size() <= kMaxDayText;
    day = word;
    return ok && (day == "*" || day.find_first_not_of("0123456789") == std::string::npos);
}

// Undoes quoted(). Accepts any text: the caller checks that quoted() gives it back.
std::string unquoted(std::string_view command) {
    std::string path;
    bool inside = false;
    for (std::size_t i = 0; i < command.size(); ++i) {
        if (command[i] == '\'') {
            inside = !inside;
        } else if (command[i] == '\\' && !inside && i + 1 < command.size()) {
            path += command[++i];
        } else {
            path += command[i];
        }
    }
    return path;
}

bool parseTask(std::string_view line, CrontabTask& task) {
    if (!takeNumber(line, task.minute) || !takeNumber(line, task.hour) || !takeDay(line, task.dayOfMonth) ||
        !takeNumber(line, task.month) || !takeDay(line, task.dayOfWeek)) {
        return false;
    }
    task.path = unquoted(line);
    return checkPath(task.path.c_str()) == ZPO_OK && quoted(task.path) == line;
}

struct Place {
    std::size_t offset, length; // of the line with its line feed
    CrontabTask task;
};

// The first task at or after `from`, which is the beginning of a line.
bool findTask(const std::string& text, std::size_t from, Place& place) {
    for (std::size_t end; (end = text.find('\n', from)) != std::string::npos; from = end + 1) {
        if (parseTask(std::string_view(text).substr(from, end - from), place.task)) {
            place.offset = from;
            place.length = end + 1 - from;
            return true;
        }
    }
    return false;
}

bool isInRange(std::uint16_t value, std::uint16_t least, std::uint16_t most) {
    return value == ZPO_SCHED_ANY || (value >= least && value <= most);
}

bool takeText(const char (&source)[30], std::string& result) {
    const std::size_t length = strnlen(source, sizeof source);
    result.assign(source, length);
    return length > 0 && length < sizeof source;
}

} // namespace

bool CrontabTask::operator==(const CrontabTask& other) const {
    return std::tie(minute, hour, month, dayOfMonth, path) ==
               std::tie(other.minute, other.hour, other.month, other.dayOfMonth, other.path) &&
           sundayAsZero(dayOfWeek) == sundayAsZero(other.dayOfWeek);
}

std::uint32_t checkPath(const char* path) {
    const std::size_t length = strnlen(path, sizeof(ZpoScheduledTask::path));
    const bool usable = length < sizeof(ZpoScheduledTask::path) && *path == '/' &&
                        std::none_of(path, path + length, [](char c) { return c == '%' || isControl(c); });
    return usable ? ZPO_OK : ZPO_SCHED_BAD_PATH;
}

std::uint32_t taskFrom(const ZpoScheduledTask& record, CrontabTask& task) {
    if (checkPath(record.path) != ZPO_OK) {
        return ZPO_SCHED_BAD_PATH;
    }
    if (!isInRange(record.minute, 0, 59) || !isInRange(record.hour, 0, 23) || !isInRange(record.dayOfMonth, 1, 31) ||
        !isInRange(record.dayOfWeek, 0, 7) || !isInRange(record.month, 1, 12)) {
        return ZPO_SCHED_BAD_FIELD;
    }
    task = {record.minute, record.hour, field(record.dayOfMonth), field(record.dayOfWeek), record.month, record.path};
    return ZPO_OK;
}

std::uint32_t taskFrom(const ZpoScheduledTaskRecord& record, CrontabTask& task) {
    if (checkPath(record.path) != ZPO_OK) {
        return ZPO_SCHED_BAD_PATH;
    }
    task.minute = record.minute;
    task.hour = record.hour;
    task.month = record.month;
    task.path = record.path;
    return takeText(record.dayOfMonth, task.dayOfMonth) && takeText(record.dayOfWeek, task.dayOfWeek)
               ? ZPO_OK
               : ZPO_SCHED_BAD_FIELD;
}

void CrontabTable::add(const CrontabTask& task) {
    const std::size_t lastLineFeed = text_.rfind('\n');
    const std::size_t at = lastLineFeed == std::string::npos ? 0 : lastLineFeed + 1;
    text_.insert(at, lineOf(task) + '\n');
}

std::vector<CrontabTask> CrontabTable::list(std::string_view path) const {
    std::vector<CrontabTask> tasks;
    Place place;
    for (std::size_t from = 0; findTask(text_, from, place); from = place.offset + place.length) {
        if (place.task.path == path) {
            tasks.push_back(place.task);
        }
    }
    return tasks;
}

bool CrontabTable::remove(const CrontabTask& task) {
    Place place;
    for (std::size_t from = 0; findTask(text_, from, place); from = place.offset + place.length) {
        if (place.task == task) {
            text_.erase(place.offset, place.length);
            return true;
        }
    }
    return false;
}

} // namespace zpo
