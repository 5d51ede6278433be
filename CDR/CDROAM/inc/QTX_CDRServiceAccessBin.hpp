// A row of the access/suppress bins.
#pragma once

#include "InstanceManager.hpp"
#include "ManagedObject.hpp"

class QTX_CDRServiceAccessBin;

/// Creates and destroys nothing: the set of objects is fixed.
class QTX_CDRServiceAccessBinFactory : public cdroam::InstanceManagerBase {
  public:
    virtual QTX_CDRServiceAccessBin* createQTX_CDRServiceAccessBin(const std::string&) {
        throw CFG_InstanceCreationFailed();
    }
    virtual void destroyQTX_CDRServiceAccessBin(QTX_CDRServiceAccessBin*) { throw CFG_InstanceDeletionFailed(); }
};

class QTX_CDRServiceAccessBinInstanceManager
    : public cdroam::InstanceManager<QTX_CDRServiceAccessBinFactory, QTX_CDRServiceAccessBin, 1> {};

/// The manager that the provider installs.
class QTX_CDRServiceAccessBinImplInstanceManager : public QTX_CDRServiceAccessBinInstanceManager {
  public:
    QTX_CDRServiceAccessBin* createQTX_CDRServiceAccessBin(const std::string& instanceId) override;
    void destroyQTX_CDRServiceAccessBin(QTX_CDRServiceAccessBin* object) override;
};

/// Its own getters return 100, its own setters 101.
class QTX_CDRServiceAccessBin : public cdroam::ManagedObject<QTX_CDRServiceAccessBinInstanceManager> {
  public:
    explicit QTX_CDRServiceAccessBin(const std::string& instanceId);
    ~QTX_CDRServiceAccessBin() override;

    virtual int getAccessBin(std::string&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setAccessBin(std::string) { return cdroam::WriteFailed; }
    virtual int getSuppressBin(std::string&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setSuppressBin(std::string) { return cdroam::WriteFailed; }
    virtual int getInstanceID(std::string& value, QualifierArray&) const { return showKey(instanceId_, value); }

    /// The keys concatenated: what the object is listed under.
    std::string compositeKey() const { return concatenated(*this, &QTX_CDRServiceAccessBin::getInstanceID); }

  private:
    const std::string instanceId_;
};
