// Who an operation is done for.

#pragma once

#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_COMMON_API UserInfo {
  public:
    UserInfo(const String& userName) : userName_(userName), internal_(false) {}

    /// Empty for the object manager itself.
    String getUserName() const { return userName_; }
    /// Whether this is the object manager itself, not a user.
    bool getInternal() const { return internal_; }

  private:
    friend class OperationContext;
    UserInfo() : internal_(true) {}

    String userName_;
    bool internal_;
};

} // namespace OpenWBEM
