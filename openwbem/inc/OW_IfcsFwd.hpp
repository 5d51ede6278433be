// Forward declarations of the interfaces between provider and object manager, and the result handlers' typedefs.

#pragma once

#include "OW_CIMFwd.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_config.h"

namespace OpenWBEM {

template <typename T>
class ResultHandlerIFC;

typedef ResultHandlerIFC<CIMClass> CIMClassResultHandlerIFC;
typedef ResultHandlerIFC<CIMInstance> CIMInstanceResultHandlerIFC;
typedef ResultHandlerIFC<CIMObjectPath> CIMObjectPathResultHandlerIFC;
typedef ResultHandlerIFC<CIMQualifierType> CIMQualifierTypeResultHandlerIFC;
typedef ResultHandlerIFC<String> StringResultHandlerIFC;

class CIMOMHandleIFC;
class RepositoryIFC;

typedef IntrusiveReference<CIMOMHandleIFC> CIMOMHandleIFCRef;
typedef IntrusiveReference<RepositoryIFC> RepositoryIFCRef;

} // namespace OpenWBEM
