// What a CIM object manager says about itself.

#pragma once

#include "OW_Array.hpp"
#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

struct OW_COMMON_API CIMFeatures {
    String cimom;                        ///< path of its service, such as "/cimom"
    String cimProduct;                   ///< "Server" or the like
    String protocolVersion;              ///< of CIM operations over HTTP, such as "1.0"
    String extURL;                       ///< where its extensions are described
    StringArray supportedGroups;         ///< groups of operations, such as "Basic Read"
    StringArray supportedQueryLanguages; ///< for execQuery()
    StringArray validation;              ///< how it checks what it gets
};

} // namespace OpenWBEM
