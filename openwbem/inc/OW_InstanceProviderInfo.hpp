// The classes that an instance provider serves.

#pragma once

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_PROVIFC_API InstanceProviderInfo : public ProviderInfoBase<InstClassInfo> {};

typedef Array<InstanceProviderInfo> InstanceProviderInfoArray;

} // namespace OpenWBEM
