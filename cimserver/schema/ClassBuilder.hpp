// Makes complete classes of the declarations of a MOF text, checked against what is declared already.
#pragma once

#include "cimserver/schema/Ast.hpp"
#include "cimserver/schema/Namespace.hpp"

namespace cimserver::schema {

constexpr unsigned kDeepestInheritance = 100;

/// The class with all that it inherits: its own properties and methods first, then the inherited ones, those marked as
/// propagated, each with the class it originates from. Throws MofError for what the declarations do not allow.
OpenWBEM::CIMClass buildClass(const ast::ClassDeclaration& declaration, const Namespace& known);

} // namespace cimserver::schema
