// Qualifier declarations: those of a MOF text, and the standard ones, which hold where a schema declares none.
#pragma once

#include "cimserver/schema/Ast.hpp"

#include "OW_CIM.hpp"

#include <string_view>
#include <vector>

namespace cimserver::schema {

/// The qualifier type of the declaration. Throws MofError for an unknown type, scope or flavor or an unfit default.
OpenWBEM::CIMQualifierType buildQualifierType(const ast::QualifierDeclaration& declaration);

/// The flavors that the words name. Throws MofError for an unknown one and for two that contradict each other.
std::vector<OpenWBEM::CIMFlavor::Flavor> flavorsOf(const std::vector<Token>& words);

/// The standard declaration of a qualifier, which every schema may use; null when there is none.
const OpenWBEM::CIMQualifierType* standardQualifier(std::string_view name);

} // namespace cimserver::schema
