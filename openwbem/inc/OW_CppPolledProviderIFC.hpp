// Interface of a C++ provider that is called at intervals.

#pragma once

#include "OW_CppProviderBaseIFC.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Is called by the object manager at intervals that the provider chooses.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppPolledProviderIFC : public virtual CppProviderBaseIFC {
  public:
    ~CppPolledProviderIFC() override;
    /// Does the work and returns the seconds until the next call: 0 for no more calls, as after an exception; below 0
    /// for the same interval again.
    virtual Int32 poll(const ProviderEnvironmentIFCRef& env) = 0;
    /// Seconds from the start of the object manager to the first poll(); 0 for never.
    virtual Int32 getInitialPollingInterval(const ProviderEnvironmentIFCRef& env) = 0;
    /// Called at shutdown while poll() is running: the first asks it to end, the second is the last call before its
    /// thread is ended by force. By default they do nothing.
    virtual void doCooperativeCancel();
    virtual void doDefinitiveCancel();
    /// This object.
    CppPolledProviderIFC* getPolledProvider() override;
};

typedef SharedLibraryReference<IntrusiveReference<CppPolledProviderIFC>> CppPolledProviderIFCRef;

} // namespace OpenWBEM
