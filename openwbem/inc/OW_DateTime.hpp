// Point in time.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <ctime>
#include <iosfwd>

namespace OpenWBEM {

/// Calendar fields name no point in time that time_t can hold.
OW_DECLARE_APIEXCEPTION(DateTime, OW_COMMON_API)

/// Point in time with microseconds, read and set in local time or UTC. What time_t cannot hold throws
/// DateTimeException.
class OW_COMMON_API DateTime {
  public:
    enum ETimeOffset { E_LOCAL_TIME, E_UTC_TIME };

    /// The start of 1970 in UTC.
    DateTime();
    /// t in seconds since then; microseconds from 0 to 999999.
    explicit DateTime(time_t t, UInt32 microseconds = 0);
    /// The calendar's fields: full year, month and day from 1. Values beyond their range carry over to the next field.
    DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, UInt32 microsecond = 0,
             ETimeOffset timeOffset = E_LOCAL_TIME);

    int getYear(ETimeOffset timeOffset = E_LOCAL_TIME) const;
    /// 1 to 12.
    int getMonth(ETimeOffset timeOffset = E_LOCAL_TIME) const;
    /// 1 to 31.
    int getDay(ETimeOffset timeOffset = E_LOCAL_TIME) const;
    int getHour(ETimeOffset timeOffset = E_LOCAL_TIME) const;
    int getMinute(ETimeOffset timeOffset = E_LOCAL_TIME) const;
    int getSecond(ETimeOffset timeOffset = E_LOCAL_TIME) const;
    UInt32 getMicrosecond() const;
    /// Day of the week, 0 for Sunday.
    int getDow(ETimeOffset timeOffset = E_LOCAL_TIME) const;
    /// Minutes that local time is ahead of UTC at this point in time.
    Int16 getUtcOffsetMinutes() const;

    /// Seconds since the start of 1970 in UTC.
    time_t get() const;
    void set(time_t t, UInt32 microseconds = 0);
    void setToCurrent();
    static DateTime getCurrent();

    /// Move by calendar days, months and years of local time, or by the given number of seconds.
    void addDays(int days);
    void addMonths(int months);
    void addYears(int years);
    DateTime& operator+=(long seconds);
    DateTime& operator-=(long seconds);

    /// "Sat Jan  3 21:04:05 2026" in the given time.
    String toString(ETimeOffset timeOffset = E_LOCAL_TIME) const;

  private:
    ::tm fields(ETimeOffset timeOffset) const;
    void setFields(::tm fields, ETimeOffset timeOffset);

    time_t m_time;
    UInt32 m_microseconds;
};

bool operator==(const DateTime& x, const DateTime& y);
bool operator!=(const DateTime& x, const DateTime& y);
bool operator<(const DateTime& x, const DateTime& y);
bool operator<=(const DateTime& x, const DateTime& y);
bool operator>(const DateTime& x, const DateTime& y);
bool operator>=(const DateTime& x, const DateTime& y);
DateTime operator+(DateTime x, long seconds);
DateTime operator-(DateTime x, long seconds);

} // namespace OpenWBEM
