// What a provider sees of the server during a call.
#pragma once

#include "cimserver/provider/CallOrigin.hpp"

#include "OW_ProviderEnvironmentIFC.hpp"

#include <map>
#include <memory>
#include <string>

namespace cimserver::provider {

using ConfigItems = std::map<std::string, std::string>;

/// The environment of one call. A provider may keep it: logger and configuration items stay usable, and so does the
/// CIMOM handle until the server ends.
class Environment : public OpenWBEM::ProviderEnvironmentIFC {
  public:
    /// `component` names the provider in the log: "provider.ID".
    Environment(CallOrigin origin, std::string component, std::shared_ptr<const ConfigItems> config);

    OpenWBEM::CIMOMHandleIFCRef getCIMOMHandle() const override;
    /// As getCIMOMHandle: providers and declared instances are reached in the same way.
    OpenWBEM::CIMOMHandleIFCRef getRepositoryCIMOMHandle() const override;
    /// Throws CimError NotSupported.
    OpenWBEM::RepositoryIFCRef getRepository() const override;
    OpenWBEM::LoggerRef getLogger() const override;
    OpenWBEM::LoggerRef getLogger(const OpenWBEM::String& componentName) const override;
    OpenWBEM::String getConfigItem(const OpenWBEM::String& name, const OpenWBEM::String& defRetVal = "") const override;
    OpenWBEM::String getUserName() const override;
    OpenWBEM::OperationContext& getOperationContext() override;

    /// Operation, class, user and provider, for the log.
    std::string described() const;

  private:
    CallOrigin origin_;
    std::string component_;
    std::shared_ptr<const ConfigItems> config_;
};

/// A logger whose lines go to the server's log with their level and component.
OpenWBEM::LoggerRef makeLogger(const std::string& component);

} // namespace cimserver::provider
