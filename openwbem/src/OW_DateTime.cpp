#include "OW_DateTime.hpp"

#include "OW_ExceptionIds.hpp"
#include "OW_Format.hpp"
#include "OW_String.hpp"
#include <chrono>
#include <type_traits>

namespace OpenWBEM {

OW_DEFINE_EXCEPTION_WITH_ID(DateTime)

const char DateTime::DEFAULT_FORMAT[] = "%c";

namespace {
constexpr UInt32 kLastMicrosecond = 999999;

/// a + b; throws on overflow: fields near the limits of int give no representable time anyway.
int added(int a, int b) {
    int sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        OW_THROW(DateTimeException, "A date or time is out of range");
    }
    return sum;
}

/// time + count * secondsEach; unsigned, so that an overflow wraps around.
time_t shifted(time_t time, long count, long secondsEach) {
    typedef std::make_unsigned<time_t>::type Wide;
    return static_cast<time_t>(static_cast<Wide>(time) + static_cast<Wide>(count) * static_cast<Wide>(secondsEach));
}

int yearField(int year) {
    return year < 1900 ? year : year - 1900;
}

String asctimeOf(const struct tm& fields) {
    char text[64] = "";
    return ::asctime_r(&fields, text) ? String(text) : String("");
}
} // namespace

DateTime::DateTime() : time_(0), microseconds_(0) {}

DateTime::DateTime(time_t t, UInt32 microseconds) : time_(t), microseconds_(microseconds) {}

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second, UInt32 microsecond,
                   ETimeOffset timeOffset)
    : time_(0), microseconds_(0) {
    set(year, month, day, hour, minute, second, microsecond, timeOffset);
}

struct tm DateTime::toFields(ETimeOffset timeOffset) const {
    struct tm fields = {};
    const bool done =
        timeOffset == E_LOCAL_TIME ? ::localtime_r(&time_, &fields) != nullptr : ::gmtime_r(&time_, &fields) != nullptr;
    if (!done) {
        OW_THROW(DateTimeException, Format("Invalid time_t: %1", time_).c_str());
    }
    return fields;
}

void DateTime::setFields(struct tm fields, ETimeOffset timeOffset) {
    time_ = timeOffset == E_LOCAL_TIME ? ::mktime(&fields) : ::timegm(&fields);
    if (time_ < 0) {
        OW_THROW(DateTimeException, Format("Unable to represent time \"%1\" as a time_t", asctimeOf(fields)).c_str());
    }
}

void DateTime::setField(int tm::*field, int value, ETimeOffset timeOffset) {
    struct tm fields = toFields(timeOffset);
    fields.*field = value;
    setFields(fields, timeOffset);
}

void DateTime::addToField(int tm::*field, int value) {
    struct tm fields = toFields(E_UTC_TIME);
    fields.*field = added(fields.*field, value);
    setFields(fields, E_UTC_TIME);
}

void DateTime::setYear(int year, ETimeOffset timeOffset) {
    setField(&tm::tm_year, yearField(year), timeOffset);
}

void DateTime::setMonth(int month, ETimeOffset timeOffset) {
    if (month == 0) {
        OW_THROW(DateTimeException, "invalid month: 0");
    }
    setField(&tm::tm_mon, added(month, -1), timeOffset);
}

void DateTime::setTime(int hour, int minute, int second, ETimeOffset timeOffset) {
    struct tm fields = toFields(timeOffset);
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    setFields(fields, timeOffset);
}

void DateTime::setMicrosecond(UInt32 microseconds) {
    if (microseconds > kLastMicrosecond) {
        OW_THROW(DateTimeException, Format("invalid microseconds: %1", microseconds).c_str());
    }
    microseconds_ = microseconds;
}

void DateTime::set(time_t t, UInt32 microseconds) {
    if (t == -1 || microseconds > kLastMicrosecond) {
        OW_THROW(DateTimeException, "Either t == -1 or microseconds > 999999");
    }
    time_ = t;
    microseconds_ = microseconds;
}

void DateTime::set(int year, int month, int day, int hour, int minute, int second, UInt32 microseconds,
                   ETimeOffset timeOffset) {
    struct tm fields = {};
    fields.tm_year = yearField(year);
    fields.tm_mon = added(month, -1);
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = -1;
    microseconds_ = microseconds;
    setFields(fields, timeOffset);
}

void DateTime::setToCurrent() {
    using std::chrono::duration_cast;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto seconds = duration_cast<std::chrono::seconds>(now);
    time_ = static_cast<time_t>(seconds.count());
    microseconds_ = static_cast<UInt32>(duration_cast<std::chrono::microseconds>(now - seconds).count());
}

void DateTime::addWeeks(int weeks) {
    int days = 0;
    if (__builtin_mul_overflow(weeks, 7, &days)) {
        OW_THROW(DateTimeException, "A date or time is out of range");
    }
    addDays(days);
}

void DateTime::addSeconds(long seconds) {
    time_ = shifted(time_, seconds, 1);
}

void DateTime::addMinutes(long minutes) {
    time_ = shifted(time_, minutes, 60);
}

void DateTime::addHours(long hours) {
    time_ = shifted(time_, hours, 3600);
}

DateTime& DateTime::operator+=(long seconds) {
    addSeconds(seconds);
    return *this;
}

DateTime& DateTime::operator-=(long seconds) {
    time_ = shifted(time_, seconds, -1);
    return *this;
}

String DateTime::toString(ETimeOffset timeOffset) const {
    return asctimeOf(toFields(timeOffset));
}

String DateTime::toString(const char* format, ETimeOffset timeOffset) const {
    const struct tm fields = toFields(timeOffset);
    char text[1024];
// The caller supplies the format.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    const size_t length = std::strftime(text, sizeof(text), format, &fields);
#pragma GCC diagnostic pop
    return String(text, length);
}

String DateTime::toStringGMT() const {
    return toString(E_UTC_TIME);
}

Int16 DateTime::toLocal(struct tm& fields) const {
    fields = toFields(E_LOCAL_TIME);
    return static_cast<Int16>(fields.tm_gmtoff / 60);
}

Int16 DateTime::getGMTOffsetMinutesNow() {
    DateTime now;
    now.setToCurrent();
    struct tm fields;
    return now.toLocal(fields);
}

} // namespace OpenWBEM
