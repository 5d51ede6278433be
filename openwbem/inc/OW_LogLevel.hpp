// How much is logged.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

/// Each level includes those before it.
enum ELogLevel { E_NONE_LEVEL, E_FATAL_ERROR_LEVEL, E_ERROR_LEVEL, E_INFO_LEVEL, E_DEBUG_LEVEL, E_ALL_LEVEL };

} // namespace OpenWBEM
