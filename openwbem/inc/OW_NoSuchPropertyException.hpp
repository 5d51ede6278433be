// NoSuchPropertyException.

#pragma once

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// A property does not exist; the message is its name.
OW_DECLARE_APIEXCEPTION(NoSuchProperty, OW_COMMON_API)

} // namespace OpenWBEM
