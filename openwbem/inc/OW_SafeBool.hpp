#pragma once
#include "OW_config.h"

namespace OpenWBEM {

/// The type that the null tests of the model's classes convert to: true or false in a condition, and nothing else.
/// There is one such type per class T, so that objects of two classes cannot be compared through it.
template <class T>
class SafeBool {
  public:
    typedef void (SafeBool::*type)();

    static type of(bool truth) { return truth ? &SafeBool::nonNull : nullptr; }

  private:
    void nonNull() {}
};

} // namespace OpenWBEM
