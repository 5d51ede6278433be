// The tag that asks a constructor for a null object.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

/// Constructs null objects: CIMInstance(CIMNULL). Not to be confused with the enumerator CIMDataType::CIMNULL.
enum CIMNULL_t { CIMNULL };

} // namespace OpenWBEM
