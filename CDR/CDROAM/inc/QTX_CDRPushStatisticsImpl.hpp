// The push statistics in the configuration registry.
#pragma once

#include "QTX_CDRPushStatistics.hpp"
#include "Statistic.hpp"

/// Reads the time of the last transfer, which the transfer program writes. Getters return 0 or 100; failures are
/// logged.
class QTX_CDRPushStatisticsImpl : public QTX_CDRPushStatistics {
  public:
    explicit QTX_CDRPushStatisticsImpl(const std::string& name) : QTX_CDRPushStatistics(name) {}

    /// A missing entry and a failed read give a single NUL.
    int getLastTransferTime(std::string& value, QualifierArray& qualifiers) const override;
    unsigned int Refresh() override;

    /// Appends the qualifier "Applicable", true unless the stored transfer type is 3 or 4. Returns its value as 1 or 0.
    /// The spelling of the name is fixed.
    int setQulifier(QualifierArray& qualifiers) const;

  private:
    cdroam::Statistic<cdroam::Latin1Text> lastTransferTime_{
        "LastTransferTime", {cdroam::kPushSection, "LastTransferTime"}, "Push-"};
};
