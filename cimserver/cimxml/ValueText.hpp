// CIM values as text, by type: how VALUE and KEYVALUE are read and written.
#pragma once

#include "OW_CIMDataType.hpp"
#include "OW_CIMValue.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimserver::cimxml {

/// A type's name in TYPE and PARAMTYPE: "uint8", "datetime", "reference"; embedded objects are "string".
std::string_view typeName(OpenWBEM::CIMDataType::Type type);

/// A value of a simple type from its text; nothing when the text is not a value of the type or out of its range. Blanks
/// are ignored around booleans and date-times, and refused around numbers; numbers are decimal.
std::optional<OpenWBEM::CIMValue> parseScalar(OpenWBEM::CIMDataType::Type type, std::string_view text);

/// An array of a simple type. Otherwise like parseScalar; `bad` becomes the first text that does not fit.
std::optional<OpenWBEM::CIMValue> parseArray(OpenWBEM::CIMDataType::Type type, const std::vector<std::string>& texts,
                                             std::string& bad);

/// Where the text of a value lies that is not part of the value itself.
struct TextBuffer {
    char bytes[40];
    OpenWBEM::String text;
};

/// The text of a scalar of a simple type; nothing when it has no valid text (an impossible date). Valid as long as the
/// value and the buffer.
std::optional<std::string_view> scalarText(const OpenWBEM::CIMValue& value, TextBuffer& buffer);

/// Takes the text of an element; nothing for an element that has no valid text.
using UseText = std::function<void(std::optional<std::string_view> text)>;

/// Calls `use` with the text of each element of a value of a simple type, of a scalar once.
void forEachText(const OpenWBEM::CIMValue& value, const UseText& use);

/// yyyymmddhhmmss.mmmmmmsutc or ddddddddhhmmss.mmmmmm:000 with each field in its range.
bool isDateTime(std::string_view text);

/// "true" and "false" in any case; nothing for another text.
std::optional<bool> parseBoolean(std::string_view text);

} // namespace cimserver::cimxml
