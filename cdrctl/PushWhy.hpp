// Why a push runs or does not: facts judged, in words.
#pragma once

#include "cdrctl/Device.hpp"
#include "cdrctl/Schedule.hpp"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace cdrctl {

/// All that is known. Times are in seconds since 1970.
struct PushFacts {
    std::string unreadable; ///< why the server could not tell the settings; empty when it could
    Schedule schedule;
    std::string typeLabel; ///< "Weekly push"
    std::string address;   ///< of the server that the files go to
    std::optional<std::time_t> lastTransfer;
    std::time_t now = 0;
    std::optional<DeviceFacts> device; ///< nothing when cdrctl does not run on the device
};

enum class Weight { Note, Problem };

struct Finding {
    Weight weight = Weight::Note;
    std::string source; ///< where it is from: "settings", "statistics", "crontab", "cron", "program", "transfer",
                        ///< "log", "device"
    std::string text;
    std::string advice; ///< a command or a hint; may be empty
};

/// The first Problem is the reason to name; without one nothing keeps the push from running.
std::vector<Finding> explainPush(const PushFacts& facts);

} // namespace cdrctl
