// Interface of a C++ provider that delivers indications.

#pragma once

#include "OW_Array.hpp"
#include "OW_CppProviderBaseIFC.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Delivers indications to the handlers of certain classes.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppIndicationExportProviderIFC : public virtual CppProviderBaseIFC {
  public:
    ~CppIndicationExportProviderIFC() override;
    /// Names of the handler classes that it serves.
    virtual StringArray getHandlerClassNames() = 0;
    /// Delivers the indication to the handler.
    virtual void exportIndication(const ProviderEnvironmentIFCRef& env, const String& ns,
                                  const CIMInstance& indHandlerInst, const CIMInstance& indicationInst) = 0;
    /// Called at shutdown while a delivery is under way: the first asks it to end, the second is the last call before
    /// its thread is ended by force. By default they do nothing.
    virtual void doCooperativeCancel();
    virtual void doDefinitiveCancel();
    /// This object.
    CppIndicationExportProviderIFC* getIndicationExportProvider() override;
};

typedef SharedLibraryReference<IntrusiveReference<CppIndicationExportProviderIFC>> CppIndicationExportProviderIFCRef;

} // namespace OpenWBEM
