// The pull statistics in the configuration registry.
#pragma once

#include "QTX_CDRPullStatistics.hpp"
#include "Statistic.hpp"

/// Reads the statistics of section "CDRPull", which the transfer side writes, and clears them. Getters return 0 or 100,
/// the setter 0 or 101; failures are logged. While the statistics do not apply, a getter reads nothing and leaves its
/// value unchanged.
class QTX_CDRPullStatisticsImpl : public QTX_CDRPullStatistics {
  public:
    explicit QTX_CDRPullStatisticsImpl(const std::string& name) : QTX_CDRPullStatistics(name) {}

    int getMostRecentSuccessfulTransfer(std::string& value, QualifierArray& q) const override {
        return getIfApplicable(q, mostRecentSuccessfulTransfer_, value);
    }
    int getIncludeMetricsFlag(bool& value, QualifierArray& q) const override {
        return setQulifier(q) == 0 ? cdroam::Success : includeMetricsFlag_.getOrCreate(value);
    }
    int setIncludeMetricsFlag(bool value) override { return includeMetricsFlag_.set(value); }
    int getNumberOfSuccessfulTransfers(unsigned int& value, QualifierArray& q) const override {
        return getIfApplicable(q, numberOfSuccessfulTransfers_, value);
    }
    int getMostRecentFailedTransfer(std::string& value, QualifierArray& q) const override {
        return getIfApplicable(q, mostRecentFailedTransfer_, value);
    }
    int getReasonForFailure(std::string& value, QualifierArray& q) const override {
        return getIfApplicable(q, reasonForFailure_, value);
    }
    int getNumberOfFailedTransfers(unsigned int& value, QualifierArray& q) const override {
        return getIfApplicable(q, numberOfFailedTransfers_, value);
    }
    int getLargestFileTransferred(unsigned int& value, QualifierArray& q) const override {
        return getIfApplicable(q, largestFileTransferred_, value);
    }
    int getSmallestFileTransferred(unsigned int& value, QualifierArray& q) const override {
        return getIfApplicable(q, smallestFileTransferred_, value);
    }
    int getTotalNumberOfBytesTransferred(unsigned int& value, QualifierArray& q) const override {
        return getIfApplicable(q, totalNumberOfBytesTransferred_, value);
    }
    int getTotalNumberOfFileTransferred(unsigned int& value, QualifierArray& q) const override {
        return getIfApplicable(q, totalNumberOfFileTransferred_, value);
    }
    /// Clears all statistics but the flag. Returns the number of calls so far.
    unsigned int Refresh() override;

    /// Appends the qualifier "Applicable", true when the stored transfer type is 3 or cannot be read. Returns its value
    /// as 1 or 0. The spelling of the name is fixed.
    int setQulifier(QualifierArray& qualifiers) const;

  private:
    /// Shows a statistic while the statistics apply.
    template <class Statistic, class Value>
    int getIfApplicable(QualifierArray& qualifiers, const Statistic& statistic, Value& value) const {
        return setQulifier(qualifiers) == 0 ? cdroam::Success : statistic.get(value);
    }

    cdroam::Statistic<cdroam::Latin1Text> mostRecentSuccessfulTransfer_{
        "MostRecentSuccessfulTransfer", {cdroam::kPullSection, "Pull-MostRecentSuccess"}};
    cdroam::Statistic<cdroam::Byte> includeMetricsFlag_{"IncludeMetricsFlag",
                                                        {cdroam::kPullSection, "Pull-IncludeMetricsFlag"}};
    cdroam::Statistic<cdroam::Counter> numberOfSuccessfulTransfers_{"NumberOfSuccessfulTransfers",
                                                                    {cdroam::kPullSection, "Pull-NumSuccesses"}};
    cdroam::Statistic<cdroam::Latin1Text> mostRecentFailedTransfer_{"MostRecentFailedTransfer",
                                                                    {cdroam::kPullSection, "Pull-MostRecentFailure"}};
    cdroam::Statistic<cdroam::Latin1Text> reasonForFailure_{"ReasonForFailure",
                                                            {cdroam::kPullSection, "Pull-MostRecentFailureReason"}};
    cdroam::Statistic<cdroam::Counter> numberOfFailedTransfers_{"NumberOfFailedTransfers",
                                                                {cdroam::kPullSection, "Pull-NumFailures"}};
    cdroam::Statistic<cdroam::Counter> largestFileTransferred_{"LargestFileTransferred",
                                                               {cdroam::kPullSection, "Pull-LargestFile"}};
    cdroam::Statistic<cdroam::Counter> smallestFileTransferred_{"SmallestFileTransferred",
                                                                {cdroam::kPullSection, "Pull-SmallestFile"}};
    cdroam::Statistic<cdroam::Counter> totalNumberOfBytesTransferred_{"TotalNumberOfBytesTransferred",
                                                                      {cdroam::kPullSection, "Pull-NumberOfBytes"}};
    cdroam::Statistic<cdroam::Counter> totalNumberOfFileTransferred_{"TotalNumberOfFileTransferred",
                                                                     {cdroam::kPullSection, "Pull-NumberOfFiles"}};
};
