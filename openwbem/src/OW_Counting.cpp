#include "OW_COWIntrusiveCountableBase.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_COWReference.hpp"
#include "OW_Exception.hpp"
#include "OW_ExceptionIds.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_Reference.hpp"
#include "OW_SerializableIFC.hpp"

namespace OpenWBEM {

// Not in any header: callers catch it as Exception.
OW_DECLARE_APIEXCEPTION(NULLCOWIntrusiveReference, OW_COMMON_API)
OW_DEFINE_EXCEPTION_WITH_ID(NULLCOWIntrusiveReference)
OW_DEFINE_EXCEPTION_WITH_ID(NULLCOWReference)
OW_DEFINE_EXCEPTION_WITH_ID(NULLReference)

void COWIntrusiveReferenceDetail::throwNull() {
    OW_THROW(NULLCOWIntrusiveReferenceException, "NULL COWReference dereferenced");
}

void COWReferenceDetail::throwNull() {
    OW_THROW(NULLCOWReferenceException, "NULL COWReference dereferenced");
}

void ReferenceDetail::throwNull() {
    OW_THROW(NULLReferenceException, "NULL Reference dereferenced");
}

// Destructors live here so that the classes' type information lies in the library only.
IntrusiveCountableBase::~IntrusiveCountableBase() = default;
COWIntrusiveCountableBase::~COWIntrusiveCountableBase() = default;
SerializableIFC::~SerializableIFC() = default;

} // namespace OpenWBEM
