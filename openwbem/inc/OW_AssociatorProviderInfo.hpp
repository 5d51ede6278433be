// The classes that an associator provider serves.

#ifndef OW_ASSOCIATOR_PROVIDER_INFO_HPP_INCLUDE_GUARD_
#define OW_ASSOCIATOR_PROVIDER_INFO_HPP_INCLUDE_GUARD_

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_PROVIFC_API AssociatorProviderInfo : public ProviderInfoBase<InstClassInfo> {};

} // namespace OpenWBEM

#endif
