#include "cimserver/cimxml/ValueText.hpp"

#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/common/Utf8.hpp"

#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_Char16.hpp"
#include "OW_Exception.hpp"

#include <charconv>
#include <cmath>
#include <type_traits>

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

/// Carries a C++ type as a value.
template <typename T>
struct TypeTag {
    using Type = T;
};

/// Calls `use` with the TypeTag of the C++ type for values of a simple type; with that of String for any other type.
template <typename Use>
auto withType(CIMDataType::Type type, Use&& use) {
    switch (type) {
    case CIMDataType::UINT8:
        return use(TypeTag<UInt8>());
    case CIMDataType::SINT8:
        return use(TypeTag<Int8>());
    case CIMDataType::UINT16:
        return use(TypeTag<UInt16>());
    case CIMDataType::SINT16:
        return use(TypeTag<Int16>());
    case CIMDataType::UINT32:
        return use(TypeTag<UInt32>());
    case CIMDataType::SINT32:
        return use(TypeTag<Int32>());
    case CIMDataType::UINT64:
        return use(TypeTag<UInt64>());
    case CIMDataType::SINT64:
        return use(TypeTag<Int64>());
    case CIMDataType::REAL32:
        return use(TypeTag<Real32>());
    case CIMDataType::REAL64:
        return use(TypeTag<Real64>());
    case CIMDataType::BOOLEAN:
        return use(TypeTag<Bool>());
    case CIMDataType::CHAR16:
        return use(TypeTag<Char16>());
    case CIMDataType::DATETIME:
        return use(TypeTag<CIMDateTime>());
    default:
        return use(TypeTag<String>());
    }
}

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string_view withoutPlus(std::string_view text) {
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return plus ? text.substr(1) : text;
}

// Decimal only: object managers accept neither blanks around a number nor hexadecimal.
template <typename T, std::enable_if_t<std::is_arithmetic_v<T>, int> = 0>
bool parse(std::string_view text, T& value) {
    text = withoutPlus(text);
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    const bool whole = result.ec == std::errc() && result.ptr == end;
    if constexpr (std::is_floating_point_v<T>) {
        return whole && std::isfinite(value);
    }
    return whole;
}

bool parse(std::string_view text, Bool& value) {
    const std::optional<bool> known = parseBoolean(text);
    value = Bool(known.value_or(false));
    return known.has_value();
}

bool parse(std::string_view text, Char16& value) {
    const Character decoded = text.empty() ? Character() : decodeUtf8(text);
    value = Char16(static_cast<UInt16>(decoded.code));
    return decoded.valid && decoded.length == text.size() && decoded.code <= 0xFFFF;
}

bool parse(std::string_view text, CIMDateTime& value) {
    text = withoutBlanks(text);
    if (!isDateTime(text)) {
        return false;
    }
    value = CIMDateTime(toCim(text));
    return true;
}

bool parse(std::string_view text, String& value) {
    value = toCim(text);
    return true;
}

using Text = std::optional<std::string_view>;

template <typename T, std::enable_if_t<std::is_arithmetic_v<T>, int> = 0>
Text format(T value, TextBuffer& buffer) {
    if constexpr (std::is_floating_point_v<T>) {
        if (!std::isfinite(value)) {
            return std::isnan(value) ? "NaN" : value < 0 ? "-INF" : "INF";
        }
    }
    char* const begin = buffer.bytes;
    const auto result = std::to_chars(begin, begin + sizeof buffer.bytes, value);
    return std::string_view(begin, static_cast<std::size_t>(result.ptr - begin));
}

Text format(const Bool& value, TextBuffer& /*buffer*/) {
    return value ? std::string_view("TRUE") : std::string_view("FALSE");
}

/// Half of a surrogate pair becomes bytes that XmlWriter replaces.
Text format(const Char16& value, TextBuffer& buffer) {
    std::string character;
    appendUtf8(character, value.getValue());
    buffer.text = toCim(character);
    return view(buffer.text);
}

