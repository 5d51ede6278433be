// The way back into the server that a provider gets from its environment.
#pragma once

#include "cimserver/cimom/Cimom.hpp"

#include "OW_CIMOMHandleIFC.hpp"

#include <memory>

namespace cimserver::cimom {

/// Calls the operations of Cimom on behalf of the request during which the provider got the handle. The schema is
/// fixed: operations that would change it, queries and the class forms of the association operations throw CimError
/// NotSupported. After the server's end every operation throws Failed.
CIMOMHandleIFCRef makeCimomHandle(std::weak_ptr<Cimom*> cimom, RequestContext context);

} // namespace cimserver::cimom
