#ifndef OW_CIM_HPP_INCLUDE_GUARD_
#define OW_CIM_HPP_INCLUDE_GUARD_
#include "OW_config.h"

// The whole CIM model.
#include "OW_Array.hpp"
#include "OW_CIMBase.hpp"
#include "OW_CIMClass.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMFlavor.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMMethod.hpp"
#include "OW_CIMNameSpace.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMParamValue.hpp"
#include "OW_CIMParameter.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMQualifier.hpp"
#include "OW_CIMQualifierType.hpp"
#include "OW_CIMScope.hpp"
#include "OW_CIMUrl.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Char16.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"

#endif
