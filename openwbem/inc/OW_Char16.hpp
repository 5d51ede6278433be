// One 16-bit code unit, the value of CIM's char16.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <iosfwd>

namespace OpenWBEM {

/// Converts to UInt16 and is therefore compared, calculated with and tested like one. Wider numbers lose their upper
/// bits.
class OW_COMMON_API Char16 {
  public:
    Char16() : m_value(0) {}
    Char16(UInt16 x) : m_value(x) {}
    explicit Char16(char x) : m_value(static_cast<unsigned char>(x)) {}
    explicit Char16(UInt8 x) : m_value(x) {}
    explicit Char16(Int8 x) : m_value(static_cast<UInt16>(x)) {}
    explicit Char16(Int16 x) : m_value(static_cast<UInt16>(x)) {}
    explicit Char16(UInt32 x) : m_value(static_cast<UInt16>(x)) {}
    explicit Char16(Int32 x) : m_value(static_cast<UInt16>(x)) {}
    explicit Char16(UInt64 x) : m_value(static_cast<UInt16>(x)) {}
    explicit Char16(Int64 x) : m_value(static_cast<UInt16>(x)) {}
    explicit Char16(Real32 x) : m_value(fromReal(static_cast<Real64>(x))) {}
    explicit Char16(Real64 x) : m_value(fromReal(x)) {}
    explicit Char16(const Bool& x);
    /// The first code point of UTF-8 text; 0 for empty text, 0xFFFF for one that does not fit or is malformed.
    explicit Char16(const String& x);

    UInt16 getValue() const { return m_value; }
    operator UInt16() const { return m_value; }

    Char16& operator+=(UInt16 x) { return *this = static_cast<UInt16>(m_value + x); }
    Char16& operator-=(UInt16 x) { return *this = static_cast<UInt16>(m_value - x); }
    Char16& operator*=(UInt16 x) { return *this = static_cast<UInt16>(static_cast<UInt32>(m_value) * x); }
    /// x is not 0.
    Char16& operator/=(UInt16 x) { return *this = static_cast<UInt16>(m_value / x); }
    Char16& operator%=(UInt16 x) { return *this = static_cast<UInt16>(m_value % x); }
    Char16& operator&=(UInt16 x) { return *this = static_cast<UInt16>(m_value & x); }
    Char16& operator|=(UInt16 x) { return *this = static_cast<UInt16>(m_value | x); }
    Char16& operator^=(UInt16 x) { return *this = static_cast<UInt16>(m_value ^ x); }
    Char16& operator++() { return *this += 1; }
    Char16& operator--() { return *this -= 1; }

    /// The code unit in UTF-8.
    String toString() const;
    String toUTF8() const OW_DEPRECATED;

  private:
    // The conversion of a real that does not fit into the type is undefined, so such a one becomes 0.
    static UInt16 fromReal(Real64 x) { return x > -1.0 && x < 65536.0 ? static_cast<UInt16>(x) : UInt16(0); }

    UInt16 m_value;
};

/// Prints an ASCII character as it is, all else in the form \x00E9.
std::ostream& operator<<(std::ostream& ostrm, const Char16& arg);

} // namespace OpenWBEM
