// NoSuchQualifierException.

#pragma once

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// A qualifier does not exist; the message is its name.
OW_DECLARE_APIEXCEPTION(NoSuchQualifier, OW_COMMON_API)

} // namespace OpenWBEM
