// EnumerationException.

#pragma once

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// An element was requested from an empty Enumeration, or its file failed.
OW_DECLARE_APIEXCEPTION(Enumeration, OW_COMMON_API)

} // namespace OpenWBEM
