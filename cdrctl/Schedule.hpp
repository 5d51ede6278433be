// When a push runs, by the rules of the push settings' scheduled task.
#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace cdrctl {

/// The push settings as they are stored. All times are of the local time zone.
struct Schedule {
    std::optional<int> type; ///< 0 daily, 1 weekly, 2 monthly, 3 pull, 4 none; nothing when it could not be read
    std::string time;
    std::string dayOfWeek;
    std::string dayOfMonth;

    /// Whether the type asks for a push.
    bool isPush() const { return type && *type >= 0 && *type <= 2; }
    /// Why the scheduler does not take it; empty when it does.
    std::string problem() const;
    /// "every day at 02:00", "every Sunday at 08:30", "on day 31 of each month at 02:00".
    std::string inWords() const;
    /// The five fields of its line in a crontab: "30 8 * * 7".
    std::string cronFields() const;
    /// The first run after `now`; nothing when there is none.
    std::optional<std::time_t> next(std::time_t now) const;
    /// The last run until `now`.
    std::optional<std::time_t> previous(std::time_t now) const;

  private:
    int day() const;
    bool runsOn(const std::tm& date) const;
    std::optional<std::time_t> search(std::time_t now, int step) const;
};

/// "Sun 2026-11-22 08:30"
std::string timeText(std::time_t time);
/// "in 3 days", "5 minutes ago": the largest unit alone.
std::string distanceText(std::time_t from, std::time_t to);
/// Of a CIM date-time; nothing for an interval, for zero and for a text that is none.
std::optional<std::time_t> timeOf(const std::string& cimDateTime);

} // namespace cdrctl
