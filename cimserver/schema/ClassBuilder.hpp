// Makes complete classes of the declarations of a MOF text, checked against what is declared already.
#pragma once

#include "cimserver/schema/Ast.hpp"
#include "cimserver/schema/Namespace.hpp"

namespace cimserver::schema {

constexpr unsigned kDeepestInheritance = 100;

/// A reference that overrides one to another class: to be a class derived from it, which may be declared later.
struct Narrowing {
    Place place;
    std::string element; ///< CLASS.NAME
    OpenWBEM::String now;
    OpenWBEM::String before;
};

struct BuiltClass {
    OpenWBEM::CIMClass cimClass;
    std::vector<Narrowing> narrowings;
};

/// The class with all that it inherits: its own properties and methods first, then the inherited ones, those marked as
/// propagated, each with the class it originates from. Throws MofError for what the declarations do not allow; the
/// narrowings are left to be checked once all classes are there.
BuiltClass buildClass(const ast::ClassDeclaration& declaration, const Namespace& known);

/// Throws MofError when the reference is not narrowed to a class derived from the one before.
void checkNarrowing(const Narrowing& narrowing, const Namespace& known);

} // namespace cimserver::schema
