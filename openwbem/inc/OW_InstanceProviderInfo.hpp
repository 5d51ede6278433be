// The classes that an instance provider serves.

#ifndef OW_INSTANCE_PROVIDER_INFO_HPP_INCLUDE_GUARD_
#define OW_INSTANCE_PROVIDER_INFO_HPP_INCLUDE_GUARD_

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_PROVIFC_API InstanceProviderInfo : public ProviderInfoBase<InstClassInfo> {};

} // namespace OpenWBEM

#endif
