// The classes that an associator provider serves.

#pragma once

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_PROVIFC_API AssociatorProviderInfo : public ProviderInfoBase<InstClassInfo> {};

typedef Array<AssociatorProviderInfo> AssociatorProviderInfoArray;

} // namespace OpenWBEM
