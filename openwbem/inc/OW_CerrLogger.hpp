// Logger to standard error.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Logger.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Prints only the messages, one per line; its component is "cerr", its level all.
class OW_VISIBILITY_DEFAULT OW_COMMON_API CerrLogger : public Logger {
  public:
    CerrLogger();
    ~CerrLogger() override;

    void doProcessLogMessage(const LogMessage& message) const override;
    LoggerRef doClone() const override;
};

} // namespace OpenWBEM
