// An example of a managed class.
// [declare]
#pragma once

#include "InstanceManager.hpp"
#include "ManagedObject.hpp"

class QTX_Example;

/// Creates and destroys nothing: the set of objects is fixed.
class QTX_ExampleFactory : public cdroam::InstanceManagerBase {
  public:
    virtual QTX_Example* createQTX_Example(const std::string&) { throw CFG_InstanceCreationFailed(); }
    virtual void destroyQTX_Example(QTX_Example*) { throw CFG_InstanceDeletionFailed(); }
};

class QTX_ExampleInstanceManager : public cdroam::InstanceManager<QTX_ExampleFactory, QTX_Example, 1> {};

/// The manager that the provider installs.
class QTX_ExampleImplInstanceManager : public QTX_ExampleInstanceManager {
  public:
    QTX_Example* createQTX_Example(const std::string& instanceId) override;
    void destroyQTX_Example(QTX_Example* object) override;
};

/// Its own getters return 100, its own setters 101.
class QTX_Example : public cdroam::ManagedObject<QTX_ExampleInstanceManager> {
  public:
    explicit QTX_Example(const std::string& instanceId);
    ~QTX_Example() override;

    virtual int getLimit(unsigned short&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setLimit(unsigned short) { return cdroam::WriteFailed; }
    virtual int getOwner(std::string&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setOwner(std::string) { return cdroam::WriteFailed; }
    virtual int getCount(unsigned int&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int getInstanceID(std::string& value, QualifierArray&) const { return showKey(instanceId_, value); }
    virtual unsigned int Reset() = 0;

    /// The keys concatenated: what the object is listed under.
    std::string compositeKey() const { return concatenated(*this, &QTX_Example::getInstanceID); }

  private:
    const std::string instanceId_;
};
// [declare]
