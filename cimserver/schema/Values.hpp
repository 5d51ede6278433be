// Turns the constants and types of a MOF text into OpenWBEM's.
#pragma once

#include "cimserver/schema/Ast.hpp"

#include "OW_CIM.hpp"

namespace cimserver::schema {

/// The data type that `type` names; throws MofError for an unknown one.
OpenWBEM::CIMDataType dataType(const ast::Type& type);

/// The constant as a value of the type: integers must fit, strings of a datetime be well formed, an array stand where
/// one is declared and hold no NULL. NULL gives a null value. Throws MofError.
OpenWBEM::CIMValue value(const ast::Literal& literal, const OpenWBEM::CIMDataType& type);

} // namespace cimserver::schema
