// A call into a provider.
#pragma once

#include "cimserver/common/Workers.hpp"
#include "cimserver/provider/CallWatch.hpp"
#include "cimserver/provider/Gate.hpp"

#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"
#include "OW_CppSecondaryInstanceProviderIFC.hpp"
#include "OW_ProviderEnvironmentIFC.hpp"

namespace cimserver::provider {

/// Is inside the provider's gate until it is destroyed; the thread is no worker meanwhile. The interface pointers
/// belong to the provider and are null when it does not implement the interface.
class ProviderCall {
  public:
    ProviderCall(Gate::Pass pass, CallWatch::Ticket ticket, OpenWBEM::CppProviderBaseIFC& provider,
                 OpenWBEM::ProviderEnvironmentIFCRef env);

    const OpenWBEM::ProviderEnvironmentIFCRef& env() const { return env_; }
    OpenWBEM::CppInstanceProviderIFC* instances() const { return provider_->getInstanceProvider(); }
    OpenWBEM::CppMethodProviderIFC* methods() const { return provider_->getMethodProvider(); }
    OpenWBEM::CppAssociatorProviderIFC* associators() const { return provider_->getAssociatorProvider(); }
    OpenWBEM::CppSecondaryInstanceProviderIFC* secondaries() const { return provider_->getSecondaryInstanceProvider(); }

  private:
    Workers::Aside aside_;
    Gate::Pass pass_; // outlives the environment, which may hold what the provider made
    CallWatch::Ticket ticket_;
    OpenWBEM::CppProviderBaseIFC* provider_;
    OpenWBEM::ProviderEnvironmentIFCRef env_;
};

} // namespace cimserver::provider
