#include "cimserver/schema/Qualifiers.hpp"

#include "cimserver/schema/Values.hpp"

#include <algorithm>

namespace cimserver::schema {

using namespace OpenWBEM;

namespace {

template <class Enum>
struct Word {
    const char* text;
    Enum meaning;
};

constexpr Word<CIMScope::Scope> kScopeWords[] = {
    {"schema", CIMScope::SCHEMA},           {"class", CIMScope::CLASS},
    {"association", CIMScope::ASSOCIATION}, {"indication", CIMScope::INDICATION},
    {"property", CIMScope::PROPERTY},       {"reference", CIMScope::REFERENCE},
    {"method", CIMScope::METHOD},           {"parameter", CIMScope::PARAMETER},
    {"qualifier", CIMScope::QUALIFIER},     {"any", CIMScope::ANY},
};

constexpr Word<CIMFlavor::Flavor> kFlavorWords[] = {
    {"enableoverride", CIMFlavor::ENABLEOVERRIDE}, {"disableoverride", CIMFlavor::DISABLEOVERRIDE},
    {"restricted", CIMFlavor::RESTRICTED},         {"tosubclass", CIMFlavor::TOSUBCLASS},
    {"translatable", CIMFlavor::TRANSLATE},
};

template <class Enum, std::size_t kCount>
Enum meaningOf(const Token& token, const Word<Enum> (&words)[kCount], const char* what) {
    const auto found =
        std::find_if(std::begin(words), std::end(words), [&](const auto& w) { return sameName(w.text, token.text); });
    if (found == std::end(words)) {
        fail(token.place, "\"" + token.text + "\" is not a " + what);
    }
    return found->meaning;
}

/// Adds the flavors written; of each pair of opposites one only may be written.
template <class Flavored>
void addFlavors(Flavored& target, const std::vector<Token>& words) {
    std::vector<CIMFlavor::Flavor> seen;
    const auto has = [&](CIMFlavor::Flavor f) { return std::find(seen.begin(), seen.end(), f) != seen.end(); };
    for (const Token& word : words) {
        if (sameName(word.text, "toinstance")) {
            continue; // of early schemas; without effect since instances carry what their provider gives them
        }
        seen.push_back(meaningOf(word, kFlavorWords, "flavor"));
        if ((has(CIMFlavor::ENABLEOVERRIDE) && has(CIMFlavor::DISABLEOVERRIDE)) ||
            (has(CIMFlavor::TOSUBCLASS) && has(CIMFlavor::RESTRICTED))) {
            fail(word.place, "the flavor \"" + word.text + "\" contradicts another one");
        }
        target.addFlavor(CIMFlavor(seen.back()));
    }
}

bool allowedOn(const CIMQualifierType& type, std::initializer_list<CIMScope::Scope> scopes) {
    return type.hasScope(CIMScope(CIMScope::ANY)) ||
           std::any_of(scopes.begin(), scopes.end(), [&](auto scope) { return type.hasScope(CIMScope(scope)); });
}

CIMQualifier makeQualifier(const ast::QualifierUse& use, const CIMQualifierType& type) {
    CIMQualifier qualifier(type);
    if (use.value) {
        qualifier.setValue(value(*use.value, type.getDataType()));
    } else if (type.getDataType().getType() == CIMDataType::BOOLEAN && !type.getDataType().isArrayType()) {
        qualifier.setValue(CIMValue(true));
    }
    addFlavors(qualifier, use.flavors);
    return qualifier;
}

bool goesOn(const CIMQualifier& qualifier) {
    return !qualifier.hasFlavor(CIMFlavor(CIMFlavor::RESTRICTED));
}

void checkOverride(const ast::QualifierUse& use, const CIMQualifier& now, const CIMQualifier* before) {
    if (before != nullptr && goesOn(*before) && before->hasFlavor(CIMFlavor(CIMFlavor::DISABLEOVERRIDE)) &&
        !before->getValue().equal(now.getValue())) {
        fail(use.place, "the qualifier \"" + use.name + "\" may not be overridden");
    }
}

} // namespace

CIMQualifierType buildQualifierType(const ast::QualifierDeclaration& declaration) {
    CIMQualifierType type(CIMName(declaration.name.c_str()));
    const CIMDataType data = dataType(declaration.type);
    if (data.isReferenceType()) {
        fail(declaration.type.place, "a qualifier cannot be a reference");
    }
    type.setDataType(data);
    if (declaration.defaultValue) {
        type.setDefaultValue(value(*declaration.defaultValue, data));
    }
    if (declaration.scopes.empty()) {
        fail(declaration.place, "the qualifier \"" + declaration.name + "\" is declared without a scope");
    }
    for (const Token& scope : declaration.scopes) {
        type.addScope(CIMScope(meaningOf(scope, kScopeWords, "scope")));
    }
    addFlavors(type, declaration.flavors);
    return type;
}

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
        if (goesOn(qualifier)) {
            result.push_back(qualifier.setPropagated(true));
        }
    }
    return result;
}

CIMQualifierArray buildQualifiers(const ast::QualifierList& written, const Namespace& known,
                                  std::initializer_list<CIMScope::Scope> scopes, const CIMQualifierArray& inherited) {
    CIMQualifierArray result;
    for (const ast::QualifierUse& use : written) {
        const CIMQualifierType* const type = known.findQualifier(use.name);
        if (type == nullptr) {
            fail(use.place, "the qualifier \"" + use.name + "\" is not declared");
        }
        if (!allowedOn(*type, scopes)) {
            fail(use.place, "the qualifier \"" + use.name + "\" is not allowed here by its scope");
        }
        if (findQualifier(result, use.name.c_str()) != nullptr) {
            fail(use.place, "the qualifier \"" + use.name + "\" is given twice");
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
