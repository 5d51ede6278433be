// The push statistics in the configuration registry.
#pragma once

#include "QTX_CDRPushStatistics.hpp"
#include "Registry.hpp"

/// Reads the time of the last transfer, which the transfer program writes. Getters return 0 or 100; failures are
/// logged.
class QTX_CDRPushStatisticsImpl : public QTX_CDRPushStatistics {
  public:
    explicit QTX_CDRPushStatisticsImpl(const std::string& name);

    CDR_OVERRIDES(QTX_CDRPUSHSTATISTICS_TABLE)

    /// Appends the qualifier "Applicable" and returns 1 or 0 for it: not applicable is when the stored transfer type is
    /// known to be 3 or 4.
    int setQulifier(QualifierArray& qualifiers) const;

  private:
    mutable struct { QTX_CDRPUSHSTATISTICS_TABLE(CDR_CACHE, CDR_CACHE, CDR_NONE, CDR_NONE) } cache_;
};
