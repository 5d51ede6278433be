#include "OW_DateTime.hpp"

#include "OW_Format.hpp"
#include "OW_String.hpp"
#include <chrono>

namespace OpenWBEM {

OW_DEFINE_EXCEPTION(DateTime)

namespace {
constexpr UInt32 MICROSECONDS = 1000000;

// a + b without overflow; calendar fields near the limits of int name no representable time anyway.
int added(int a, int b) {
    int sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        OW_THROW(DateTimeException, "A date or time is out of range");
    }
    return sum;
}
} // namespace

DateTime::DateTime() : m_time(0), m_microseconds(0) {}

DateTime::DateTime(time_t t, UInt32 microseconds) : m_time(0), m_microseconds(0) {
    set(t, microseconds);
}

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second, UInt32 microsecond,
                   ETimeOffset timeOffset)
    : m_time(0), m_microseconds(0) {
    ::tm fields = {};
    fields.tm_year = added(year, -1900);
    fields.tm_mon = added(month, -1);
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    setFields(fields, timeOffset);
    set(m_time, microsecond);
}

::tm DateTime::fields(ETimeOffset timeOffset) const {
    ::tm result = {};
    const bool done = timeOffset == E_LOCAL_TIME ? ::localtime_r(&m_time, &result) != nullptr
                                                 : ::gmtime_r(&m_time, &result) != nullptr;
    if (!done) {
        OW_THROW(DateTimeException, Format("No calendar date for %1 seconds", m_time).c_str());
    }
    return result;
}

void DateTime::setFields(::tm fields, ETimeOffset timeOffset) {
    fields.tm_isdst = -1;
    fields.tm_wday = -1; // stays when the conversion fails, whereas -1 is also a time
    const time_t t = timeOffset == E_LOCAL_TIME ? ::mktime(&fields) : ::timegm(&fields);
    if (fields.tm_wday == -1) {
        OW_THROW(DateTimeException, "A date or time is out of range");
    }
    m_time = t;
}

int DateTime::getYear(ETimeOffset timeOffset) const {
    return fields(timeOffset).tm_year + 1900;
}

int DateTime::getMonth(ETimeOffset timeOffset) const {
    return fields(timeOffset).tm_mon + 1;
}

int DateTime::getDay(ETimeOffset timeOffset) const {
    return fields(timeOffset).tm_mday;
}

int DateTime::getHour(ETimeOffset timeOffset) const {
    return fields(timeOffset).tm_hour;
}

int DateTime::getMinute(ETimeOffset timeOffset) const {
    return fields(timeOffset).tm_min;
}

int DateTime::getSecond(ETimeOffset timeOffset) const {
    return fields(timeOffset).tm_sec;
}

int DateTime::getDow(ETimeOffset timeOffset) const {
    return fields(timeOffset).tm_wday;
}

UInt32 DateTime::getMicrosecond() const {
    return m_microseconds;
}

Int16 DateTime::getUtcOffsetMinutes() const {
    return static_cast<Int16>(fields(E_LOCAL_TIME).tm_gmtoff / 60);
}

time_t DateTime::get() const {
    return m_time;
}

void DateTime::set(time_t t, UInt32 microseconds) {
    m_time = t;
    m_microseconds = microseconds % MICROSECONDS;
    *this += static_cast<long>(microseconds / MICROSECONDS);
}

void DateTime::setToCurrent() {
    using std::chrono::duration_cast;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto seconds = duration_cast<std::chrono::seconds>(now);
    set(seconds.count(), static_cast<UInt32>(duration_cast<std::chrono::microseconds>(now - seconds).count()));
}

DateTime DateTime::getCurrent() {
    DateTime now;
    now.setToCurrent();
    return now;
}

void DateTime::addDays(int days) {
    ::tm f = fields(E_LOCAL_TIME);
    f.tm_mday = added(f.tm_mday, days);
    setFields(f, E_LOCAL_TIME);
}

void DateTime::addMonths(int months) {
    ::tm f = fields(E_LOCAL_TIME);
    f.tm_mon = added(f.tm_mon, months);
    setFields(f, E_LOCAL_TIME);
}

void DateTime::addYears(int years) {
    ::tm f = fields(E_LOCAL_TIME);
    f.tm_year = added(f.tm_year, years);
    setFields(f, E_LOCAL_TIME);
}

DateTime& DateTime::operator+=(long seconds) {
    if (__builtin_add_overflow(m_time, seconds, &m_time)) {
        OW_THROW(DateTimeException, "A date or time is out of range");
    }
    return *this;
}

DateTime& DateTime::operator-=(long seconds) {
    if (__builtin_sub_overflow(m_time, seconds, &m_time)) {
        OW_THROW(DateTimeException, "A date or time is out of range");
    }
    return *this;
}

String DateTime::toString(ETimeOffset timeOffset) const {
    const ::tm f = fields(timeOffset);
    char text[64];
    return String(text, std::strftime(text, sizeof(text), "%a %b %e %H:%M:%S %Y", &f));
}

bool operator==(const DateTime& x, const DateTime& y) {
    return x.get() == y.get() && x.getMicrosecond() == y.getMicrosecond();
}

bool operator!=(const DateTime& x, const DateTime& y) {
    return !(x == y);
}

bool operator<(const DateTime& x, const DateTime& y) {
    return x.get() != y.get() ? x.get() < y.get() : x.getMicrosecond() < y.getMicrosecond();
}

bool operator<=(const DateTime& x, const DateTime& y) {
    return !(y < x);
}

bool operator>(const DateTime& x, const DateTime& y) {
    return y < x;
}

bool operator>=(const DateTime& x, const DateTime& y) {
    return !(x < y);
}

DateTime operator+(DateTime x, long seconds) {
    return x += seconds;
}

DateTime operator-(DateTime x, long seconds) {
    return x -= seconds;
}

} // namespace OpenWBEM
