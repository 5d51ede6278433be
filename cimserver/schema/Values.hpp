// Converts the constants and types of a MOF text to OpenWBEM's.
#pragma once

#include "cimserver/schema/Ast.hpp"

#include "OW_CIM.hpp"

#include <functional>

namespace cimserver::schema {

/// The data type that `type` names; throws MofError for an unknown one.
OpenWBEM::CIMDataType dataType(const ast::Type& type);

/// The object that an alias stands for; throws MofError when there is none.
using AliasResolver = std::function<OpenWBEM::CIMObjectPath(const Token& alias)>;

/// The constant as a value of the type. Throws MofError for an integer out of range, a malformed datetime, an array
/// where none is declared or the other way round, NULL in an array, and an alias without a resolver. NULL gives a null
/// value. A reference written without a namespace has none.
OpenWBEM::CIMValue value(const ast::Literal& literal, const OpenWBEM::CIMDataType& type,
                         const AliasResolver& resolve = nullptr);

} // namespace cimserver::schema