Text format(const CIMDateTime& value, TextBuffer& buffer) {
    try {
        buffer.text = value.toString();
        return isDateTime(view(buffer.text)) ? Text(view(buffer.text)) : std::nullopt;
    } catch (const Exception&) {
        return std::nullopt; // a null date-time inside a value
    }
}

Text format(const String& value, TextBuffer& /*buffer*/) {
    return view(value);
}

/// The number in text[begin, begin + length); -1 when a character is not a digit.
int number(std::string_view text, std::size_t begin, std::size_t length) {
    int value = 0;
    const std::string_view digits = text.substr(begin, length);
    return digits.find_first_not_of("0123456789") == std::string_view::npos && parse(digits, value) ? value : -1;
}

bool between(int value, int low, int high) {
    return value >= low && value <= high;
}

int daysIn(int year, int month) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

bool isDate(std::string_view text) {
    const int year = number(text, 0, 4);
    const int month = number(text, 4, 2);
    return year >= 0 && between(month, 1, 12) && between(number(text, 6, 2), 1, daysIn(year, month));
}

} // namespace

std::string_view typeName(CIMDataType::Type type) {
    static constexpr std::string_view kNames[] = {"string", "uint8",    "sint8",  "uint16",   "sint16",  "uint32",
                                                  "sint32", "uint64",   "sint64", "string",   "boolean", "real32",
                                                  "real64", "datetime", "char16", "reference"};
    return static_cast<std::size_t>(type) < std::size(kNames) ? kNames[type] : "string";
}

std::optional<bool> parseBoolean(std::string_view text) {
    text = withoutBlanks(text);
    const bool isTrue = equalsIgnoringCase(text, "true");
    return isTrue || equalsIgnoringCase(text, "false") ? std::optional<bool>(isTrue) : std::nullopt;
}

bool isDateTime(std::string_view text) {
    if (text.size() != 25 || text[14] != '.') {
        return false;
    }
    const bool timeFits = between(number(text, 8, 2), 0, 23) && between(number(text, 10, 2), 0, 59) &&
                          between(number(text, 12, 2), 0, 59) && number(text, 15, 6) >= 0;
    if (text[21] == ':') {
        return timeFits && number(text, 0, 8) >= 0 && text.substr(22) == "000";
    }
    return timeFits && (text[21] == '+' || text[21] == '-') && number(text, 22, 3) >= 0 && isDate(text);
}

std::optional<CIMValue> parseScalar(CIMDataType::Type type, std::string_view text) {
    return withType(type, [&](auto tag) -> std::optional<CIMValue> {
        typename decltype(tag)::Type value{};
        return parse(text, value) ? std::optional<CIMValue>(CIMValue(value)) : std::nullopt;
    });
}

std::optional<CIMValue> parseArray(CIMDataType::Type type, const std::vector<std::string>& texts, std::string& bad) {
    return withType(type, [&](auto tag) -> std::optional<CIMValue> {
        using T = typename decltype(tag)::Type;
        Array<T> values;
        for (const std::string& text : texts) {
            T value{};
            if (!parse(text, value)) {
                bad = text;
                return std::nullopt;
            }
            values.push_back(value);
        }
        return CIMValue(values);
    });
}

Text scalarText(const CIMValue& value, TextBuffer& buffer) {
    return withType(value.getType(), [&](auto tag) {
        typename decltype(tag)::Type one{};
        value.get(one);
        return format(one, buffer);
    });
}

void forEachText(const CIMValue& value, const UseText& use) {
    TextBuffer buffer;
    if (!value.isArray()) {
        use(scalarText(value, buffer));
        return;
    }
    withType(value.getType(), [&](auto tag) {
        using T = typename decltype(tag)::Type;
        Array<T> values;
        value.get(values);
        const Array<T>& all = values; // reading does not copy what the value shares
        for (const T& one : all) {
            use(format(one, buffer));
        }
    });
}

} // namespace cimserver::cimxml
