#include "QTX_CDRPushSettingImpl.hpp"

#include "CFG_Exception.hpp"
#include "DiagnosticLog.hpp"
#include "Qualifiers.hpp"
#include "TimeText.hpp"

using namespace cdroam;

namespace {

constexpr const char* kNoText = "";
constexpr const char* kNoTime = "00:00";

void throwReadError(const char* accessor, std::uint32_t status) {
    (void)writeError(accessor, status);
    throw CFG_ReadError();
}

// A byte. An absent entry is created with the value `absent`; a failure leaves `onFailure` in the caller's value.
template <class Value>
int readPushByte(const char* accessor, const char* key, unsigned char& cache, unsigned char absent, Value onFailure,
                 Value& value) {
    const Entry entry{kPushSection, key};
    const std::uint32_t status = Byte::load(entry, cache);
    if (status == ZPO_REG_ENTRY_NOT_FOUND) {
        cache = absent;
        (void)Byte::store(entry, cache);
    } else if (status != 0) {
        value = onFailure;
        throwReadError(accessor, status);
    }
    Byte::decode(cache, value);
    return Success;
}

void writePushByte(LogLevel level, const char* accessor, const char* key, const unsigned char& cache) {
    const std::uint32_t status = Byte::store({kPushSection, key}, cache);
    if (status != 0) {
        (void)logFailure(level, accessor, status);
        throw CFG_WriteError();
    }
}

// A text. An absent entry is created with the default, and a text with control characters is shown as the default.
int readPushText(const char* accessor, const char* key, const char* label, Text& cache, const char* defaultText,
                 std::string& value) {
    const Entry entry{kPushSection, key};
    const std::uint32_t status = readText(entry, cache);
    if (status == ZPO_REG_ENTRY_NOT_FOUND) {
        cache.assign(defaultText);
        (void)writeText(entry, defaultText);
    } else if (status != 0) {
        value.clear();
        throwReadError(accessor, status);
    } else if (isControlCharacter(cache.data()) != 0) {
        logControlCharacters(label);
        cache.assign(defaultText);
    }
    value = cache.c_str();
    return Success;
}

int writePushText(const char* accessor, const char* key, const std::string& value) {
    const std::uint32_t status = writeText({kPushSection, key}, value.c_str());
    if (status != 0) {
        (void)writeError(accessor, status);
        throw CFG_WriteError();
    }
    return Success;
}

// What a number that could not be read is shown as.
constexpr unsigned int failedValue(unsigned int) {
    return 1;
}
constexpr bool failedValue(bool) {
    return false;
}

} // namespace

int QTX_CDRPushSettingImpl::setQulifier(QualifierArray& qualifiers) const {
    const unsigned char type = cache_.TransferType;
    return appendApplicable(qualifiers, type != Pull && type != NoTransfer) ? 1 : 0;
}

// Rows of the kinds Latin1Text and Byte have their accessors from here; the others, of kinds "Own...", below. A text's
// setter leaves the cache alone.
#define ACCESSORS_Latin1Text(NAME, TYPE, KEY)                                                                          \
    int QTX_CDRPushSettingImpl::get##NAME(std::string& value, QualifierArray& qualifiers) const {                      \
        return setQulifier(qualifiers) == 0                                                                            \
                   ? Success                                                                                           \
                   : readPushText("get" #NAME, KEY, "Push-" KEY, cache_.NAME, kNoText, value);                         \
    }                                                                                                                  \
    int QTX_CDRPushSettingImpl::set##NAME(std::string value) {                                                         \
        return writePushText("set" #NAME, KEY, value);                                                                 \
    }
#define ACCESSORS_Byte(NAME, TYPE, KEY)                                                                                \
    int QTX_CDRPushSettingImpl::get##NAME(cim::TYPE::Value& value, QualifierArray& qualifiers) const {                 \
        return setQulifier(qualifiers) == 0                                                                            \
                   ? Success                                                                                           \
                   : readPushByte("get" #NAME, KEY, cache_.NAME, 0, failedValue(value), value);                        \
    }                                                                                                                  \
    int QTX_CDRPushSettingImpl::set##NAME(cim::TYPE::Value value) {                                                    \
        cache_.NAME = Byte::encode(value);                                                                             \
        writePushByte(LogError, "set" #NAME, KEY, cache_.NAME);                                                        \
        return Success;                                                                                                \
    }
#define ACCESSORS_OwnByte CDR_NONE
#define ACCESSORS_OwnText CDR_NONE
#define ACCESSORS(NAME, TYPE, KIND, KEY, CHECK) ACCESSORS_##KIND(NAME, TYPE, KEY)

QTX_CDRPUSHSETTING_TABLE(ACCESSORS, CDR_NONE, CDR_NONE, CDR_NONE)

int QTX_CDRPushSettingImpl::getTransferType(unsigned char& value, QualifierArray& /*qualifiers*/) const {
    constexpr unsigned char none = NoTransfer;
    return readPushByte("getTransferType", kTransferType.key, cache_.TransferType, none, none, value);
}

int QTX_CDRPushSettingImpl::setTransferType(unsigned char value) {
    cache_.TransferType = value;
    writePushByte(LogNotice, "setTransferType", kTransferType.key, cache_.TransferType);
    if (value == Pull || value == NoTransfer) {
        return removePushSchedule();
    }
    refreshScheduleTexts();
    return setPushSchedule();
}

int QTX_CDRPushSettingImpl::getTransferTime(std::string& value, QualifierArray& qualifiers) const {
    if (setQulifier(qualifiers) == 0) {
        return Success;
    }
    return readPushText("getTransferTime", "TranTime", "Push-TranTime", cache_.TransferTime, kNoTime, value);
}

int QTX_CDRPushSettingImpl::setTransferTime(std::string value) {
    if (!isTimeOfDay(value.c_str())) {
        return ValueRefused;
    }
    (void)writePushText("setTransferTime", "TranTime", value);
    cache_.TransferTime.assign(value.c_str());
    return setPushSchedule();
}

int QTX_CDRPushSettingImpl::getTransferDayOfMonth(std::string& value, QualifierArray& qualifiers) const {
    if (!appendApplicable(qualifiers, cache_.TransferType == Monthly)) {
        return Success;
    }
    return readPushText("getTransferDayOfMonth", "TranDateOfMonth", "Push-TranDateOfMonth", cache_.TransferDayOfMonth,
                        kNoText, value);
}

int QTX_CDRPushSettingImpl::setTransferDayOfMonth(std::string value) {
    return setDay("setTransferDayOfMonth", "TranDateOfMonth", cache_.TransferDayOfMonth, value, 1, 31);
}

int QTX_CDRPushSettingImpl::getTransferDayOfWeek(std::string& value, QualifierArray& qualifiers) const {
    if (!appendApplicable(qualifiers, cache_.TransferType == Weekly)) {
        return Success;
    }
    return readPushText("getTransferDayOfWeek", "TranDateOfWeek", "Push-TranDateOfWeek", cache_.TransferDayOfWeek,
                        kNoText, value);
}

int QTX_CDRPushSettingImpl::setTransferDayOfWeek(std::string value) {
    return setDay("setTransferDayOfWeek", "TranDateOfWeek", cache_.TransferDayOfWeek, value, 0, 6);
}

int QTX_CDRPushSettingImpl::setDay(const char* accessor, const char* key, Text& cache, const std::string& value,
                                   int lowest, int highest) {
    const int day = leadingInteger(value.c_str());
    if (day < lowest || day > highest) {
        return ValueRefused;
    }
    (void)writePushText(accessor, key, value);
    cache.assign(value.c_str());
    return setPushSchedule();
}
