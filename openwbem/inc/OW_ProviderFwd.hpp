// Forward declarations and reference typedefs of the provider interfaces that are not bound to C++ modules.

#pragma once

#include "OW_ArrayFwd.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class AssociatorProviderIFC;
class IndicationExportProviderIFC;
class IndicationProviderIFC;
class InstanceProviderIFC;
class MethodProviderIFC;
class PolledProviderIFC;
class ProviderEnvironmentIFC;
class SecondaryInstanceProviderIFC;

typedef IntrusiveReference<AssociatorProviderIFC> AssociatorProviderIFCRef;
typedef IntrusiveReference<IndicationExportProviderIFC> IndicationExportProviderIFCRef;
typedef IntrusiveReference<IndicationProviderIFC> IndicationProviderIFCRef;
typedef IntrusiveReference<InstanceProviderIFC> InstanceProviderIFCRef;
typedef IntrusiveReference<MethodProviderIFC> MethodProviderIFCRef;
typedef IntrusiveReference<PolledProviderIFC> PolledProviderIFCRef;
typedef IntrusiveReference<ProviderEnvironmentIFC> ProviderEnvironmentIFCRef;
typedef IntrusiveReference<SecondaryInstanceProviderIFC> SecondaryInstanceProviderIFCRef;

typedef Array<IndicationExportProviderIFCRef> IndicationExportProviderIFCRefArray;
typedef Array<PolledProviderIFCRef> PolledProviderIFCRefArray;

} // namespace OpenWBEM
