// Qualifier declarations: those of a MOF text, and those that hold where a schema lacks its own.
#pragma once

#include "cimserver/schema/Ast.hpp"

#include "OW_CIM.hpp"

#include <string_view>
#include <vector>

namespace cimserver::schema {

/// The qualifier type of the declaration. Throws MofError for an unknown type, scope or flavor or an unfit default.
OpenWBEM::CIMQualifierType buildQualifierType(const ast::QualifierDeclaration& declaration);

/// The flavors of the words; of each pair of opposites one only may be written. Throws MofError.
std::vector<OpenWBEM::CIMFlavor::Flavor> flavorsOf(const std::vector<Token>& words);

/// The declaration of a qualifier that every schema may use, null when there is none of the name.
const OpenWBEM::CIMQualifierType* standardQualifier(std::string_view name);

} // namespace cimserver::schema
