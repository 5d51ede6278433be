#pragma once

#include "ZpoShared.h"

#include <cstdint>

namespace zpo {

/// The operations behind the task scheduler's functions of ZpoShared.h; see there.
std::uint32_t setTask(const ZpoScheduledTask& record);
std::uint32_t listTasks(const char* path, ZpoScheduledTaskEntry** head);
std::uint32_t deleteTask(const ZpoScheduledTaskRecord& record);
/// Whether a task could not be set or removed, and none has been since.
bool isTaskPending();
void freeTasks(ZpoScheduledTaskEntry* head);

} // namespace zpo
