// All that a C++ provider needs.

#ifndef OW_CPP_PROVIDER_INCLUDES_HPP_INCLUDE_GUARD_
#define OW_CPP_PROVIDER_INCLUDES_HPP_INCLUDE_GUARD_

#include "OW_Array.hpp"
#include "OW_Assertion.hpp"
#include "OW_CIM.hpp"
#include "OW_CIMOMHandleIFC.hpp"
#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_CppIndicationExportProviderIFC.hpp"
#include "OW_CppIndicationProviderIFC.hpp"
#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"
#include "OW_CppPolledProviderIFC.hpp"
#include "OW_CppReadOnlyInstanceProviderIFC.hpp"
#include "OW_CppSecondaryInstanceProviderIFC.hpp"
#include "OW_CppSimpleInstanceProviderIFC.hpp"
#include "OW_DateTime.hpp"
#include "OW_Enumeration.hpp"
#include "OW_Format.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_Logger.hpp"
#include "OW_OperationContext.hpp"
#include "OW_ProviderEnvironmentIFC.hpp"
#include "OW_ResultHandlerIFC.hpp"
#include "OW_String.hpp"
#include "OW_StringStream.hpp"
#include "OW_config.h"

#endif
