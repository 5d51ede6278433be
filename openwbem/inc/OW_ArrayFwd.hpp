// Forward declaration of Array.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

template <class T>
class Array;

} // namespace OpenWBEM
