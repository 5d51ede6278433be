// A row of the prefix bins.
#pragma once

#include "InstanceManager.hpp"
#include "ManagedObject.hpp"

class QTX_CDRServicePrefixBin;

/// Creates and destroys nothing: the set of objects is fixed.
class QTX_CDRServicePrefixBinFactory : public cdroam::InstanceManagerBase {
  public:
    virtual QTX_CDRServicePrefixBin* createQTX_CDRServicePrefixBin(const std::string&) {
        throw CFG_InstanceCreationFailed();
    }
    virtual void destroyQTX_CDRServicePrefixBin(QTX_CDRServicePrefixBin*) { throw CFG_InstanceDeletionFailed(); }
};

class QTX_CDRServicePrefixBinInstanceManager
    : public cdroam::InstanceManager<QTX_CDRServicePrefixBinFactory, QTX_CDRServicePrefixBin, 1> {};

/// The manager that the provider installs.
class QTX_CDRServicePrefixBinImplInstanceManager : public QTX_CDRServicePrefixBinInstanceManager {
  public:
    QTX_CDRServicePrefixBin* createQTX_CDRServicePrefixBin(const std::string& instanceId) override;
    void destroyQTX_CDRServicePrefixBin(QTX_CDRServicePrefixBin* object) override;
};

/// Its own getters return 100, its own setters 101.
class QTX_CDRServicePrefixBin : public cdroam::ManagedObject<QTX_CDRServicePrefixBinInstanceManager> {
  public:
    explicit QTX_CDRServicePrefixBin(const std::string& instanceId);
    ~QTX_CDRServicePrefixBin() override;

    virtual int getPrefixBin(std::string&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setPrefixBin(std::string) { return cdroam::WriteFailed; }
    virtual int getInstanceID(std::string& value, QualifierArray&) const { return showKey(instanceId_, value); }

    /// The keys concatenated: what the object is listed under.
    std::string compositeKey() const { return concatenated(*this, &QTX_CDRServicePrefixBin::getInstanceID); }

  private:
    const std::string instanceId_;
};
