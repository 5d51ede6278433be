// Enumeration of Strings.

#ifndef OW_STRING_ENUMERATION_HPP_INCLUDE_GUARD_
#define OW_STRING_ENUMERATION_HPP_INCLUDE_GUARD_

#include "OW_Enumeration.hpp"
#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

typedef Enumeration<String> StringEnumeration;

} // namespace OpenWBEM

#endif
