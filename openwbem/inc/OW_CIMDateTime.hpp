#pragma once
#include "OW_config.h"

#include "OW_CIMException.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_SafeBool.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"

#include <iosfwd>

namespace OpenWBEM {

/// Thrown for a text that is not a CIM date-time; code CIMDateTime::E_INVALID_DATE_TIME_FORMAT.
OW_DECLARE_APIEXCEPTION(CIMDateTime, OW_COMMON_API)

/// A CIM date-time: a point in time "yyyymmddhhmmss.mmmmmmsutc" or an interval "ddddddddhhmmss.mmmmmm:000".
///
/// The fields are stored unchecked: a month may be above 12. Fields that fit their columns give a text of exactly 25
/// characters; a value too wide for its column (200 hours) is printed wider.
/// True in a condition if it is not null and any field from year to microseconds is not zero: a zero interval is false.
class OW_COMMON_API CIMDateTime {
    struct Data;
    typedef SafeBool<CIMDateTime>::type safe_bool;

  public:
    enum EErrorCodes { E_INVALID_DATE_TIME_FORMAT };

    /// A zero interval.
    CIMDateTime();
    explicit CIMDateTime(CIMNULL_t);
    /// Reads the text. An empty one is a zero interval.
    /// Otherwise the character at index 21 decides: ':' is an interval, '+' or '-' a point in time, any other throws
    /// CIMDateTimeException. Each field is read up to its first non-digit (so "**" is 0); text after the offset is
    /// ignored.
    explicit CIMDateTime(const String& text);
    /// That point in time, in the local time zone.
    CIMDateTime(const DateTime& dateTime);
    /// An interval, limited to the longest that the text can hold (just under 100000000 days).
    explicit CIMDateTime(UInt64 microSeconds);
    CIMDateTime(const CIMDateTime& other);
    ~CIMDateTime();
    CIMDateTime& operator=(const CIMDateTime& other);

    UInt16 getYear() const;
    UInt8 getMonth() const;
    /// Days of an interval, or day of the month: getDays() and getDay() are the same field.
    UInt32 getDays() const;
    UInt32 getDay() const;
    UInt8 getHours() const;
    UInt8 getMinutes() const;
    UInt8 getSeconds() const;
    UInt32 getMicroSeconds() const;
    /// Minutes east of UTC.
    Int16 getUtc() const;

    CIMDateTime& setYear(UInt16 year);
    CIMDateTime& setMonth(UInt8 month);
    CIMDateTime& setDays(UInt32 days);
    CIMDateTime& setDay(UInt32 day);
    CIMDateTime& setHours(UInt8 hours);
    CIMDateTime& setMinutes(UInt8 minutes);
    CIMDateTime& setSeconds(UInt8 seconds);
    CIMDateTime& setMicroSeconds(UInt32 microSeconds);
    CIMDateTime& setUtc(Int16 minutesEastOfUtc);
    void setInterval(bool interval);

    bool isInterval() const;

    /// Compares field by field: the same instant in two time zones is not equal.
    bool equal(const CIMDateTime& other) const;

    operator safe_bool() const { return SafeBool<CIMDateTime>::of(isSet()); }
    bool operator!() const { return !isSet(); }

    String toString() const;

    /// The instant, offset included; an interval counts from the epoch. DateTimeException if time_t cannot hold it.
    DateTime toDateTime() const;

    /// Binary form. readObject() throws CIMStreamException for malformed bytes.
    void readObject(std::istream& istrm);
    void writeObject(std::ostream& ostrm) const;

    friend OW_COMMON_API bool operator==(const CIMDateTime& x, const CIMDateTime& y);
    friend OW_COMMON_API bool operator<(const CIMDateTime& x, const CIMDateTime& y);
    friend bool operator!=(const CIMDateTime& x, const CIMDateTime& y) { return !(x == y); }
    friend bool operator>(const CIMDateTime& x, const CIMDateTime& y) { return y < x; }
    friend bool operator<=(const CIMDateTime& x, const CIMDateTime& y) { return !(y < x); }
    friend bool operator>=(const CIMDateTime& x, const CIMDateTime& y) { return !(x < y); }

  private:
    bool isSet() const;

    COWIntrusiveReference<Data> data_;
};

/// equal(), except that null equals null and no other.
OW_COMMON_API bool operator==(const CIMDateTime& x, const CIMDateTime& y);
/// By instant, offsets taken into account; null sorts first.
OW_COMMON_API bool operator<(const CIMDateTime& x, const CIMDateTime& y);

/// Prints toString().
OW_COMMON_API std::ostream& operator<<(std::ostream& ostrm, const CIMDateTime& dateTime);

} // namespace OpenWBEM
