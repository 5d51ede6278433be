// The tag that asks a constructor for a null object.

#ifndef OW_CIM_NULL_HPP_INCLUDE_GUARD_
#define OW_CIM_NULL_HPP_INCLUDE_GUARD_

#include "OW_config.h"

namespace OpenWBEM {

/// Constructs null objects: CIMInstance(CIMNULL). Not to be mixed up with the enumerator CIMDataType::CIMNULL.
enum CIMNULL_t { CIMNULL };

} // namespace OpenWBEM

#endif
