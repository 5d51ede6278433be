// NULLValueException.

#pragma once

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// A value was demanded where there is none; the message is the name of the element.
OW_DECLARE_APIEXCEPTION(NULLValue, OW_COMMON_API)

} // namespace OpenWBEM
