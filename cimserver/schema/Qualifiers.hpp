// Applies qualifiers to the elements of a class.
#pragma once

#include "cimserver/schema/Ast.hpp"
#include "cimserver/schema/Namespace.hpp"

#include <initializer_list>

namespace cimserver::schema {

/// The qualifiers of an element: those written, checked against their declarations (declared, allowed on one of
/// `scopes`, value of the right type, not changed where the inherited one may not be overridden), then those of
/// `inherited` that propagate to subclasses, marked as propagated. Throws MofError.
OpenWBEM::CIMQualifierArray buildQualifiers(const ast::QualifierList& written, const Namespace& known,
                                            std::initializer_list<OpenWBEM::CIMScope::Scope> scopes,
                                            const OpenWBEM::CIMQualifierArray& inherited);

/// Those of `inherited` that propagate to subclasses, marked as propagated.
OpenWBEM::CIMQualifierArray propagatedQualifiers(const OpenWBEM::CIMQualifierArray& inherited);

/// The qualifier of the name, or null.
const OpenWBEM::CIMQualifier* findQualifier(const OpenWBEM::CIMQualifierArray& qualifiers, const char* name);

/// True when the qualifier is there with the value true.
bool isTrue(const OpenWBEM::CIMQualifierArray& qualifiers, const char* name);

} // namespace cimserver::schema
