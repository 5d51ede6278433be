#pragma once
#include "OW_config.h"

#include "OW_CIMFwd.hpp"
#include "OW_Exception.hpp"

namespace OpenWBEM {

/// Thrown when a value is read as a type that it is not.
OW_DECLARE_APIEXCEPTION(ValueCast, OW_COMMON_API)

namespace CIMValueCast {

/// The value as one of the type. Null if the value is null or the type names none; unchanged if it has the type.
///
/// Everything else goes through the text of the value, so that nothing is cut: 70000 is no uint16, 1.5 no uint8, "true"
/// no number. A scalar becomes an array of one element, an array gives its first element (null if it has none). A
/// date-time or a reference comes from a string only, an embedded object from nothing.
///
/// Throws CIMException FAILED naming the value and the type if it cannot be converted; CIMDateTimeException for a
/// string that is no date-time; CIMException INVALID_PARAMETER or NOT_FOUND for one that is no object path.
OW_COMMON_API CIMValue castValueToDataType(const CIMValue& value, const CIMDataType& dataType);

} // namespace CIMValueCast
} // namespace OpenWBEM
