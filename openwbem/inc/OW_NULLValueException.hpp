// NULLValueException.

#pragma once

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// A null value was read; the message is the name of the element.
OW_DECLARE_APIEXCEPTION(NULLValue, OW_COMMON_API)

} // namespace OpenWBEM
