// One 16-bit code unit, the value of CIM's char16.

#pragma once

#include "OW_ArrayFwd.hpp"
#include "OW_Bool.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_SafeBool.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <iosfwd>

namespace OpenWBEM {

/// Converts to UInt16, and is true in a condition unless it is 0. Wider numbers lose their upper bits.
class OW_COMMON_API Char16 {
    typedef SafeBool<Char16>::type safe_bool;

  public:
    Char16() : value_(0) {}
    Char16(UInt16 x) : value_(x) {}
    /// A byte from 0x80 on is taken as negative: '\xE9' becomes 0xFFE9.
    explicit Char16(char x) : value_(static_cast<UInt16>(static_cast<signed char>(x))) {}
    explicit Char16(UInt8 x) : value_(x) {}
    explicit Char16(Int8 x) : value_(static_cast<UInt16>(x)) {}
    explicit Char16(Int16 x) : value_(static_cast<UInt16>(x)) {}
    explicit Char16(UInt32 x) : value_(static_cast<UInt16>(x)) {}
    explicit Char16(Int32 x) : value_(static_cast<UInt16>(x)) {}
    explicit Char16(UInt64 x) : value_(static_cast<UInt16>(x)) {}
    explicit Char16(Int64 x) : value_(static_cast<UInt16>(x)) {}
    explicit Char16(Real32 x) : value_(fromReal(static_cast<Real64>(x))) {}
    explicit Char16(Real64 x) : value_(fromReal(x)) {}
    explicit Char16(const Bool& x) : value_(x ? 1 : 0) {}
    /// The first code point of UTF-8 text; 0 for empty text, 0xFFFF for one that does not fit or is malformed.
    explicit Char16(const String& x);

    UInt16 getValue() const { return value_; }
    operator UInt16() const { return value_; }
    operator safe_bool() const { return SafeBool<Char16>::of(value_ != 0); }
    bool operator!() const { return value_ == 0; }

    bool operator==(const Char16& x) const { return value_ == x.value_; }
    bool operator!=(const Char16& x) const { return value_ != x.value_; }
    bool operator<(const Char16& x) const { return value_ < x.value_; }
    bool operator<=(const Char16& x) const { return value_ <= x.value_; }
    bool operator>(const Char16& x) const { return value_ > x.value_; }
    bool operator>=(const Char16& x) const { return value_ >= x.value_; }

    Char16& operator+=(const Char16& x) { return *this = static_cast<UInt16>(value_ + x.value_); }
    Char16& operator-=(const Char16& x) { return *this = static_cast<UInt16>(value_ - x.value_); }
    Char16& operator*=(const Char16& x) {
        return *this = static_cast<UInt16>(static_cast<UInt32>(value_) * static_cast<UInt32>(x.value_));
    }
    /// x is not 0.
    Char16& operator/=(const Char16& x) { return *this = static_cast<UInt16>(value_ / x.value_); }

    /// The code unit in UTF-8.
    String toString() const;
    String toUTF8() const OW_DEPRECATED;

    /// Two bytes, the upper one first. readObject() throws an Exception at the end of the stream.
    void writeObject(std::ostream& ostrm) const;
    void readObject(std::istream& istrm);
    friend Char16 operator+(const Char16& x, const Char16& y) { return Char16(x) += y; }
    friend Char16 operator-(const Char16& x, const Char16& y) { return Char16(x) -= y; }
    friend Char16 operator*(const Char16& x, const Char16& y) { return Char16(x) *= y; }
    /// y is not 0.
    friend Char16 operator/(const Char16& x, const Char16& y) { return Char16(x) /= y; }
    friend bool operator==(const Char16& x, int y) { return x.getValue() == y; }
    friend bool operator!=(const Char16& x, int y) { return x.getValue() != y; }
    friend bool operator==(int x, const Char16& y) { return x == y.getValue(); }
    friend bool operator!=(int x, const Char16& y) { return x != y.getValue(); }
    friend bool operator==(char x, const Char16& y) { return Char16(x) == y; }
    friend bool operator!=(char x, const Char16& y) { return Char16(x) != y; }
    friend bool operator<(char x, const Char16& y) { return Char16(x) < y; }
    friend bool operator<=(char x, const Char16& y) { return Char16(x) <= y; }
    friend bool operator>(char x, const Char16& y) { return Char16(x) > y; }
    friend bool operator>=(char x, const Char16& y) { return Char16(x) >= y; }

  private:
    // Converting a real that does not fit the type is undefined, so it becomes 0.
    static UInt16 fromReal(Real64 x) { return x > -1.0 && x < 65536.0 ? static_cast<UInt16>(x) : UInt16(0); }

    UInt16 value_;
};

/// Prints an ASCII character unchanged, 0 and every other unit in the form \x00E9.
std::ostream& operator<<(std::ostream& ostrm, const Char16& arg);

} // namespace OpenWBEM
