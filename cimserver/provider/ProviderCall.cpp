#include "cimserver/provider/ProviderCall.hpp"

namespace cimserver::provider {

ProviderCall::ProviderCall(std::optional<Gate::Pass> pass, OpenWBEM::CppProviderBaseIFC& provider,
                           OpenWBEM::ProviderEnvironmentIFCRef env)
    : pass_(std::move(pass)), provider_(&provider), env_(std::move(env)) {}

} // namespace cimserver::provider
