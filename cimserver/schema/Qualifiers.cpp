#include "cimserver/schema/Qualifiers.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/schema/QualifierTypes.hpp"
#include "cimserver/schema/Values.hpp"

#include <algorithm>

namespace cimserver::schema {

using namespace OpenWBEM;

namespace {

bool hasScope(const CIMQualifierType& type, std::initializer_list<CIMScope::Scope> scopes) {
    return type.hasScope(CIMScope(CIMScope::ANY)) ||
           std::any_of(scopes.begin(), scopes.end(), [&](auto scope) { return type.hasScope(CIMScope(scope)); });
}

/// Old schemas use standard qualifiers, such as MaxLen on a parameter, beyond the scope that they declare.
bool allowedOn(const CIMQualifierType& type, std::initializer_list<CIMScope::Scope> scopes) {
    const CIMQualifierType* const standard = standardQualifier(type.getName().c_str());
    return hasScope(type, scopes) || (standard != nullptr && hasScope(*standard, scopes));
}

CIMQualifier makeQualifier(const ast::QualifierUse& use, const CIMQualifierType& type) {
    CIMQualifier qualifier(type);
    if (use.value) {
        qualifier.setValue(value(*use.value, type.getDataType()));
    } else if (type.getDataType().getType() == CIMDataType::BOOLEAN && !type.getDataType().isArrayType()) {
        qualifier.setValue(CIMValue(true));
    }
    for (const auto flavor : flavorsOf(use.flavors)) {
        qualifier.addFlavor(CIMFlavor(flavor));
    }
    return qualifier;
}

bool reachesSubclasses(const CIMQualifier& qualifier) {
    return !qualifier.hasFlavor(CIMFlavor(CIMFlavor::RESTRICTED));
}

/// These qualifiers name a feature's origin, so they change with the class whatever their flavors.
bool isOriginQualifier(const std::string& name) {
    return equalsIgnoringCase(name, "Override") || equalsIgnoringCase(name, "Propagated") ||
           equalsIgnoringCase(name, "Schema");
}

void checkOverride(const ast::QualifierUse& use, const CIMQualifier& now, const CIMQualifier* before) {
    if (before != nullptr && reachesSubclasses(*before) && before->hasFlavor(CIMFlavor(CIMFlavor::DISABLEOVERRIDE)) &&
        !isOriginQualifier(use.name) && !before->getValue().equal(now.getValue())) {
        fail(use.location, "the qualifier \"" + use.name + "\" may not be overridden");
    }
}

} // namespace

const CIMQualifier* findQualifier(const CIMQualifierArray& qualifiers, const char* name) {
    const CIMName wanted(name);
    const auto found = std::find_if(qualifiers.begin(), qualifiers.end(),
                                    [&](const CIMQualifier& q) { return CIMName(q.getName()) == wanted; });
    return found == qualifiers.end() ? nullptr : &*found;
}

bool isTrue(const CIMQualifierArray& qualifiers, const char* name) {
    const CIMQualifier* const found = findQualifier(qualifiers, name);
    return found != nullptr && found->getValue().equal(CIMValue(true));
}

CIMQualifierArray propagatedQualifiers(const CIMQualifierArray& inherited) {
    CIMQualifierArray result;
    for (CIMQualifier qualifier : inherited) {
        if (!reachesSubclasses(qualifier)) {
            continue;
        }
        if (!qualifier.getPropagated()) { // else it stays shared
            qualifier.setPropagated(true);
        }
        result.push_back(qualifier);
    }
    return result;
}

CIMQualifierArray buildQualifiers(const ast::QualifierList& written, const Namespace& known,
                                  std::initializer_list<CIMScope::Scope> scopes, const CIMQualifierArray& inherited) {
    CIMQualifierArray result;
    for (const ast::QualifierUse& use : written) {
        const CIMQualifierType* const type = known.findQualifier(use.name);
        if (type == nullptr) {
            fail(use.location, "the qualifier \"" + use.name + "\" is not declared");
        }
        if (!allowedOn(*type, scopes)) {
            fail(use.location, "the qualifier \"" + use.name + "\" is not allowed here by its scope");
        }
        if (findQualifier(result, use.name.c_str()) != nullptr) {
            fail(use.location, "the qualifier \"" + use.name + "\" is given twice");
        }
        result.push_back(makeQualifier(use, *type));
        checkOverride(use, result.back(), findQualifier(inherited, use.name.c_str()));
    }
    for (const CIMQualifier& qualifier : propagatedQualifiers(inherited)) {
        if (findQualifier(result, qualifier.getName().c_str()) == nullptr) {
            result.push_back(qualifier);
        }
    }
    return result;
}

} // namespace cimserver::schema
