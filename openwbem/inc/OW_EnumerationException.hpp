// EnumerationException.

#pragma once

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// An element was demanded of an empty Enumeration, or its file fails.
OW_DECLARE_APIEXCEPTION(Enumeration, OW_COMMON_API)

} // namespace OpenWBEM
