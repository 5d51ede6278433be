// CIM values as text, by type: what a VALUE or KEYVALUE may hold and how one is written.
#pragma once

#include "OW_Bool.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Char16.hpp"
#include "OW_String.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimserver::cimxml {

/// A type's name as TYPE and PARAMTYPE have it: "uint8", "datetime", "reference"; embedded objects are "string".
std::string_view typeName(OpenWBEM::CIMDataType::Type type);

/// Carries a C++ type as a value.
template <typename T>
struct TypeTag {
    using type = T;
};

/// Calls `use` with the TypeTag of the C++ type that holds values of a simple type; for anything else with that of
/// String.
template <typename Use>
auto withType(OpenWBEM::CIMDataType::Type type, Use&& use) {
    using OpenWBEM::CIMDataType;
    switch (type) {
    case CIMDataType::UINT8:
        return use(TypeTag<OpenWBEM::UInt8>());
    case CIMDataType::SINT8:
        return use(TypeTag<OpenWBEM::Int8>());
    case CIMDataType::UINT16:
        return use(TypeTag<OpenWBEM::UInt16>());
    case CIMDataType::SINT16:
        return use(TypeTag<OpenWBEM::Int16>());
    case CIMDataType::UINT32:
        return use(TypeTag<OpenWBEM::UInt32>());
    case CIMDataType::SINT32:
        return use(TypeTag<OpenWBEM::Int32>());
    case CIMDataType::UINT64:
        return use(TypeTag<OpenWBEM::UInt64>());
    case CIMDataType::SINT64:
        return use(TypeTag<OpenWBEM::Int64>());
    case CIMDataType::REAL32:
        return use(TypeTag<OpenWBEM::Real32>());
    case CIMDataType::REAL64:
        return use(TypeTag<OpenWBEM::Real64>());
    case CIMDataType::BOOLEAN:
        return use(TypeTag<OpenWBEM::Bool>());
    case CIMDataType::CHAR16:
        return use(TypeTag<OpenWBEM::Char16>());
    case CIMDataType::DATETIME:
        return use(TypeTag<OpenWBEM::CIMDateTime>());
    default:
        return use(TypeTag<OpenWBEM::String>());
    }
}

/// A value of a simple type from its text; nothing when the text is no such value or out of the type's range. Blanks
/// around anything but strings and characters are passed over; integers may be decimal or 0x-hexadecimal.
std::optional<OpenWBEM::CIMValue> parseScalar(OpenWBEM::CIMDataType::Type type, std::string_view text);

/// An array of a simple type. Otherwise like parseScalar; `bad` becomes the first text that does not fit.
std::optional<OpenWBEM::CIMValue> parseArray(OpenWBEM::CIMDataType::Type type, const std::vector<std::string>& texts,
                                             std::string& bad);

/// The texts of a value of a simple type, one for a scalar. An element without a text that clients could read (an
/// impossible date) is empty.
std::vector<std::optional<std::string>> formatValue(const OpenWBEM::CIMValue& value);

/// yyyymmddhhmmss.mmmmmmsutc or ddddddddhhmmss.mmmmmm:000 with each field in its range.
bool isDateTime(std::string_view text);

/// "true" and "false" in any case; nothing for another text.
std::optional<bool> parseBoolean(std::string_view text);

} // namespace cimserver::cimxml
