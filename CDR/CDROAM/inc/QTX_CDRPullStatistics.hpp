// The statistics of pulled transfers.
#pragma once

#include "InstanceManager.hpp"
#include "ManagedObject.hpp"

class QTX_CDRPullStatistics;

/// Creates and destroys nothing: the set of objects is fixed.
class QTX_CDRPullStatisticsFactory : public cdroam::InstanceManagerBase {
  public:
    virtual QTX_CDRPullStatistics* createQTX_CDRPullStatistics(const std::string&) {
        throw CFG_InstanceCreationFailed();
    }
    virtual void destroyQTX_CDRPullStatistics(QTX_CDRPullStatistics*) { throw CFG_InstanceDeletionFailed(); }
};

class QTX_CDRPullStatisticsInstanceManager
    : public cdroam::InstanceManager<QTX_CDRPullStatisticsFactory, QTX_CDRPullStatistics, 1> {};

/// The manager that the provider installs.
class QTX_CDRPullStatisticsImplInstanceManager : public QTX_CDRPullStatisticsInstanceManager {
  public:
    QTX_CDRPullStatistics* createQTX_CDRPullStatistics(const std::string& name) override;
    void destroyQTX_CDRPullStatistics(QTX_CDRPullStatistics* object) override;
};

/// Its own getters return 0 and leave the value alone, its own setter 101.
class QTX_CDRPullStatistics : public cdroam::ManagedObject<QTX_CDRPullStatisticsInstanceManager> {
  public:
    explicit QTX_CDRPullStatistics(const std::string& name);
    ~QTX_CDRPullStatistics() override;

    virtual int getName(std::string& value, QualifierArray&) const { return showKey(name_, value); }
    virtual int getMostRecentSuccessfulTransfer(std::string&, QualifierArray&) const { return cdroam::Success; }
    virtual int getIncludeMetricsFlag(bool&, QualifierArray&) const { return cdroam::Success; }
    virtual int setIncludeMetricsFlag(bool) { return cdroam::WriteFailed; }
    virtual int getNumberOfSuccessfulTransfers(unsigned int&, QualifierArray&) const { return cdroam::Success; }
    virtual int getMostRecentFailedTransfer(std::string&, QualifierArray&) const { return cdroam::Success; }
    virtual int getReasonForFailure(std::string&, QualifierArray&) const { return cdroam::Success; }
    virtual int getNumberOfFailedTransfers(unsigned int&, QualifierArray&) const { return cdroam::Success; }
    virtual int getLargestFileTransferred(unsigned int&, QualifierArray&) const { return cdroam::Success; }
    virtual int getSmallestFileTransferred(unsigned int&, QualifierArray&) const { return cdroam::Success; }
    virtual int getTotalNumberOfBytesTransferred(unsigned int&, QualifierArray&) const { return cdroam::Success; }
    virtual int getTotalNumberOfFileTransferred(unsigned int&, QualifierArray&) const { return cdroam::Success; }
    virtual unsigned int Refresh() = 0;

    /// The keys concatenated: what the object is listed under.
    std::string compositeKey() const { return concatenated(*this, &QTX_CDRPullStatistics::getName); }

  private:
    const std::string name_;
};
