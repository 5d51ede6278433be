// The object manager's own store, as far as providers name it.

#pragma once

#include "OW_IfcsFwd.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Opaque to providers: ProviderEnvironmentIFC::getRepository() returns it, possibly null. The store's content is
/// reached through ProviderEnvironmentIFC::getRepositoryCIMOMHandle().
class OW_VISIBILITY_DEFAULT OW_REPOSITORY_API RepositoryIFC : public IntrusiveCountableBase {
  public:
    ~RepositoryIFC() override;
};

} // namespace OpenWBEM
