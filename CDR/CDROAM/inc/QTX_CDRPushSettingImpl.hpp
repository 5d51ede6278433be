// The push settings in the configuration registry, and the scheduled task that follows them.
#pragma once

#include "QTX_CDRPushSetting.hpp"
#include "Registry.hpp"

#pragma GCC visibility push(default)
/// The platform's backup/restore callback: hands the event to the live push setting object, if there is one. Nothing
/// leaves it as an exception: the caller is a thread of the platform.
extern "C" void C_RestoreCallBackHdlr(unsigned long value);
#pragma GCC visibility pop

/// Reads each property from its entry of section "CDRPush" and writes it there. An absent entry is created with its
/// default by the first read. Getters and setters throw CFG_ReadError and CFG_WriteError when the registry or the
/// scheduler fails, which is logged first. Setters return 0, 301 for a refused value, or what re-arming the schedule
/// returned.
///
/// Which properties apply depends on the transfer type last read: a provider reads it first. A getter of a property
/// that does not apply reads nothing and leaves the value alone.
class QTX_CDRPushSettingImpl : public QTX_CDRPushSetting {
  public:
    /// Becomes the object that restore notifications reach, and asks the platform for them.
    explicit QTX_CDRPushSettingImpl(const std::string& instanceId);
    /// From then on no object is reached, whichever it was.
    ~QTX_CDRPushSettingImpl() override;

    CDR_OVERRIDES(QTX_CDRPUSHSETTING_TABLE)

    /// Replaces the scheduled task by one for the cached type, time and day. Returns 0; CFG_WriteError when the task
    /// could not be created (the old one is gone by then) or the old one not be removed.
    virtual int setPushSchedule();
    /// Removes every scheduled task that runs the transfer program. Returns 0; CFG_WriteError when the last removal
    /// failed.
    virtual int removePushSchedule();

    /// Appends the qualifier "Applicable" and returns 1 or 0 for it: whether the cached transfer type is neither 3
    /// nor 4.
    int setQulifier(QualifierArray& qualifiers) const;
    /// Arms or removes the schedule by what the registry now holds. Returns the status of a failed read of the transfer
    /// type, or what the schedule operation returned; throws what that throws. The event is not looked at.
    int RestoreCallBackHdlr(unsigned long event);

  private:
    int setDay(const char* accessor, const char* key, cdroam::Text& cache, const std::string& value, int lowest,
               int highest);
    /// Sets the task's day by the cached type and day; returns how the schedule's log line begins.
    std::string setTaskDay(ZpoScheduledTask& task) const;
    /// Reads the texts that the schedule of the cached transfer type needs.
    void refreshScheduleTexts();

    // What was last read or written.
    mutable struct { QTX_CDRPUSHSETTING_TABLE(CDR_CACHE, CDR_CACHE, CDR_NONE, CDR_NONE) } cache_;
};
