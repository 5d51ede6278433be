// Turns the constants and types of a MOF text into OpenWBEM's.
#pragma once

#include "cimserver/schema/Ast.hpp"

#include "OW_CIM.hpp"

#include <functional>

namespace cimserver::schema {

/// The data type that `type` names; throws MofError for an unknown one.
OpenWBEM::CIMDataType dataType(const ast::Type& type);

/// The object that an alias stands for; throws MofError when there is none.
using AliasResolver = std::function<OpenWBEM::CIMObjectPath(const Token& alias)>;

/// The constant as a value of the type: integers must fit, strings of a datetime be well formed, an array stand where
/// one is declared and hold no NULL. NULL gives a null value. Without a resolver no alias may
/// stand in it. A reference without a namespace keeps it empty. Throws MofError.
OpenWBEM::CIMValue value(const ast::Literal& literal, const OpenWBEM::CIMDataType& type,
                         const AliasResolver& resolve = nullptr);

} // namespace cimserver::schema
