// Forward declaration of Array.

#ifndef OW_ARRAY_FWD_HPP_INCLUDE_GUARD_
#define OW_ARRAY_FWD_HPP_INCLUDE_GUARD_

#include "OW_config.h"

namespace OpenWBEM {

template <class T>
class Array;

} // namespace OpenWBEM

#endif
