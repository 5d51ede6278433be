// NoSuchPropertyException.

#ifndef OW_NO_SUCH_PROPERTY_EXCEPTION_HPP_INCLUDE_GUARD_
#define OW_NO_SUCH_PROPERTY_EXCEPTION_HPP_INCLUDE_GUARD_

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// A property was demanded that is not there; the message is its name.
OW_DECLARE_APIEXCEPTION(NoSuchProperty, OW_COMMON_API)

} // namespace OpenWBEM

#endif
