// The conversions of String to numbers and to and from the library's own types.

#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_Char16.hpp"
#include "OW_Format.hpp"
#include "OW_String.hpp"
#include "OW_StringBuffer.hpp"
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace OpenWBEM {

namespace {
[[noreturn]] void throwUnconvertible(const String& text, const char* typeName) {
    OW_THROW(StringConversionException, Format("Unable to convert \"%1\" into %2", text, typeName).c_str());
}

// The whole text as a Wide by one of the C library's functions, checked against the range of T.
template <class T, class Wide>
T toInteger(const String& text, int base, const char* typeName, Wide (*parse)(const char*, char**, int)) {
    if (text.empty()) {
        return 0;
    }
    char* end = nullptr;
    errno = 0;
    const Wide value = parse(text.c_str(), &end, base);
    const bool inRange = value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
    if (errno != 0 || end != text.c_str() + text.length() || !inRange) {
        throwUnconvertible(text, typeName);
    }
    return static_cast<T>(value);
}

template <class T>
T toReal(const String& text, const char* typeName, T (*parse)(const char*, char**)) {
    if (text.empty()) {
        return 0;
    }
    char* end = nullptr;
    errno = 0;
    const T value = parse(text.c_str(), &end);
    const bool overflow = errno == ERANGE && std::isinf(value);
    if (overflow || end != text.c_str() + text.length()) {
        throwUnconvertible(text, typeName);
    }
    return value;
}

template <class T>
T toSigned(const String& text, int base, const char* typeName) {
    return toInteger<T>(text, base, typeName, &String::strtoll);
}

template <class T>
T toUnsigned(const String& text, int base, const char* typeName) {
    return toInteger<T>(text, base, typeName, &String::strtoull);
}

const String& requireBuffer(const String& text, bool hasBuffer, const char* typeName) {
    if (!hasBuffer) {
        throwUnconvertible(text, typeName);
    }
    return text;
}
} // namespace

UInt8 String::toUInt8(int base) const {
    return toUnsigned<UInt8>(requireBuffer(*this, !!buf_, "UInt8"), base, "UInt8");
}

Int8 String::toInt8(int base) const {
    return toSigned<Int8>(requireBuffer(*this, !!buf_, "Int8"), base, "Int8");
}

UInt16 String::toUInt16(int base) const {
    return toUnsigned<UInt16>(requireBuffer(*this, !!buf_, "UInt16"), base, "UInt16");
}

Int16 String::toInt16(int base) const {
    return toSigned<Int16>(requireBuffer(*this, !!buf_, "Int16"), base, "Int16");
}

UInt32 String::toUInt32(int base) const {
    return toUnsigned<UInt32>(requireBuffer(*this, !!buf_, "UInt32"), base, "UInt32");
}

Int32 String::toInt32(int base) const {
    return toSigned<Int32>(requireBuffer(*this, !!buf_, "Int32"), base, "Int32");
}

UInt64 String::toUInt64(int base) const {
    return toUnsigned<UInt64>(requireBuffer(*this, !!buf_, "UInt64"), base, "UInt64");
}

Int64 String::toInt64(int base) const {
    return toSigned<Int64>(requireBuffer(*this, !!buf_, "Int64"), base, "Int64");
}

unsigned int String::toUnsignedInt(int base) const {
    return toUnsigned<unsigned int>(requireBuffer(*this, !!buf_, "unsigned int"), base, "unsigned int");
}

int String::toInt(int base) const {
    return toSigned<int>(requireBuffer(*this, !!buf_, "int"), base, "int");
}

Real32 String::toReal32() const {
    return toReal<Real32>(requireBuffer(*this, !!buf_, "Real32"), "Real32", &std::strtof);
}

Real64 String::toReal64() const {
    return toReal<Real64>(requireBuffer(*this, !!buf_, "Real64"), "Real64", &std::strtod);
}

bool String::toBool() const {
    const bool isTrue = equalsIgnoreCase("true");
    if (!isTrue && !equalsIgnoreCase("false")) {
        throwUnconvertible(*this, "bool");
    }
    return isTrue;
}

Char16 String::toChar16() const {
    return Char16(*this);
}

CIMDateTime String::toDateTime() const {
    return CIMDateTime(*this);
}

namespace {
String joined(const Char16Array& units) {
    StringBuffer text;
    for (const Char16& unit : units) {
        text += unit;
    }
    return text.releaseString();
}
} // namespace

String::String(const Char16Array& ca) : String(joined(ca)) {}
String::String(Bool val) : String(val.toString()) {}
String::String(const Char16& val) : String(val.toString()) {}
String::String(const CIMDateTime& val) : String(val.toString()) {}
String::String(const CIMObjectPath& val) : String(val.toString()) {}

} // namespace OpenWBEM
