// Point in time.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <time.h>

namespace OpenWBEM {

/// A text is not a point in time, or fields name one that cannot be represented.
OW_DECLARE_APIEXCEPTION(DateTime, OW_COMMON_API)

/// Point in time with microseconds, read and set in local time or UTC.
///
/// Fields are normalised: month 14 is February of the next year. A year below 1900 counts from 1900. Setting or adding
/// calendar fields throws DateTimeException if the result is before 1970, but keeps that result. Reading fields of a
/// time that the C library cannot convert throws it too.
class OW_COMMON_API DateTime {
  public:
    enum ETimeOffset { E_LOCAL_TIME, E_UTC_TIME };

    /// "%c"
    static const char DEFAULT_FORMAT[];

    /// The start of 1970 in UTC.
    DateTime();
    /// t in seconds since then, which may be negative. Neither is checked.
    explicit DateTime(time_t t, UInt32 microseconds = 0);
    DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, UInt32 microsecond = 0,
             ETimeOffset timeOffset = E_LOCAL_TIME);
    /// Reads "yyyymmddhhmmss.mmmmmmsutc", where '*' counts as 0, or month, day, time (H:M or H:M:S) and year in English
    /// and in any order but day before year, with or without a weekday and a time zone ("Fri Jan 2 13:00 2004 CET").
    /// Throws DateTimeException for anything else and for fields out of range.
    explicit DateTime(const String& str);

    int getYear(ETimeOffset timeOffset = E_LOCAL_TIME) const { return toFields(timeOffset).tm_year + 1900; }
    /// 1 to 12.
    int getMonth(ETimeOffset timeOffset = E_LOCAL_TIME) const { return toFields(timeOffset).tm_mon + 1; }
    /// 1 to 31.
    int getDay(ETimeOffset timeOffset = E_LOCAL_TIME) const { return toFields(timeOffset).tm_mday; }
    int getHour(ETimeOffset timeOffset = E_LOCAL_TIME) const { return toFields(timeOffset).tm_hour; }
    int getMinute(ETimeOffset timeOffset = E_LOCAL_TIME) const { return toFields(timeOffset).tm_min; }
    int getSecond(ETimeOffset timeOffset = E_LOCAL_TIME) const { return toFields(timeOffset).tm_sec; }
    UInt32 getMicrosecond() const { return microseconds_; }
    /// Day of the week, 0 for Sunday.
    int getDow(ETimeOffset timeOffset = E_LOCAL_TIME) const { return toFields(timeOffset).tm_wday; }
    /// Seconds since the start of 1970 in UTC.
    time_t get() const { return time_; }

    /// Each sets one field of the time in its zone. In local time the daylight saving of the former date is kept:
    /// 12:00 in January becomes 13:00 summer time in July.
    void setYear(int year, ETimeOffset timeOffset = E_LOCAL_TIME);
    /// Month 0 throws DateTimeException.
    void setMonth(int month, ETimeOffset timeOffset = E_LOCAL_TIME);
    void setDay(int day, ETimeOffset timeOffset = E_LOCAL_TIME) { setField(&tm::tm_mday, day, timeOffset); }
    void setHour(int hour, ETimeOffset timeOffset = E_LOCAL_TIME) { setField(&tm::tm_hour, hour, timeOffset); }
    void setMinute(int minute, ETimeOffset timeOffset = E_LOCAL_TIME) { setField(&tm::tm_min, minute, timeOffset); }
    void setSecond(int second, ETimeOffset timeOffset = E_LOCAL_TIME) { setField(&tm::tm_sec, second, timeOffset); }
    void setTime(int hour, int minute, int second, ETimeOffset timeOffset = E_LOCAL_TIME);
    /// 0 to 999999; throws DateTimeException beyond.
    void setMicrosecond(UInt32 microseconds);
    /// Throws DateTimeException for t -1 and for microseconds beyond 999999.
    void set(time_t t, UInt32 microseconds = 0);
    void set(int year, int month, int day, int hour, int minute, int second, UInt32 microseconds,
             ETimeOffset timeOffset = E_LOCAL_TIME);
    void setToCurrent();

    /// Move by calendar fields of UTC: 31 January and one month are 2 or 3 March.
    void addDays(int days) { addToField(&tm::tm_mday, days); }
    void addWeeks(int weeks);
    void addMonths(int months) { addToField(&tm::tm_mon, months); }
    void addYears(int years) { addToField(&tm::tm_year, years); }
    /// Move by a length of time, also to before 1970.
    void addSeconds(long seconds);
    void addMinutes(long minutes);
    void addHours(long hours);
    DateTime& operator+=(long seconds);
    DateTime& operator-=(long seconds);

    bool operator<(const DateTime& other) const {
        return time_ != other.time_ ? time_ < other.time_ : microseconds_ < other.microseconds_;
    }
    bool operator>(const DateTime& other) const { return other < *this; }
    bool operator==(const DateTime& other) const {
        return time_ == other.time_ && microseconds_ == other.microseconds_;
    }
    bool operator!=(const DateTime& other) const { return !(*this == other); }
    bool operator<=(const DateTime& other) const { return !(other < *this); }
    bool operator>=(const DateTime& other) const { return !(*this < other); }

    /// "Sat Jan  3 21:04:05 2026" and a newline.
    String toString(ETimeOffset timeOffset = E_LOCAL_TIME) const;
    /// Formatted by strftime(); empty if that takes more than 1023 bytes.
    String toString(const char* format, ETimeOffset timeOffset = E_LOCAL_TIME) const;
    OW_DEPRECATED String toStringGMT() const;

    /// Sets fields to the local time and returns the minutes that it is ahead of UTC at this point in time.
    Int16 toLocal(struct tm& fields) const;
    /// The same for now.
    static Int16 getGMTOffsetMinutesNow();

  private:
    struct tm toFields(ETimeOffset timeOffset) const;
    void setFields(struct tm fields, ETimeOffset timeOffset);
    void setField(int tm::*field, int value, ETimeOffset timeOffset);
    void addToField(int tm::*field, int value);

    time_t time_;
    UInt32 microseconds_;
};

} // namespace OpenWBEM
