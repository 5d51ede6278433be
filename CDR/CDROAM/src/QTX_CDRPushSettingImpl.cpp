#include "QTX_CDRPushSettingImpl.hpp"

#include "Qualifiers.hpp"
#include "TimeText.hpp"

using namespace cdroam;

int QTX_CDRPushSettingImpl::setQulifier(QualifierArray& qualifiers) const {
    return appendApplicable(qualifiers, isPushed(transferType_.cached())) ? 1 : 0;
}

int QTX_CDRPushSettingImpl::setTransferType(unsigned char value) {
    transferType_.set(value, LogNotice);
    if (!isPushed(value)) {
        return removePushSchedule();
    }
    refreshScheduleTexts();
    return setPushSchedule();
}

int QTX_CDRPushSettingImpl::setTransferTime(std::string value) {
    if (!isTimeOfDay(value.c_str())) {
        return ValueRefused;
    }
    transferTime_.set(value);
    return setPushSchedule();
}

int QTX_CDRPushSettingImpl::getTransferDayOfMonth(std::string& value, QualifierArray& qualifiers) {
    const bool applies = appendApplicable(qualifiers, transferType_.cached() == Monthly);
    return applies ? transferDayOfMonth_.get(value) : Success;
}

int QTX_CDRPushSettingImpl::setTransferDayOfMonth(std::string value) {
    return setDay(transferDayOfMonth_, value, 1, 31);
}

int QTX_CDRPushSettingImpl::getTransferDayOfWeek(std::string& value, QualifierArray& qualifiers) {
    const bool applies = appendApplicable(qualifiers, transferType_.cached() == Weekly);
    return applies ? transferDayOfWeek_.get(value) : Success;
}

int QTX_CDRPushSettingImpl::setTransferDayOfWeek(std::string value) {
    return setDay(transferDayOfWeek_, value, 0, 6);
}

int QTX_CDRPushSettingImpl::setDay(PushSetting<Latin1Text>& day, const std::string& value, int lowest, int highest) {
    const int number = leadingInteger(value.c_str());
    if (number < lowest || number > highest) {
        return ValueRefused;
    }
    day.set(value);
    return setPushSchedule();
}
