// Text of bytes, UTF-8 by convention.

#pragma once

#include "OW_CIMFwd.hpp"
#include "OW_COWIntrusiveCountableBase.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_Types.hpp"
#include "OW_config.h"
#include <cstddef>
#include <iosfwd>
#include <string>
#include <utility>

namespace OpenWBEM {

/// A text is not a number or boolean of the wanted type.
OW_DECLARE_APIEXCEPTION(StringConversion, OW_COMMON_API)

/// Text that is cheap to copy: copies share their bytes until one of them is changed. Nothing checks the encoding.
/// An empty String made by String(), from a null pointer or by erase() has no buffer; String("") has an empty one. Only
/// the conversions to numbers and operator[] tell them apart: without a buffer they throw.
class OW_COMMON_API String {
  public:
    enum EReturnDelimitersFlag { E_DISCARD_TOKENS, E_RETURN_TOKENS, E_DISCARD_DELIMITERS, E_RETURN_DELIMITERS };
    enum EEmptyTokenReturnFlag { E_SKIP_EMPTY_TOKENS, E_RETURN_EMPTY_TOKENS };
    enum EIgnoreCaseFlag { E_CASE_SENSITIVE, E_CASE_INSENSITIVE };
    enum ETakeOwnershipFlag { E_TAKE_OWNERSHIP };
    /// "Not found", and "up to the end" as a length.
    static const size_t npos = ~static_cast<size_t>(0);

    /// Empty, without a buffer.
    String() = default;
    /// A copy of the NUL-terminated text; a null pointer gives a String without a buffer.
    String(const char* str);
    String(const String& arg) = default;
    String(String&& arg) noexcept = default;
    /// The number in decimal.
    explicit String(Int32 val);
    explicit String(UInt32 val);
    explicit String(Int64 val);
    explicit String(UInt64 val);
#if defined(OW_INT64_IS_LONG_LONG)
    explicit String(long val);
    explicit String(unsigned long val);
#endif
    /// The number with six significant digits.
    explicit String(Real64 val);
    /// One character; '\0' gives a String without a buffer.
    explicit String(char c);
    /// Exactly len bytes of str, which may contain '\0'. A null str gives a String without a buffer.
    explicit String(const char* str, size_t len);
    /// Takes over allocated, made by new char[len + 1] or more.
    explicit String(ETakeOwnershipFlag, char* allocated, size_t len);
    /// The text forms of these types; call their toString() instead.
    explicit String(const Char16Array& ca) OW_DEPRECATED;
    explicit String(Bool val) OW_DEPRECATED;
    explicit String(const Char16& val) OW_DEPRECATED;
    explicit String(const CIMDateTime& val) OW_DEPRECATED;
    explicit String(const CIMObjectPath& val) OW_DEPRECATED;
    ~String() = default;

    String& operator=(const String& arg) = default;
    String& operator=(String&& arg) noexcept = default;
    void swap(String& x) {
        buf_.swap(x.buf_);
    }

    /// Bytes, without the terminator.
    size_t length() const {
        return buf_ ? buf_.getPtr()->text.length() : 0;
    }
    bool empty() const {
        return length() == 0;
    }
    /// Code points of the UTF-8 text.
    size_t UTF8Length() const;
    /// The bytes, always NUL-terminated, never null; valid until this String is changed or destroyed.
    const char* c_str() const {
        return buf_ ? buf_.getPtr()->text.c_str() : "";
    }
    const char* getBytes() const OW_DEPRECATED;
    /// A copy for the caller to free(); null if there is no memory.
    char* allocateCString() const;

    /// Byte at ndx; '\0' from the end on.
    char charAt(size_t ndx) const;
    /// Byte at ndx; beyond the length a '\0' that is not part of the text. Throws when there is no buffer.
    const char& operator[](size_t ndx) const;
    char& operator[](size_t ndx);

    /// Negative, 0 or positive, like strcmp() on the bytes.
    int compareTo(const String& arg) const;
    int compareTo(const char* arg) const;
    /// Like UTF8Utils::compareToIgnoreCase().
    int compareToIgnoreCase(const String& arg) const;
    int compareToIgnoreCase(const char* arg) const;
    bool equals(const String& arg) const;
    bool equals(const char* arg) const;
    bool equalsIgnoreCase(const String& arg) const;
    bool equalsIgnoreCase(const char* arg) const;
    /// Whether this begins with arg. An empty arg: only if this is empty too. Ignoring case is for ASCII letters.
    bool startsWith(const char* arg, EIgnoreCaseFlag ignoreCase = E_CASE_SENSITIVE) const;
    bool startsWith(const String& arg, EIgnoreCaseFlag ignoreCase = E_CASE_SENSITIVE) const;
    bool startsWith(char arg) const;
    /// Whether this ends with arg. An empty arg: only if this is empty too. Ignoring case is for ASCII letters.
    bool endsWith(const char* arg, EIgnoreCaseFlag ignoreCase = E_CASE_SENSITIVE) const;
    bool endsWith(const String& arg, EIgnoreCaseFlag ignoreCase = E_CASE_SENSITIVE) const;
    bool endsWith(char arg) const;
    /// Where the argument first begins at fromIndex or later; npos if nowhere or if fromIndex >= length().
    size_t indexOf(char ch, size_t fromIndex = 0) const;
    size_t indexOf(const char* arg, size_t fromIndex = 0) const;
    size_t indexOf(const String& arg, size_t fromIndex = 0) const;
    /// Where the argument last begins at fromIndex or before; npos if nowhere.
    size_t lastIndexOf(char ch, size_t fromIndex = npos) const;
    size_t lastIndexOf(const char* arg, size_t fromIndex = npos) const;
    size_t lastIndexOf(const String& arg, size_t fromIndex = npos) const;
    /// The bytes from beginIndex on, as many as there are up to length.
    String substring(size_t beginIndex, size_t length = npos) const;
    /// True when all characters are blank, also when empty.
    bool isSpaces() const;
    /// The pieces between the characters of delims, on request with the delimiters (E_RETURN_TOKENS or
    /// E_RETURN_DELIMITERS) and with the empty pieces between adjacent delimiters. Null delims: the whole text.
    StringArray tokenize(const char* delims = " \n\r\t\v",
                         EReturnDelimitersFlag returnDelimitersFlag = E_DISCARD_DELIMITERS,
                         EEmptyTokenReturnFlag returnEmptyTokens = E_SKIP_EMPTY_TOKENS) const;
    String toString() const;
    UInt32 hashCode() const;

