// The classes that a secondary instance provider serves.

#pragma once

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_PROVIFC_API SecondaryInstanceProviderInfo : public ProviderInfoBase<InstClassInfo> {};

typedef Array<SecondaryInstanceProviderInfo> SecondaryInstanceProviderInfoArray;

} // namespace OpenWBEM
