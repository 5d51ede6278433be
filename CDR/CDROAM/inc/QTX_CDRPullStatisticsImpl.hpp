// The pull statistics in the configuration registry.
#pragma once

#include "QTX_CDRPullStatistics.hpp"
#include "Registry.hpp"

/// Reads the statistics of section "CDRPull", which the transfer side writes, and clears them. Getters return 0 or 100,
/// the setter 0 or 101; failures are logged. A getter of statistics that do not apply reads nothing and leaves the
/// value alone.
class QTX_CDRPullStatisticsImpl : public QTX_CDRPullStatistics {
  public:
    explicit QTX_CDRPullStatisticsImpl(const std::string& name);

    CDR_OVERRIDES(QTX_CDRPULLSTATISTICS_TABLE)

    /// Appends the qualifier "Applicable" and returns 1 or 0 for it: not applicable is when the stored transfer type is
    /// known and not 3.
    int setQulifier(QualifierArray& qualifiers) const;

  private:
    mutable struct { QTX_CDRPULLSTATISTICS_TABLE(CDR_CACHE, CDR_CACHE, CDR_NONE, CDR_NONE) } cache_;
};
