// The report settings in the configuration registry.
#pragma once

#include "QTX_CDRService.hpp"
#include "Setting.hpp"

/// Reads each property from its entry of section "CDRService" and writes it there. Getters return 0 or 100, setters 0
/// or 101; failures are logged. The CDR service process is told of every successful change through its message queue.
class QTX_CDRServiceImpl : public QTX_CDRService {
  public:
    /// Looks the queue up; a missing queue is not an error.
    QTX_CDRServiceImpl(const std::string& systemCreationClassName, const std::string& systemName,
                       const std::string& creationClassName, const std::string& name);

    int getFormat(unsigned char& value, QualifierArray&) const override { return format_.get(value); }
    int setFormat(unsigned char value) override { return notified(format_.set(value)); }
    int getReportType(unsigned char& value, QualifierArray& qualifiers) const override;
    int setReportType(unsigned char value) override { return notified(reportType_.set(value)); }
    int getLanguage(unsigned char& value, QualifierArray&) const override { return language_.get(value); }
    int setLanguage(unsigned char value) override { return notified(language_.set(value)); }
    int getReportFilter(unsigned char& value, QualifierArray&) const override { return reportFilter_.get(value); }
    int setReportFilter(unsigned char value) override { return notified(reportFilter_.set(value)); }
    int getFeatureCode(std::string& value, QualifierArray&) const override { return featureCode_.get(value); }
    int setFeatureCode(std::string value) override { return notified(featureCode_.set(value)); }
    int getDateFormat(unsigned char& value, QualifierArray&) const override { return dateFormat_.get(value); }
    int setDateFormat(unsigned char value) override { return notified(dateFormat_.set(value)); }
    int getHeaderFormat(unsigned char& value, QualifierArray&) const override { return headerFormat_.get(value); }
    int setHeaderFormat(unsigned char value) override { return notified(headerFormat_.set(value)); }
    int getDNISInfo(bool& value, QualifierArray&) const override { return dnisInfo_.get(value); }
    int setDNISInfo(bool value) override { return notified(dnisInfo_.set(value)); }
    int getConnectChar(unsigned char& value, QualifierArray&) const override { return connectChar_.get(value); }
    int setConnectChar(unsigned char value) override { return notified(connectChar_.set(value)); }
    int getDigitsSuppress(unsigned char& value, QualifierArray&) const override { return digitsSuppress_.get(value); }
    int setDigitsSuppress(unsigned char value) override { return notified(digitsSuppress_.set(value)); }
    int getDigitsLimit(unsigned short& value, QualifierArray&) const override { return digitsLimit_.get(value); }
    int setDigitsLimit(unsigned short value) override { return notified(digitsLimit_.set(value)); }
    int getClipFileSchedule(unsigned char& value, QualifierArray&) const override {
        return clipFileSchedule_.get(value);
    }
    int setClipFileSchedule(unsigned char value) override { return notified(clipFileSchedule_.set(value)); }
    int getClipFileSize_100K(unsigned int& value, QualifierArray&) const override {
        return clipFileSize100K_.get(value);
    }
    int setClipFileSize_100K(unsigned int value) override { return notified(clipFileSize100K_.set(value)); }
    int getCDRDiskSpaceLimit_MB(unsigned int& value, QualifierArray&) const override {
        return cdrDiskSpaceLimitMB_.get(value);
    }
    int setCDRDiskSpaceLimit_MB(unsigned int value) override { return notified(cdrDiskSpaceLimitMB_.set(value)); }
    int getCLIDWithName(bool& value, QualifierArray&) const override { return clidWithName_.get(value); }
    int setCLIDWithName(bool value) override { return notified(clidWithName_.set(value)); }
    int getLongCLIDSupport(bool& value, QualifierArray&) const override { return longCLIDSupport_.get(value); }
    int setLongCLIDSupport(bool value) override { return notified(longCLIDSupport_.set(value)); }
    int getCLIDWithCallType(bool& value, QualifierArray&) const override { return clidWithCallType_.get(value); }
    int setCLIDWithCallType(bool value) override { return notified(clidWithCallType_.set(value)); }
    int getSupportCallCharge(bool& value, QualifierArray&) const override { return supportCallCharge_.get(value); }
    int setSupportCallCharge(bool value) override { return notified(supportCallCharge_.set(value)); }
    int getAnswerSupervision(bool& value, QualifierArray& qualifiers) const override;
    int setAnswerSupervision(bool value) override { return notified(answerSupervision_.set(value)); }
    int getCallFilterDuration(unsigned int& value, QualifierArray&) const override {
        return callFilterDuration_.get(value);
    }
    int setCallFilterDuration(unsigned int value) override { return notified(callFilterDuration_.set(value)); }
    int getHospitalityRecords(bool& value, QualifierArray&) const override { return hospitalityRecords_.get(value); }
    int setHospitalityRecords(bool value) override { return notified(hospitalityRecords_.set(value)); }
    unsigned int Refresh() override;
    unsigned int ClipFile() override;

