// What the platform's scheduler holds of the transfer program.
#pragma once

#include "ZpoShared.h"

#include <ctime>
#include <string>
#include <vector>

namespace transfer {

struct ScheduledPush {
    std::string fields;   ///< as a crontab writes them: "30 8 * * 0"
    std::time_t next = 0; ///< when it fires next; 0: never
};

/// The tasks of this user that run the transfer program. Throws Failure, scope Run, when the table cannot be read.
std::vector<ScheduledPush> scheduledPushes(std::time_t now);

/// The first minute after `now` at which cron runs the task, in local time; 0 when there is none within 8 years. As
/// cron has it, one of the two days is enough when both are given.
std::time_t nextTime(const ZpoScheduledTaskRecord& task, std::time_t now);

} // namespace transfer
