#pragma once
#include "OW_config.h"

namespace OpenWBEM {

/// What the model's classes convert to in a condition; it converts to nothing but bool. There is one such type per
/// class T, so that objects of two classes cannot be compared through it.
template <class T>
class SafeBool {
  public:
    typedef void (SafeBool::*type)();

    static type of(bool truth) { return truth ? &SafeBool::nonNull : nullptr; }

  private:
    void nonNull() {}
};

} // namespace OpenWBEM
