// Interface that takes the results of an operation one by one.

#pragma once

#include "OW_IfcsFwd.hpp"
#include "OW_config.h"

namespace OpenWBEM {

template <typename T>
class OW_VISIBILITY_DEFAULT ResultHandlerIFC {
  public:
    virtual ~ResultHandlerIFC() {}
    /// Takes one result. May throw, for example when the client has gone: a provider lets that pass.
    void handle(const T& t) { doHandle(t); }

  protected:
    virtual void doHandle(const T& t) = 0;
};

} // namespace OpenWBEM
