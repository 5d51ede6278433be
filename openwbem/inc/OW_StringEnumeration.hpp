// Enumeration of Strings.

#pragma once

#include "OW_Enumeration.hpp"
#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

typedef Enumeration<String> StringEnumeration;

} // namespace OpenWBEM
