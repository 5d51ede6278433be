// The example in the configuration registry.
#pragma once

// [declare-impl]
#include "QTX_Example.hpp"
#include "Registry.hpp"

/// Getters return 0 or 100, the setter 0 or 101; failures are logged.
class QTX_ExampleImpl : public QTX_Example {
  public:
    explicit QTX_ExampleImpl(const std::string& instanceId);

    CDR_OVERRIDES(QTX_EXAMPLE_TABLE)

  private:
    mutable struct { QTX_EXAMPLE_TABLE(CDR_CACHE, CDR_CACHE, CDR_NONE, CDR_NONE) } cache_;
};
// [declare-impl]
