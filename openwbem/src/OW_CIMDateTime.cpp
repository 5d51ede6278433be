#include "OW_CIMDateTime.hpp"

#include "OW_CIMModel.hpp"
#include "OW_CIMStream.hpp"
#include "OW_DateTime.hpp"
#include "OW_ExceptionIds.hpp"
#include "OW_Format.hpp"

#include <algorithm>
#include <cstdio>

namespace OpenWBEM {

OW_DEFINE_EXCEPTION_WITH_ID(CIMDateTime)

namespace {

// The columns of the text:  ddddddddhhmmss.mmmmmm:000   an interval
//                           yyyymmddhhmmss.mmmmmmsutc   a point in time
constexpr size_t kTimeColumn = 8;
constexpr size_t kMicroSecondsColumn = 15;
constexpr size_t kSignColumn = 21;

constexpr UInt64 kMicroSecondsPerSecond = 1000000;
constexpr UInt64 kSecondsPerDay = 86400;
constexpr UInt64 kLongestInterval = (99999999 + UInt64(1)) * kSecondsPerDay * kMicroSecondsPerSecond - 1;

/// The number in the width columns from column on: leading blanks, then digits up to the first non-digit.
/// At most 8 columns, so that it cannot overflow.
UInt32 readColumns(const String& text, size_t column, size_t width) {
    const size_t end = std::min(column + width, text.length());
    while (column < end && text.charAt(column) == ' ') {
        ++column;
    }
    UInt32 number = 0;
    for (; column < end && text.charAt(column) >= '0' && text.charAt(column) <= '9'; ++column) {
        number = number * 10 + static_cast<UInt32>(text.charAt(column) - '0');
    }
    return number;
}

UInt8 readTwoColumns(const String& text, size_t column) {
    return static_cast<UInt8>(readColumns(text, column, 2));
}

/// Days from 1970-01-01 to the date of the Gregorian calendar; months outside 1 to 12 carry into the years. Years start
/// in March here, so that the leap day is the last one, and are counted in cycles of 400.
Int64 daysSinceEpoch(Int64 year, Int64 month, Int64 day) {
    const Int64 monthsFromMarch = year * 12 + month - 3;
    constexpr Int64 kCycleMonths = 4800;
    const Int64 cycle = (monthsFromMarch + kCycleMonths) / kCycleMonths - 1;
    const Int64 yearInCycle = (monthsFromMarch - cycle * kCycleMonths) / 12;
    const Int64 monthInYear = (monthsFromMarch - cycle * kCycleMonths) % 12;
    const Int64 dayInYear = (153 * monthInYear + 2) / 5 + day - 1;
    const Int64 dayInCycle = yearInCycle * 365 + yearInCycle / 4 - yearInCycle / 100 + dayInYear;
    return cycle * 146097 + dayInCycle - 719468;
}

} // namespace

struct CIMDateTime::Data : public ModelData<CIMDateTime::Data> {
    UInt16 year = 0;
    UInt8 month = 0;
    UInt32 days = 0;
    UInt8 hours = 0;
    UInt8 minutes = 0;
    UInt8 seconds = 0;
    UInt32 microSeconds = 0;
    Int16 utc = 0;
    bool interval = true;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.interval, self.year, self.month, self.days, self.hours, self.minutes, self.seconds,
                        self.microSeconds, self.utc);
    }
    void parse(const String& text);
    void setInstant(const DateTime& dateTime);

    /// Seconds, from the epoch for a point in time. Includes the whole seconds in microSeconds, which can exceed one.
    Int64 inSeconds() const {
        const Int64 day = interval ? Int64(days) : daysSinceEpoch(year, month, days);
        return ((day * 24 + hours) * 60 + minutes - utc) * 60 + seconds + Int64(microSeconds / kMicroSecondsPerSecond);
    }
    UInt32 microSecondsOfSecond() const { return static_cast<UInt32>(microSeconds % kMicroSecondsPerSecond); }
};

void CIMDateTime::Data::parse(const String& text) {
    const char sign = text.length() > kSignColumn ? text.charAt(kSignColumn) : '\0';
    if (sign != ':' && sign != '+' && sign != '-') {
        OW_THROW_ERR(CIMDateTimeException, "Invalid format for date time", E_INVALID_DATE_TIME_FORMAT);
    }
    interval = sign == ':';
    if (interval) {
        days = readColumns(text, 0, 8);
    } else {
        year = static_cast<UInt16>(readColumns(text, 0, 4));
        month = readTwoColumns(text, 4);
        days = readTwoColumns(text, 6);
        const Int32 offset = static_cast<Int32>(readColumns(text, kSignColumn + 1, 3));
        utc = static_cast<Int16>(sign == '-' ? -offset : offset);
    }
    hours = readTwoColumns(text, kTimeColumn);
    minutes = readTwoColumns(text, kTimeColumn + 2);
    seconds = readTwoColumns(text, kTimeColumn + 4);
    microSeconds = readColumns(text, kMicroSecondsColumn, 6);
}

void CIMDateTime::Data::setInstant(const DateTime& dateTime) {
    struct tm local = {};
    utc = dateTime.toLocal(local);
    interval = false;
    year = static_cast<UInt16>(local.tm_year + 1900);
    month = static_cast<UInt8>(local.tm_mon + 1);
    days = static_cast<UInt32>(local.tm_mday);
    hours = static_cast<UInt8>(local.tm_hour);
    minutes = static_cast<UInt8>(local.tm_min);
    seconds = static_cast<UInt8>(local.tm_sec);
    microSeconds = dateTime.getMicrosecond();
}

