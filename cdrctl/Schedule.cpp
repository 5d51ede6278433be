#include "cdrctl/Schedule.hpp"

#include "TimeText.hpp"

#include <cstdio>
#include <cstdlib>

namespace cdrctl {

using cdroam::leadingInteger;

namespace {

constexpr int kWeekly = 1;
constexpr int kMonthly = 2;
constexpr int kSunday = 7;
constexpr int kLongestPause = 62; ///< days; from 31 March to the next day 31 there are 61
constexpr const char* kDays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

std::tm localTime(std::time_t time) {
    std::tm parts{};
    ::localtime_r(&time, &parts);
    return parts;
}

std::string clockText(const cdroam::TimeOfDay& time) {
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d", time.hour, time.minute);
    return text;
}

} // namespace

int Schedule::day() const {
    if (type == kMonthly) {
        return leadingInteger(dayOfMonth.c_str());
    }
    const int stored = leadingInteger(dayOfWeek.c_str());
    return stored == 0 ? kSunday : stored;
}

std::string Schedule::problem() const {
    if (type == kMonthly && (day() < 1 || day() > 31)) {
        return dayOfMonth.empty() ? "no day of the month is set" : "'" + dayOfMonth + "' is no day of a month";
    }
    if (type == kWeekly && (day() < 1 || day() > kSunday)) {
        return "'" + dayOfWeek + "' is no day of the week";
    }
    return cdroam::isTimeOfDay(time.c_str()) ? "" : "'" + time + "' is no time of day";
}

std::string Schedule::inWords() const {
    const std::string at = " at " + clockText(cdroam::parseTimeOfDay(time.c_str()));
    if (type == kMonthly) {
        return "on day " + std::to_string(day()) + " of each month" + at;
    }
    return (type == kWeekly ? "every " + std::string(kDays[day() % kSunday]) : "every day") + at;
}

std::string Schedule::cronFields() const {
    const auto at = cdroam::parseTimeOfDay(time.c_str());
    return std::to_string(at.minute) + " " + std::to_string(at.hour) + " " +
           (type == kMonthly ? std::to_string(day()) : "*") + " * " + (type == kWeekly ? std::to_string(day()) : "*");
}

bool Schedule::runsOn(const std::tm& date) const {
    if (type == kMonthly) {
        return date.tm_mday == day();
    }
    return type != kWeekly || date.tm_wday == day() % kSunday;
}

std::optional<std::time_t> Schedule::search(std::time_t now, int step) const {
    if (!isPush() || !problem().empty()) {
        return std::nullopt;
    }
    const auto at = cdroam::parseTimeOfDay(time.c_str());
    for (int days = 0; days <= kLongestPause; ++days) {
        std::tm date = localTime(now);
        date.tm_mday += days * step;
        date.tm_hour = at.hour;
        date.tm_min = at.minute;
        date.tm_sec = 0;
        date.tm_isdst = -1;
        const std::time_t candidate = std::mktime(&date); // also brings the day of month and week in order
        if (runsOn(date) && (step > 0 ? candidate > now : candidate <= now)) {
            return candidate;
        }
    }
    return std::nullopt;
}

std::optional<std::time_t> Schedule::next(std::time_t now) const {
    return search(now, 1);
}

std::optional<std::time_t> Schedule::previous(std::time_t now) const {
    return search(now, -1);
}

std::string timeText(std::time_t time) {
    const std::tm parts = localTime(time);
    char text[64];
    std::strftime(text, sizeof text, "%a %Y-%m-%d %H:%M", &parts);
    return text;
}

std::string distanceText(std::time_t from, std::time_t to) {
    struct Unit {
        std::time_t seconds;
        const char* name;
    };
    constexpr Unit kUnits[] = {{86400, "day"}, {3600, "hour"}, {60, "minute"}, {0, ""}};
    const std::time_t distance = std::abs(to - from);
    const Unit* unit = kUnits;
    while (distance < unit->seconds) {
        ++unit;
    }
    if (unit->seconds == 0) {
        return to <= from ? "just now" : "in less than a minute";
    }
    const auto count = distance / unit->seconds;
    const std::string amount = std::to_string(count) + " " + unit->name + (count == 1 ? "" : "s");
    return to < from ? amount + " ago" : "in " + amount;
}

std::optional<std::time_t> timeOf(const std::string& cimDateTime) {
    std::tm parts{};
    int microseconds = 0;
    char sign = 0;
    int offset = 0;
    const int read =
        std::sscanf(cimDateTime.c_str(), "%4d%2d%2d%2d%2d%2d.%6d%c%3d", &parts.tm_year, &parts.tm_mon, &parts.tm_mday,
                    &parts.tm_hour, &parts.tm_min, &parts.tm_sec, &microseconds, &sign, &offset);
    if (cimDateTime.size() != 25 || read != 9 || (sign != '+' && sign != '-') || parts.tm_year == 0) {
        return std::nullopt;
    }
    parts.tm_year -= 1900;
    parts.tm_mon -= 1;
    constexpr std::time_t kMinute = 60;
    return ::timegm(&parts) - (sign == '+' ? kMinute : -kMinute) * offset;
}

} // namespace cdrctl
