// The report settings of the CDR service.
#pragma once

#include "InstanceManager.hpp"
#include "ManagedObject.hpp"

class QTX_CDRService;

/// Creates and destroys nothing: the set of objects is fixed.
class QTX_CDRServiceFactory : public cdroam::InstanceManagerBase {
  public:
    virtual QTX_CDRService* createQTX_CDRService(const std::string&, const std::string&, const std::string&,
                                                 const std::string&) {
        throw CFG_InstanceCreationFailed();
    }
    virtual void destroyQTX_CDRService(QTX_CDRService*) { throw CFG_InstanceDeletionFailed(); }
};

class QTX_CDRServiceInstanceManager : public cdroam::InstanceManager<QTX_CDRServiceFactory, QTX_CDRService, 4> {};

/// The manager that the provider installs.
class QTX_CDRServiceImplInstanceManager : public QTX_CDRServiceInstanceManager {
  public:
    QTX_CDRService* createQTX_CDRService(const std::string& systemCreationClassName, const std::string& systemName,
                                         const std::string& creationClassName, const std::string& name) override;
    void destroyQTX_CDRService(QTX_CDRService* object) override;
};

/// Its own getters return 100, its own setters 101.
class QTX_CDRService : public cdroam::ManagedObject<QTX_CDRServiceInstanceManager> {
  public:
    explicit QTX_CDRService(const std::string& systemCreationClassName, const std::string& systemName,
                            const std::string& creationClassName, const std::string& name);
    ~QTX_CDRService() override;

    virtual int getFormat(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setFormat(unsigned char) { return cdroam::WriteFailed; }
    virtual int getReportType(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setReportType(unsigned char) { return cdroam::WriteFailed; }
    virtual int getLanguage(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setLanguage(unsigned char) { return cdroam::WriteFailed; }
    virtual int getReportFilter(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setReportFilter(unsigned char) { return cdroam::WriteFailed; }
    virtual int getFeatureCode(std::string&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setFeatureCode(std::string) { return cdroam::WriteFailed; }
    virtual int getDateFormat(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setDateFormat(unsigned char) { return cdroam::WriteFailed; }
    virtual int getHeaderFormat(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setHeaderFormat(unsigned char) { return cdroam::WriteFailed; }
    virtual int getDNISInfo(bool&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setDNISInfo(bool) { return cdroam::WriteFailed; }
    virtual int getConnectChar(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setConnectChar(unsigned char) { return cdroam::WriteFailed; }
    virtual int getDigitsSuppress(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setDigitsSuppress(unsigned char) { return cdroam::WriteFailed; }
    virtual int getDigitsLimit(unsigned short&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setDigitsLimit(unsigned short) { return cdroam::WriteFailed; }
    virtual int getClipFileSchedule(unsigned char&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setClipFileSchedule(unsigned char) { return cdroam::WriteFailed; }
    virtual int getClipFileSize_100K(unsigned int&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setClipFileSize_100K(unsigned int) { return cdroam::WriteFailed; }
    virtual int getCDRDiskSpaceLimit_MB(unsigned int&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setCDRDiskSpaceLimit_MB(unsigned int) { return cdroam::WriteFailed; }
    virtual int getCLIDWithName(bool&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setCLIDWithName(bool) { return cdroam::WriteFailed; }
    virtual int getLongCLIDSupport(bool&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setLongCLIDSupport(bool) { return cdroam::WriteFailed; }
    virtual int getCLIDWithCallType(bool&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setCLIDWithCallType(bool) { return cdroam::WriteFailed; }
    virtual int getSupportCallCharge(bool&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setSupportCallCharge(bool) { return cdroam::WriteFailed; }
    virtual int getAnswerSupervision(bool&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setAnswerSupervision(bool) { return cdroam::WriteFailed; }
    virtual int getCallFilterDuration(unsigned int&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setCallFilterDuration(unsigned int) { return cdroam::WriteFailed; }
    virtual int getHospitalityRecords(bool&, QualifierArray&) const { return cdroam::ReadFailed; }
    virtual int setHospitalityRecords(bool) { return cdroam::WriteFailed; }
    virtual int getSystemCreationClassName(std::string& value, QualifierArray&) const {
        return showKey(systemCreationClassName_, value);
    }
    virtual int getSystemName(std::string& value, QualifierArray&) const { return showKey(systemName_, value); }
    virtual int getCreationClassName(std::string& value, QualifierArray&) const {
        return showKey(creationClassName_, value);
    }
    virtual int getName(std::string& value, QualifierArray&) const { return showKey(name_, value); }
    virtual unsigned int Refresh() = 0;
    virtual unsigned int ClipFile() = 0;

    /// The keys concatenated: what the object is listed under.
    std::string compositeKey() const {
        return concatenated(*this, &QTX_CDRService::getSystemCreationClassName, &QTX_CDRService::getSystemName,
                            &QTX_CDRService::getCreationClassName, &QTX_CDRService::getName);
    }

  private:
    const std::string systemCreationClassName_;
    const std::string systemName_;
    const std::string creationClassName_;
    const std::string name_;
};
