// When the last push transfer took place.
#pragma once

#include "InstanceManager.hpp"
#include "ManagedObject.hpp"

class QTX_CDRPushStatistics;

/// Creates and destroys nothing: the set of objects is fixed.
class QTX_CDRPushStatisticsFactory : public cdroam::InstanceManagerBase {
  public:
    virtual QTX_CDRPushStatistics* createQTX_CDRPushStatistics(const std::string&) {
        throw CFG_InstanceCreationFailed();
    }
    virtual void destroyQTX_CDRPushStatistics(QTX_CDRPushStatistics*) { throw CFG_InstanceDeletionFailed(); }
};

class QTX_CDRPushStatisticsInstanceManager
    : public cdroam::InstanceManager<QTX_CDRPushStatisticsFactory, QTX_CDRPushStatistics, 1> {};

/// The manager that the provider installs.
class QTX_CDRPushStatisticsImplInstanceManager : public QTX_CDRPushStatisticsInstanceManager {
  public:
    QTX_CDRPushStatistics* createQTX_CDRPushStatistics(const std::string& name) override;
    void destroyQTX_CDRPushStatistics(QTX_CDRPushStatistics* object) override;
};

/// Its own getter returns 100.
class QTX_CDRPushStatistics : public cdroam::ManagedObject<QTX_CDRPushStatisticsInstanceManager> {
  public:
    explicit QTX_CDRPushStatistics(const std::string& name);
    ~QTX_CDRPushStatistics() override;

    virtual int getName(std::string& value, QualifierArray&) const { return showKey(name_, value); }
    virtual int getLastTransferTime(std::string&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual unsigned int Refresh() = 0;

    /// The keys concatenated: what the object is listed under.
    std::string compositeKey() const { return concatenated(*this, &QTX_CDRPushStatistics::getName); }

  private:
    const std::string name_;
};
