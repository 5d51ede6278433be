// A call into a provider.
#pragma once

#include "cimserver/provider/Gate.hpp"

#include "OW_CIMOMHandleIFC.hpp"
#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"
#include "OW_CppSecondaryInstanceProviderIFC.hpp"
#include "OW_OperationContext.hpp"
#include "OW_ProviderEnvironmentIFC.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cimserver::provider {

/// For whom a call is made; the provider's environment answers from it.
struct CallOrigin {
    std::string user; ///< empty without authentication
    std::shared_ptr<OpenWBEM::OperationContext> operation;
    std::function<OpenWBEM::CIMOMHandleIFCRef()> makeHandle; ///< makes the handle by which providers call the server
};

/// Holds the provider's gate, if it has one, until it is destroyed. The interface pointers belong to the provider and
/// are null when it does not implement the interface.
class ProviderCall {
  public:
    ProviderCall(std::optional<Gate::Pass> pass, OpenWBEM::CppProviderBaseIFC& provider,
                 OpenWBEM::ProviderEnvironmentIFCRef env);

    const OpenWBEM::ProviderEnvironmentIFCRef& env() const { return env_; }
    OpenWBEM::CppInstanceProviderIFC* instances() const { return provider_->getInstanceProvider(); }
    OpenWBEM::CppMethodProviderIFC* methods() const { return provider_->getMethodProvider(); }
    OpenWBEM::CppAssociatorProviderIFC* associators() const { return provider_->getAssociatorProvider(); }
    OpenWBEM::CppSecondaryInstanceProviderIFC* secondaries() const { return provider_->getSecondaryInstanceProvider(); }

  private:
    std::optional<Gate::Pass> pass_; // last to be destroyed: the environment may hold what the provider made
    OpenWBEM::CppProviderBaseIFC* provider_;
    OpenWBEM::ProviderEnvironmentIFCRef env_;
};

} // namespace cimserver::provider
