#pragma once
#include "OW_config.h"

#include "OW_CIMFwd.hpp"
#include "OW_Exception.hpp"

namespace OpenWBEM {

/// Thrown when a value is read as a type that it does not have.
OW_DECLARE_APIEXCEPTION(ValueCast, OW_COMMON_API)

namespace CIMValueCast {

/// Converts the value to the type. Null if the value is null or dataType names no type; unchanged if it has the type.
///
/// Everything else goes through the text of the value, so that nothing is cut: 70000 is not a uint16, 1.5 not a uint8,
/// "true" not a number. A scalar becomes an array of one element, an array gives its first element (null if it has
/// none). Only a string converts to a date-time or a reference, nothing to an embedded object.
///
/// Throws CIMException FAILED naming the value and the type if it cannot be converted; CIMDateTimeException for a
/// string that is not a date-time; CIMException INVALID_PARAMETER or NOT_FOUND for one that is not an object path.
OW_COMMON_API CIMValue castValueToDataType(const CIMValue& value, const CIMDataType& dataType);

} // namespace CIMValueCast
} // namespace OpenWBEM