    /// Sends the message, one character, to the CDR service's queue, which is looked up again first. Returns 0 when it
    /// was sent or there is no queue, -1 when sending failed, which is logged.
    int notifyCDRService(const char* message);

  private:
    /// Notifies the CDR service when the status is success; returns the status.
    int notified(int status);

    cdroam::Setting<cdroam::Byte> format_{"Format", {cdroam::kServiceSection, "FORMAT"}};
    cdroam::Setting<cdroam::Byte> reportType_{"ReportType", {cdroam::kServiceSection, "TYPE"}};
    cdroam::Setting<cdroam::Byte> language_{"Language", {cdroam::kServiceSection, "LANG"}};
    cdroam::Setting<cdroam::Byte> reportFilter_{"ReportFilter", {cdroam::kServiceSection, "FILTER"}};
    cdroam::Setting<cdroam::PackedDigits> featureCode_{"FeatureCode", {cdroam::kServiceSection, "FEATURE CODE"}};
    cdroam::Setting<cdroam::Byte> dateFormat_{"DateFormat", {cdroam::kServiceSection, "DATE"}};
    cdroam::Setting<cdroam::Byte> headerFormat_{"HeaderFormat", {cdroam::kServiceSection, "HEADER"}};
    cdroam::Setting<cdroam::Byte> dnisInfo_{"DNISInfo", {cdroam::kServiceSection, "DNIS"}};
    cdroam::Setting<cdroam::Byte> connectChar_{"ConnectChar", {cdroam::kServiceSection, "CONNECT"}};
    cdroam::Setting<cdroam::Byte> digitsSuppress_{"DigitsSuppress", {cdroam::kServiceSection, "DIGITSSUPP"}};
    cdroam::Setting<cdroam::Word> digitsLimit_{"DigitsLimit", {cdroam::kServiceSection, "DIGITSLIMIT"}};
    cdroam::Setting<cdroam::Byte> clipFileSchedule_{"ClipFileSchedule", {cdroam::kServiceSection, "SCHEDULE"}};
    cdroam::Setting<cdroam::Byte> clipFileSize100K_{"ClipFileSize_100K", {cdroam::kServiceSection, "FILESIZE"}};
    cdroam::Setting<cdroam::Integer> cdrDiskSpaceLimitMB_{"CDRDiskSpaceLimit_MB",
                                                          {cdroam::kServiceSection, "DISKLIMIT"}};
    cdroam::Setting<cdroam::Byte> clidWithName_{"CLIDWithName", {cdroam::kServiceSection, "NAME"}};
    cdroam::Setting<cdroam::Byte> longCLIDSupport_{"LongCLIDSupport", {cdroam::kServiceSection, "LONGID"}};
    cdroam::Setting<cdroam::Byte> clidWithCallType_{"CLIDWithCallType", {cdroam::kServiceSection, "CALLTYPE"}};
    cdroam::Setting<cdroam::Byte> supportCallCharge_{"SupportCallCharge", {cdroam::kServiceSection, "CHARGE"}};
    cdroam::Setting<cdroam::Byte> answerSupervision_{"AnswerSupervision", {cdroam::kServiceSection, "SUPERVISE"}};
    cdroam::Setting<cdroam::Byte> callFilterDuration_{"CallFilterDuration", {cdroam::kServiceSection, "TIME"}};
    cdroam::Setting<cdroam::Byte> hospitalityRecords_{"HospitalityRecords", {cdroam::kServiceSection, "HOSPITAL"}};
    std::uint32_t queueId;
};
