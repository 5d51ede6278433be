// Makes complete classes from the declarations of a MOF text, checked against what is declared already.
#pragma once

#include "cimserver/schema/Ast.hpp"
#include "cimserver/schema/Namespace.hpp"

namespace cimserver::schema {

constexpr unsigned kDeepestInheritance = 100;

/// What the subclasses of a class take over from it, marked as propagated. All of them share it.
struct Inheritance {
    OpenWBEM::CIMPropertyArray properties;
    OpenWBEM::CIMMethodArray methods;
};

Inheritance inheritanceFrom(const OpenWBEM::CIMClass& cimClass);

/// The class with everything it inherits: its own properties and methods first, then those of `inheritance`, which is
/// its superclass's, each with its class of origin. Throws MofError when the declaration contradicts the known ones.
OpenWBEM::CIMClass buildClass(const ast::ClassDeclaration& declaration, const Namespace& known,
                              const Inheritance& inheritance);

} // namespace cimserver::schema
