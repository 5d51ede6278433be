// Makes complete classes from the declarations of a MOF text, checked against what is declared already.
#pragma once

#include "cimserver/schema/Ast.hpp"
#include "cimserver/schema/Namespace.hpp"

namespace cimserver::schema {

constexpr unsigned kDeepestInheritance = 100;

/// The class with everything it inherits: its own properties and methods first, then the inherited ones, marked as
/// propagated, each with its class of origin. Throws MofError when the declaration contradicts the known ones.
OpenWBEM::CIMClass buildClass(const ast::ClassDeclaration& declaration, const Namespace& known);

} // namespace cimserver::schema
