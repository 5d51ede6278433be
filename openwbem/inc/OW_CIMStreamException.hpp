#pragma once
#include "OW_config.h"

#include "OW_Exception.hpp"

namespace OpenWBEM {

/// Thrown by readObject() for bytes that are not what the matching writeObject() makes, and by writeObject() when the
/// stream fails; those of String throw StringConversionException. The error code is one of CIMBase::EErrorCodes where
/// the signature is at fault.
OW_DECLARE_APIEXCEPTION(CIMStream, OW_COMMON_API)

} // namespace OpenWBEM
