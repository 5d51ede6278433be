// The settings of the push transfer.
#pragma once

#include "InstanceManager.hpp"
#include "ManagedObject.hpp"

class QTX_CDRPushSetting;

/// Creates and destroys nothing: the set of objects is fixed.
class QTX_CDRPushSettingFactory : public cdroam::InstanceManagerBase {
  public:
    virtual QTX_CDRPushSetting* createQTX_CDRPushSetting(const std::string&) { throw CFG_InstanceCreationFailed(); }
    virtual void destroyQTX_CDRPushSetting(QTX_CDRPushSetting*) { throw CFG_InstanceDeletionFailed(); }
};

class QTX_CDRPushSettingInstanceManager
    : public cdroam::InstanceManager<QTX_CDRPushSettingFactory, QTX_CDRPushSetting, 1> {};

/// The manager that the provider installs.
class QTX_CDRPushSettingImplInstanceManager : public QTX_CDRPushSettingInstanceManager {
  public:
    QTX_CDRPushSetting* createQTX_CDRPushSetting(const std::string& instanceId) override;
    void destroyQTX_CDRPushSetting(QTX_CDRPushSetting* object) override;
};

/// Its own getters return 100, its own setters 101.
class QTX_CDRPushSetting : public cdroam::ManagedObject<QTX_CDRPushSettingInstanceManager> {
  public:
    explicit QTX_CDRPushSetting(const std::string& instanceId);
    ~QTX_CDRPushSetting() override;

    virtual int getTransferType(unsigned char&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setTransferType(unsigned char) { return cdroam::WriteFailed; }
    virtual int getIPAddress(std::string&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setIPAddress(std::string) { return cdroam::WriteFailed; }
    virtual int getUserName(std::string&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setUserName(std::string) { return cdroam::WriteFailed; }
    virtual int getPassword(std::string&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setPassword(std::string) { return cdroam::WriteFailed; }
    virtual int getDestFolder(std::string&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setDestFolder(std::string) { return cdroam::WriteFailed; }
    virtual int getNumRetry(unsigned int&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setNumRetry(unsigned int) { return cdroam::WriteFailed; }
    virtual int getDeleteFlag(bool&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setDeleteFlag(bool) { return cdroam::WriteFailed; }
    virtual int getCompressFlag(bool&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setCompressFlag(bool) { return cdroam::WriteFailed; }
    virtual int getIncludeMetricsFlag(bool&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setIncludeMetricsFlag(bool) { return cdroam::WriteFailed; }
    virtual int getTransferTime(std::string&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setTransferTime(std::string) { return cdroam::WriteFailed; }
    virtual int getTransferDayOfMonth(std::string&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setTransferDayOfMonth(std::string) { return cdroam::WriteFailed; }
    virtual int getTransferDayOfWeek(std::string&, QualifierArray&) { return cdroam::ReadFailed; }
    virtual int setTransferDayOfWeek(std::string) { return cdroam::WriteFailed; }
    virtual int getInstanceID(std::string& value, QualifierArray&) const { return showKey(instanceId_, value); }
    virtual unsigned int PushFileNow() = 0;

    /// The keys concatenated: what the object is listed under.
    std::string compositeKey() const { return concatenated(*this, &QTX_CDRPushSetting::getInstanceID); }

  private:
    const std::string instanceId_;
};
