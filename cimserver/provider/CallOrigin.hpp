// For whom providers are called.
#pragma once

#include "OW_CIMOMHandleIFC.hpp"
#include "OW_OperationContext.hpp"
#include "OW_String.hpp"

#include <memory>
#include <string>

namespace cimserver::provider {

/// Makes the handles by which providers call the server.
class HandleSource {
  public:
    virtual ~HandleSource() = default;
    virtual OpenWBEM::CIMOMHandleIFCRef makeHandle() const = 0;
};

/// For whom a call is made; the provider's environment answers from it.
struct CallOrigin {
    std::string user;                                        ///< empty without authentication
    std::string what;                                        ///< the operation's name, as the client sent it
    OpenWBEM::String className{};                            ///< what it is about; empty when `what` says all
    std::shared_ptr<OpenWBEM::OperationContext> operation{}; ///< what providers share within one request
    std::shared_ptr<const HandleSource> handles{};

    /// Operation and class, for the log.
    std::string described() const;
};

} // namespace cimserver::provider
