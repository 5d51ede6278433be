#include "cimserver/schema/Associations.hpp"

#include <algorithm>

namespace cimserver::schema {

using namespace OpenWBEM;

namespace {

bool isNamed(const CIMProperty& reference, const String& name) {
    return name.empty() || reference.getName().equalsIgnoreCase(name);
}

bool isWithin(const Repository& repository, const String& ns, const String& name, const String& ancestor) {
    return ancestor.empty() || repository.isA(ns, name, ancestor);
}

void addOnce(std::vector<const CIMClass*>& classes, const CIMClass* one) {
    if (std::find(classes.begin(), classes.end(), one) == classes.end()) {
        classes.push_back(one);
    }
}

/// Calls use(association class, name of the reference) for each reference to the class.
template <class Use>
void forEachEnd(const Repository& repository, const String& ns, const AssociationQuery& query, Use&& use) {
    for (const CIMClass* const candidate : repository.subclasses(ns, "", true)) {
        if (!candidate->isAssociation() || !isWithin(repository, ns, candidate->getName(), query.assocClass)) {
            continue;
        }
        for (const CIMProperty& end : candidate->getAllProperties()) {
            const String target = end.getDataType().getRefClassName();
            if (end.isReference() && isNamed(end, query.role) &&
                (repository.isA(ns, query.className, target) ||
                 (query.subclasses && repository.isA(ns, target, query.className)))) {
                use(*candidate, end.getName());
            }
        }
    }
}

} // namespace

std::vector<const CIMClass*> referencesOf(const Repository& repository, const String& ns,
                                          const AssociationQuery& query) {
    std::vector<const CIMClass*> result;
    forEachEnd(repository, ns, query,
               [&](const CIMClass& association, const String&) { addOnce(result, &association); });
    return result;
}

std::vector<const CIMClass*> associatorsOf(const Repository& repository, const String& ns,
                                           const AssociationQuery& query) {
    std::vector<const CIMClass*> result;
    forEachEnd(repository, ns, query, [&](const CIMClass& association, const String& near) {
        for (const CIMProperty& end : association.getAllProperties()) {
            const String target = end.getDataType().getRefClassName();
            const CIMClass* const other = end.isReference() ? repository.findClass(ns, target) : nullptr;
            if (other != nullptr && !end.getName().equalsIgnoreCase(near) && isNamed(end, query.resultRole) &&
                isWithin(repository, ns, target, query.resultClass)) {
                addOnce(result, other);
            }
        }
    });
    return result;
}

} // namespace cimserver::schema
