// What the schema says about associations between classes: the answers to the association operations on a class path.
#pragma once

#include "cimserver/schema/Repository.hpp"

#include <vector>

namespace cimserver::schema {

/// Which ends of which associations count; an empty name filters nothing.
struct AssociationQuery {
    OpenWBEM::String className;   ///< the class that is asked about
    OpenWBEM::String assocClass;  ///< the association class is this one or derived from it
    OpenWBEM::String resultClass; ///< the class at the other end is this one or derived from it
    OpenWBEM::String role;        ///< the name of the reference to the class asked about
    OpenWBEM::String resultRole;  ///< the name of the reference at the other end
    bool subclasses = false;      ///< also count references to subclasses of the class asked about
};

/// The association classes with a reference to the class or one of its superclasses, in declaration order, each once.
/// `resultClass` and `resultRole` are ignored.
std::vector<const OpenWBEM::CIMClass*> referencesOf(const Repository& repository, const OpenWBEM::String& ns,
                                                    const AssociationQuery& query);

/// The classes that these associations refer to at their other ends, each once; undeclared ones are left out.
std::vector<const OpenWBEM::CIMClass*> associatorsOf(const Repository& repository, const OpenWBEM::String& ns,
                                                     const AssociationQuery& query);

} // namespace cimserver::schema
