#pragma once

#include "ZpoShared.h"

#include <cstdint>

namespace zpo {

/// The operation behind ZpoNotifyRegBackupAndRestore; see there.
std::uint32_t registerCallback(const char* name, ZpoRegBackupAndRestoreCallback callback, std::uint32_t kind);

} // namespace zpo