    /// These change the text in place and return this String. A null pointer adds nothing.
    String& concat(const char* arg);
    String& concat(const String& arg);
    String& concat(char arg);
    String& operator+=(const String& arg) {
        return concat(arg);
    }
    String& operator+=(const char* arg) {
        return concat(arg);
    }
    String& operator+=(char arg) {
        return concat(arg);
    }
    /// ASCII letters only.
    String& toLowerCase();
    String& toUpperCase();
    String& ltrim();
    String& rtrim();
    String& trim();
    /// Empties; the buffer goes too.
    String& erase();
    /// Removes up to len bytes from idx on; nothing if idx lies beyond the end.
    String& erase(size_t idx, size_t len = npos);
    /// Replaces the text with the output of printf() and returns its length; negative, and no change, on failure.
    int format(const char* fmt, ...) __attribute__((format(printf, 2, 3)));

    /// The whole text as a number, leading blanks and sign allowed; 0 for String(""). Throws StringConversionException
    /// when it is not a number or out of the type's range, and when there is no buffer.
    UInt8 toUInt8(int base = 10) const;
    Int8 toInt8(int base = 10) const;
    UInt16 toUInt16(int base = 10) const;
    Int16 toInt16(int base = 10) const;
    UInt32 toUInt32(int base = 10) const;
    Int32 toInt32(int base = 10) const;
    UInt64 toUInt64(int base = 10) const;
    Int64 toInt64(int base = 10) const;
    unsigned int toUnsignedInt(int base = 10) const;
    int toInt(int base = 10) const;
    Real32 toReal32() const;
    Real64 toReal64() const;
    /// "true" or "false" in any case; throws StringConversionException for any other text.
    bool toBool() const;
    Char16 toChar16() const OW_DEPRECATED;
    CIMDateTime toDateTime() const OW_DEPRECATED;

    /// The text in a binary form. readObject() throws StringConversionException on a damaged or shortened stream.
    void readObject(std::istream& istrm);
    void writeObject(std::ostream& ostrm) const;

    /// The functions of the C library under one name on all systems.
    static unsigned long long int strtoull(const char* nptr, char** endptr, int base);
    static long long int strtoll(const char* nptr, char** endptr, int base);
    static const char* strchr(const char* theStr, int c);
    /// The next line without its end ("\n" or "\r\n"); empty at the end of the stream.
    static String getLine(std::istream& istr);

  private:
    struct ByteBuf : public COWIntrusiveCountableBase {
        ByteBuf() = default;
        explicit ByteBuf(std::string t) : text(std::move(t)) {}
        ByteBuf* clone() const { return new ByteBuf(text); }

        std::string text;
    };
    typedef COWIntrusiveReference<ByteBuf> buf_t;

    ByteBuf& writable();

    buf_t buf_; // null: no buffer
};

String operator+(const String& s1, const String& s2);
String operator+(const char* p, const String& s);
String operator+(const String& s, const char* p);
String operator+(char c, const String& s);
String operator+(const String& s, char c);

/// Compare the bytes, like strcmp().
inline bool operator==(const String& s1, const String& s2) {
    return s1.equals(s2);
}
inline bool operator==(const String& s, const char* p) {
    return s.equals(p);
}
inline bool operator==(const char* p, const String& s) {
    return s.equals(p);
}
inline bool operator!=(const String& s1, const String& s2) {
    return !s1.equals(s2);
}
inline bool operator!=(const String& s, const char* p) {
    return !s.equals(p);
}
inline bool operator!=(const char* p, const String& s) {
    return !s.equals(p);
}
inline bool operator<(const String& s1, const String& s2) {
    return s1.compareTo(s2) < 0;
}
inline bool operator<(const String& s, const char* p) {
    return s.compareTo(p) < 0;
}
inline bool operator<(const char* p, const String& s) {
    return s.compareTo(p) > 0;
}
inline bool operator<=(const String& s1, const String& s2) {
    return s1.compareTo(s2) <= 0;
}
inline bool operator<=(const String& s, const char* p) {
    return s.compareTo(p) <= 0;
}
inline bool operator<=(const char* p, const String& s) {
    return s.compareTo(p) >= 0;
}
inline bool operator>(const String& s1, const String& s2) {
    return s1.compareTo(s2) > 0;
}
inline bool operator>(const String& s, const char* p) {
    return s.compareTo(p) > 0;
}
inline bool operator>(const char* p, const String& s) {
    return s.compareTo(p) < 0;
}
inline bool operator>=(const String& s1, const String& s2) {
    return s1.compareTo(s2) >= 0;
}
inline bool operator>=(const String& s, const char* p) {
    return s.compareTo(p) >= 0;
}
inline bool operator>=(const char* p, const String& s) {
    return s.compareTo(p) <= 0;
}

std::ostream& operator<<(std::ostream& ostr, const String& arg);

inline void swap(String& x, String& y) {
    x.swap(y);
}

} // namespace OpenWBEM
