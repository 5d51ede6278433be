#include "cimserver/schema/Values.hpp"

#include "cimserver/schema/Names.hpp"

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <regex>
#include <type_traits>

namespace cimserver::schema {

using namespace OpenWBEM;
using ast::Literal;

namespace {

[[noreturn]] void mismatch(const Literal& literal, const char* wanted) {
    fail(literal.location, std::string("the value is not of type ") + wanted);
}

const Token& scalarOf(const Literal& literal, TokenKind kind, const char* wanted) {
    if (literal.kind != Literal::Kind::Scalar || literal.scalar.kind != kind) {
        mismatch(literal, wanted);
    }
    return literal.scalar;
}

template <class Integer>
Integer integer(const Literal& literal, const char* wanted) {
    const Token& token = scalarOf(literal, TokenKind::Integer, wanted);
    constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<Integer>::max());
    constexpr std::uint64_t kLeast = std::is_signed_v<Integer> ? kMost + 1 : 0;
    if (token.size > (token.negative ? kLeast : kMost)) {
        fail(literal.location, token.text + " is out of the range of " + wanted);
    }
    return static_cast<Integer>(token.negative ? 0 - token.size : token.size);
}

template <class Real>
Real real(const Literal& literal, const char* wanted) {
    const bool whole = literal.kind == Literal::Kind::Scalar && literal.scalar.kind == TokenKind::Integer;
    const Token& token = scalarOf(literal, whole ? TokenKind::Integer : TokenKind::Real, wanted);
    const double magnitude = whole ? static_cast<double>(token.size) : token.real;
    const double number = whole && token.negative ? -magnitude : magnitude;
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<Real>::max())) {
        fail(literal.location, token.text + " is out of the range of " + wanted);
    }
    return static_cast<Real>(number);
}

Bool boolean(const Literal& literal, const char* wanted) {
    if (literal.kind != Literal::Kind::Boolean) {
        mismatch(literal, wanted);
    }
    return Bool(literal.boolean);
}

Char16 character(const Literal& literal, const char* wanted) {
    return Char16(static_cast<UInt16>(scalarOf(literal, TokenKind::Character, wanted).size));
}

/// Short texts come again and again in a schema, such as the entries of value maps: equal ones share their bytes.
String text(const Literal& literal, const char* wanted) {
    constexpr std::size_t kLongest = 40;
    static thread_local std::array<String, 1024> recent;
    const std::string& written = scalarOf(literal, TokenKind::String, wanted).text;
    if (written.size() > kLongest) {
        return String(written.c_str());
    }
    String& known = recent[std::hash<std::string>()(written) % recent.size()];
    if (known != written.c_str()) {
        known = String(written.c_str());
    }
    return known;
}

CIMDateTime dateTime(const Literal& literal, const char* wanted) {
    const std::string& written = scalarOf(literal, TokenKind::String, wanted).text;
    static const std::regex form("[0-9*]{14}\\.[0-9*]{6}[:+-][0-9*]{3}");
    if (written.size() != 25 || !std::regex_match(written, form)) {
        fail(literal.location, "\"" + written + "\" is not a datetime of 25 characters");
    }
    return CIMDateTime(String(written.c_str()));
}

/// Null for a text without a path. The path's namespace is empty when none is written.
CIMObjectPath parsePath(const std::string& written) {
    const std::size_t colon = written.find(':');
    const bool hasNamespace = colon < written.find('=');
    if (hasNamespace && written.compare(colon, 3, "://") == 0) {
        return CIMObjectPath::parse(written.c_str());
    }
    CIMObjectPath path = CIMObjectPath::parse(written.substr(hasNamespace ? colon + 1 : 0).c_str());
    return path ? path.setNameSpace(hasNamespace ? localNamespace(written.substr(0, colon)).c_str() : "") : path;
}

CIMObjectPath reference(const Literal& literal, const char* wanted, const AliasResolver& resolve) {
    if (resolve && literal.kind == Literal::Kind::Scalar && literal.scalar.kind == TokenKind::Alias) {
        return resolve(literal.scalar);
    }
    try {
        if (const CIMObjectPath path = parsePath(text(literal, wanted).c_str())) {
            return path;
        }
    } catch (const CIMException&) { // told below
    }
    fail(literal.location, "\"" + literal.scalar.text + "\" is not an object path");
}

/// Converts one value or, for an array type, each element.
template <class Convert>
CIMValue convertAll(const Literal& literal, const CIMDataType& type, Convert convert) {
    const String name = type.toString();
    if (!type.isArrayType()) {
        return CIMValue(convert(literal, name.c_str()));
    }
    if (literal.kind != Literal::Kind::Array) {
        fail(literal.location, "an array is expected, written in braces");
    }
    Array<decltype(convert(literal, ""))> all;
    all.reserve(literal.elements.size());
    for (const Literal& element : literal.elements) {
        all.push_back(convert(element, name.c_str()));
    }
    return CIMValue(all);
}

} // namespace

CIMDataType dataType(const ast::Type& type) {
    if (type.reference) {
        CIMDataType reference{CIMName(type.name.c_str())};
        if (type.array) {
            reference.setToArrayType(type.arraySize);
        }
        return reference;
    }
    const CIMDataType::Type simple = CIMDataType::strToSimpleType(String(type.name.c_str()));
    if (simple == CIMDataType::INVALID || simple == CIMDataType::REFERENCE) {
        fail(type.location, "\"" + type.name + "\" is not a type (a reference is written \"CLASS REF\")");
    }
    return type.array ? CIMDataType(simple, type.arraySize) : CIMDataType(simple);
}

CIMValue value(const Literal& literal, const CIMDataType& type, const AliasResolver& resolve) {
    if (literal.kind == Literal::Kind::Null) {
        return CIMValue(CIMNULL);
    }
    switch (type.getType()) {
    case CIMDataType::UINT8:
        return convertAll(literal, type, integer<UInt8>);
    case CIMDataType::SINT8:
        return convertAll(literal, type, integer<Int8>);
    case CIMDataType::UINT16:
        return convertAll(literal, type, integer<UInt16>);
    case CIMDataType::SINT16:
        return convertAll(literal, type, integer<Int16>);
    case CIMDataType::UINT32:
        return convertAll(literal, type, integer<UInt32>);
    case CIMDataType::SINT32:
        return convertAll(literal, type, integer<Int32>);
    case CIMDataType::UINT64:
        return convertAll(literal, type, integer<UInt64>);
    case CIMDataType::SINT64:
        return convertAll(literal, type, integer<Int64>);
    case CIMDataType::REAL32:
        return convertAll(literal, type, real<Real32>);
    case CIMDataType::REAL64:
        return convertAll(literal, type, real<Real64>);
    case CIMDataType::BOOLEAN:
        return convertAll(literal, type, boolean);
    case CIMDataType::CHAR16:
        return convertAll(literal, type, character);
    case CIMDataType::DATETIME:
        return convertAll(literal, type, dateTime);
    case CIMDataType::REFERENCE:
        return convertAll(literal, type,
                          [&](const Literal& one, const char* wanted) { return reference(one, wanted, resolve); });
    default:
        return convertAll(literal, type, text);
    }
}

} // namespace cimserver::schema