CIMDateTime::CIMDateTime() : data_(sharedDefault<Data>()) {}
CIMDateTime::CIMDateTime(CIMNULL_t) {}
CIMDateTime::CIMDateTime(const String& text) : CIMDateTime() {
    if (!text.empty()) {
        data_->parse(text);
    }
}
CIMDateTime::CIMDateTime(const DateTime& dateTime) : CIMDateTime() {
    data_->setInstant(dateTime);
}
CIMDateTime::CIMDateTime(UInt64 microSeconds) : CIMDateTime() {
    const UInt64 length = std::min(microSeconds, kLongestInterval);
    const UInt64 wholeSeconds = length / kMicroSecondsPerSecond;
    data_->days = static_cast<UInt32>(wholeSeconds / kSecondsPerDay);
    data_->hours = static_cast<UInt8>(wholeSeconds / 3600 % 24);
    data_->minutes = static_cast<UInt8>(wholeSeconds / 60 % 60);
    data_->seconds = static_cast<UInt8>(wholeSeconds % 60);
    data_->microSeconds = static_cast<UInt32>(length % kMicroSecondsPerSecond);
}
CIMDateTime::CIMDateTime(const CIMDateTime& other) = default;
CIMDateTime::~CIMDateTime() = default;
CIMDateTime& CIMDateTime::operator=(const CIMDateTime& other) = default;

UInt16 CIMDateTime::getYear() const {
    return data_->year;
}

UInt8 CIMDateTime::getMonth() const {
    return data_->month;
}

UInt32 CIMDateTime::getDays() const {
    return data_->days;
}

UInt32 CIMDateTime::getDay() const {
    return data_->days;
}

UInt8 CIMDateTime::getHours() const {
    return data_->hours;
}

UInt8 CIMDateTime::getMinutes() const {
    return data_->minutes;
}

UInt8 CIMDateTime::getSeconds() const {
    return data_->seconds;
}

UInt32 CIMDateTime::getMicroSeconds() const {
    return data_->microSeconds;
}

Int16 CIMDateTime::getUtc() const {
    return data_->utc;
}

CIMDateTime& CIMDateTime::setYear(UInt16 year) {
    data_->year = year;
    return *this;
}

CIMDateTime& CIMDateTime::setMonth(UInt8 month) {
    data_->month = month;
    return *this;
}

CIMDateTime& CIMDateTime::setDays(UInt32 days) {
    data_->days = days;
    return *this;
}

CIMDateTime& CIMDateTime::setDay(UInt32 day) {
    return setDays(day);
}

CIMDateTime& CIMDateTime::setHours(UInt8 hours) {
    data_->hours = hours;
    return *this;
}

CIMDateTime& CIMDateTime::setMinutes(UInt8 minutes) {
    data_->minutes = minutes;
    return *this;
}

CIMDateTime& CIMDateTime::setSeconds(UInt8 seconds) {
    data_->seconds = seconds;
    return *this;
}

CIMDateTime& CIMDateTime::setMicroSeconds(UInt32 microSeconds) {
    data_->microSeconds = microSeconds;
    return *this;
}

CIMDateTime& CIMDateTime::setUtc(Int16 minutesEastOfUtc) {
    data_->utc = minutesEastOfUtc;
    return *this;
}

void CIMDateTime::setInterval(bool interval) {
    data_->interval = interval;
}

bool CIMDateTime::isInterval() const {
    return data_->interval;
}

bool CIMDateTime::equal(const CIMDateTime& other) const {
    return Data::fields(*data_) == Data::fields(*other.data_);
}

bool CIMDateTime::isSet() const {
    const Data* d = data_.getPtr();
    return d && (d->year || d->month || d->days || d->hours || d->minutes || d->seconds || d->microSeconds);
}

String CIMDateTime::toString() const {
    const Data& d = *data_;
    char text[64];
    if (d.interval) {
        std::snprintf(text, sizeof(text), "%08u%02u%02u%02u.%06u:000", d.days, unsigned(d.hours), unsigned(d.minutes),
                      unsigned(d.seconds), d.microSeconds);
    } else {
        std::snprintf(text, sizeof(text), "%04u%02u%02u%02u%02u%02u.%06u%+04d", unsigned(d.year), unsigned(d.month),
                      d.days, unsigned(d.hours), unsigned(d.minutes), unsigned(d.seconds), d.microSeconds, int(d.utc));
    }
    return text;
}

DateTime CIMDateTime::toDateTime() const {
    const auto seconds = static_cast<time_t>(data_->inSeconds());
    if (seconds != data_->inSeconds()) {
        OW_THROW(DateTimeException, Format("Unable to represent time \"%1\" as a time_t", toString()).c_str());
    }
    return DateTime(seconds, data_->microSecondsOfSecond());
}

void CIMDateTime::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "D").release();
}

void CIMDateTime::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "D", *data_);
}

bool operator==(const CIMDateTime& x, const CIMDateTime& y) {
    if (!x.data_ || !y.data_) {
        return !x.data_ && !y.data_;
    }
    return x.equal(y);
}

bool operator<(const CIMDateTime& x, const CIMDateTime& y) {
    if (!x.data_ || !y.data_) {
        return !x.data_ && !!y.data_;
    }
    const Int64 a = x.data_->inSeconds();
    const Int64 b = y.data_->inSeconds();
    return a < b || (a == b && x.data_->microSecondsOfSecond() < y.data_->microSecondsOfSecond());
}

std::ostream& operator<<(std::ostream& ostrm, const CIMDateTime& dateTime) {
    return ostrm << dateTime.toString();
}

} // namespace OpenWBEM
