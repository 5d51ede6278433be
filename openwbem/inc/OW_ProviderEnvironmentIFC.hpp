// What a provider can ask of the object manager during a call.

#pragma once

#include "OW_CIMOMHandleIFC.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_IfcsFwd.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_Logger.hpp"
#include "OW_ProviderFwd.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Belongs to the one call that it was given to, initialize() included. After that call only getLogger() and
/// getConfigItem() may be used.
class OW_VISIBILITY_DEFAULT OW_PROVIFC_API ProviderEnvironmentIFC : public IntrusiveCountableBase {
  public:
    ~ProviderEnvironmentIFC() override;
    /// For calls back into the object manager with the rights of the caller. It takes no locks: those of the present
    /// call still hold.
    virtual CIMOMHandleIFCRef getCIMOMHandle() const = 0;
    /// The same, but bypassing all providers: only the manager's own store answers, and no indications are sent.
    virtual CIMOMHandleIFCRef getRepositoryCIMOMHandle() const = 0;
    /// May be null.
    virtual RepositoryIFCRef getRepository() const = 0;
    /// The log under the component of the object manager. Name a component of your own instead.
    virtual LoggerRef getLogger() const OW_DEPRECATED = 0;
    /// The log under the given component; never null.
    virtual LoggerRef getLogger(const String& componentName) const = 0;
    /// A value from the manager's configuration; defRetVal if it is not set.
    virtual String getConfigItem(const String& name, const String& defRetVal = "") const = 0;
    /// Name of the authenticated user; empty without authentication.
    virtual String getUserName() const = 0;
    /// Data that goes along with the client's operation.
    virtual OperationContext& getOperationContext() = 0;
};

} // namespace OpenWBEM
