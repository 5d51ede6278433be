// Forward declarations and typedefs of the classes of the CIM model.

#pragma once

#include "OW_ArrayFwd.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class CIMBase;
class CIMClass;
class CIMDataType;
class CIMDateTime;
class CIMElement;
class CIMFlavor;
class CIMInstance;
class CIMMethod;
class CIMName;
class CIMNameSpace;
class CIMObjectPath;
class CIMParamValue;
class CIMParameter;
class CIMProperty;
class CIMQualifier;
class CIMQualifierType;
class CIMScope;
class CIMUrl;
class CIMValue;

typedef Array<CIMBase> CIMBaseArray;
typedef Array<CIMClass> CIMClassArray;
typedef Array<CIMDataType> CIMDataTypeArray;
typedef Array<CIMDateTime> CIMDateTimeArray;
typedef Array<CIMElement> CIMElementArray;
typedef Array<CIMFlavor> CIMFlavorArray;
typedef Array<CIMInstance> CIMInstanceArray;
typedef Array<CIMMethod> CIMMethodArray;
typedef Array<CIMName> CIMNameArray;
typedef Array<CIMNameSpace> CIMNameSpaceArray;
typedef Array<CIMObjectPath> CIMObjectPathArray;
typedef Array<CIMParamValue> CIMParamValueArray;
typedef Array<CIMParameter> CIMParameterArray;
typedef Array<CIMProperty> CIMPropertyArray;
typedef Array<CIMQualifier> CIMQualifierArray;
typedef Array<CIMQualifierType> CIMQualifierTypeArray;
typedef Array<CIMScope> CIMScopeArray;
typedef Array<CIMUrl> CIMUrlArray;
typedef Array<CIMValue> CIMValueArray;

typedef Enumeration<CIMClass> CIMClassEnumeration;
typedef Enumeration<CIMInstance> CIMInstanceEnumeration;
typedef Enumeration<CIMObjectPath> CIMObjectPathEnumeration;
typedef Enumeration<CIMQualifierType> CIMQualifierTypeEnumeration;

} // namespace OpenWBEM
