// The push settings in the configuration registry, and the scheduled task that follows them.
#pragma once

#include "PushSetting.hpp"
#include "QTX_CDRPushSetting.hpp"

#pragma GCC visibility push(default)
/// The platform's backup/restore callback: passes the event to the live push setting object, if there is one. Throws
/// nothing: it runs on a thread of the platform.
extern "C" void C_RestoreCallBackHdlr(unsigned long value);
#pragma GCC visibility pop

/// Reads each property from its entry of section "CDRPush" and writes it there. The first read of a missing entry
/// creates it with its default. Getters and setters throw CFG_ReadError and CFG_WriteError when the registry or the
/// scheduler fails, which is logged first. Setters return 0, 301 for a refused value, or what re-arming the schedule
/// returned.
///
/// Which properties apply depends on the transfer type last read or written: a provider reads it first. A getter of a
/// property that does not apply reads nothing and leaves its value unchanged.
class QTX_CDRPushSettingImpl : public QTX_CDRPushSetting {
  public:
    /// Registers for restore notifications and becomes the object that receives them.
    explicit QTX_CDRPushSettingImpl(const std::string& instanceId);
    /// Afterwards no object receives notifications, even if another one did before.
    ~QTX_CDRPushSettingImpl() override;

    int getTransferType(unsigned char& value, QualifierArray&) override { return transferType_.get(value); }
    int setTransferType(unsigned char value) override;
    int getIPAddress(std::string& value, QualifierArray& q) override { return getIfApplicable(q, ipAddress_, value); }
    int setIPAddress(std::string value) override { return ipAddress_.set(value); }
    int getUserName(std::string& value, QualifierArray& q) override { return getIfApplicable(q, userName_, value); }
    int setUserName(std::string value) override { return userName_.set(value); }
    int getPassword(std::string& value, QualifierArray& q) override { return getIfApplicable(q, password_, value); }
    int setPassword(std::string value) override { return password_.set(value); }
    int getDestFolder(std::string& value, QualifierArray& q) override { return getIfApplicable(q, destFolder_, value); }
    int setDestFolder(std::string value) override { return destFolder_.set(value); }
    int getNumRetry(unsigned int& value, QualifierArray& q) override { return getIfApplicable(q, numRetry_, value); }
    int setNumRetry(unsigned int value) override { return numRetry_.set(value); }
    int getDeleteFlag(bool& value, QualifierArray& q) override { return getIfApplicable(q, deleteFlag_, value); }
    int setDeleteFlag(bool value) override { return deleteFlag_.set(value); }
    int getCompressFlag(bool& value, QualifierArray& q) override { return getIfApplicable(q, compressFlag_, value); }
    int setCompressFlag(bool value) override { return compressFlag_.set(value); }
    int getIncludeMetricsFlag(bool& value, QualifierArray& q) override {
        return getIfApplicable(q, includeMetricsFlag_, value);
    }
    int setIncludeMetricsFlag(bool value) override { return includeMetricsFlag_.set(value); }
    int getTransferTime(std::string& value, QualifierArray& q) override {
        return getIfApplicable(q, transferTime_, value);
    }
    int setTransferTime(std::string value) override;
    int getTransferDayOfMonth(std::string& value, QualifierArray& qualifiers) override;
    int setTransferDayOfMonth(std::string value) override;
    int getTransferDayOfWeek(std::string& value, QualifierArray& qualifiers) override;
    int setTransferDayOfWeek(std::string value) override;
    unsigned int PushFileNow() override;

    /// Replaces the scheduled task with one for the cached type, time and day. Returns 0. Throws CFG_WriteError when
    /// the old task cannot be removed, or the new one cannot be created; the old one is gone by then.
    virtual int setPushSchedule();
    /// Removes every scheduled task that runs the transfer program. Returns 0; throws CFG_WriteError when the last
    /// removal failed.
    virtual int removePushSchedule();

    /// Appends the qualifier "Applicable", true unless the cached transfer type is 3 or 4. Returns its value as 1 or 0.
    /// The spelling of the name is fixed.
    int setQulifier(QualifierArray& qualifiers) const;
    /// Arms or removes the schedule to match the registry. Returns the status of a failed read of the transfer type, or
    /// what the schedule operation returned; throws what that throws. The event is ignored.
    int RestoreCallBackHdlr(unsigned long event);

  private:
    /// Getter of a setting that applies to every type of push.
    template <class Setting, class Value>
    int getIfApplicable(QualifierArray& qualifiers, const Setting& setting, Value& value) {
        return setQulifier(qualifiers) == 0 ? cdroam::Success : setting.get(value);
    }
    int setDay(cdroam::PushSetting<cdroam::Latin1Text>& day, const std::string& value, int lowest, int highest);
    /// Sets the task's day from the cached type and day; returns the beginning of the schedule's log line.
    std::string setTaskDay(ZpoScheduledTask& task) const;
    /// Reads the texts that the schedule of the cached transfer type needs.
    void refreshScheduleTexts();

    cdroam::PushSetting<cdroam::Byte> transferType_{"TransferType", cdroam::kTransferType, cdroam::NoTransfer,
                                                    cdroam::NoTransfer};
    cdroam::PushSetting<cdroam::Latin1Text> ipAddress_{"IPAddress", {cdroam::kPushSection, "IpAddr"}};
    cdroam::PushSetting<cdroam::Latin1Text> userName_{"UserName", {cdroam::kPushSection, "UserName"}};
    cdroam::PushSetting<cdroam::Latin1Text> password_{"Password", {cdroam::kPushSection, "Password"}};
    cdroam::PushSetting<cdroam::Latin1Text> destFolder_{"DestFolder", {cdroam::kPushSection, "DestFolder"}};
    cdroam::PushSetting<cdroam::Byte> numRetry_{"NumRetry", {cdroam::kPushSection, "NumRetry"}, 0, 1};
    cdroam::PushSetting<cdroam::Byte> deleteFlag_{"DeleteFlag", {cdroam::kPushSection, "DeleteFlag"}};
    cdroam::PushSetting<cdroam::Byte> compressFlag_{"CompressFlag", {cdroam::kPushSection, "CompressFlag"}};
    cdroam::PushSetting<cdroam::Byte> includeMetricsFlag_{"IncludeMetricsFlag",
                                                          {cdroam::kPushSection, "IncludeMetricsFlag"}};
    cdroam::PushSetting<cdroam::Latin1Text> transferTime_{"TransferTime", {cdroam::kPushSection, "TranTime"}, "00:00"};
    cdroam::PushSetting<cdroam::Latin1Text> transferDayOfMonth_{"TransferDayOfMonth",
                                                                {cdroam::kPushSection, "TranDateOfMonth"}};
    cdroam::PushSetting<cdroam::Latin1Text> transferDayOfWeek_{"TransferDayOfWeek",
                                                               {cdroam::kPushSection, "TranDateOfWeek"}};
};
