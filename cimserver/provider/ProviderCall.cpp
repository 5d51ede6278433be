#include "cimserver/provider/ProviderCall.hpp"

namespace cimserver::provider {

ProviderCall::ProviderCall(Gate::Pass pass, CallWatch::Ticket ticket, OpenWBEM::CppProviderBaseIFC& provider,
                           OpenWBEM::ProviderEnvironmentIFCRef env)
    : pass_(std::move(pass)), ticket_(std::move(ticket)), provider_(&provider), env_(std::move(env)) {}

} // namespace cimserver::provider
