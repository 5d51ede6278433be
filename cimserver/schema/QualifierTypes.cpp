#include "cimserver/schema/QualifierTypes.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Parser.hpp"
#include "cimserver/schema/Values.hpp"

#include <algorithm>
#include <map>
#include <sstream>

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
    const auto found = std::find_if(std::begin(words), std::end(words),
                                    [&](const auto& w) { return equalsIgnoringCase(w.text, token.text); });
    if (found == std::end(words)) {
        fail(token.location, "\"" + token.text + "\" is not a " + what);
    }
    return found->meaning;
}

struct Standard {
    const char* names;
    const char* declaration; ///< the same for all of them
};

// The standard's qualifiers in the widest scope that any edition gives them.
constexpr Standard kStandard[] = {
    {"Abstract Terminal", "boolean = false, Scope(class, association, indication), Flavor(Restricted)"},
    {"Association Indication Exception",
     "boolean = false, Scope(class, association, indication), Flavor(DisableOverride)"},
    {"Aggregation Composition", "boolean = false, Scope(association), Flavor(DisableOverride)"},
    {"Aggregate Weak", "boolean = false, Scope(reference), Flavor(DisableOverride)"},
    {"Key", "boolean = false, Scope(property, reference), Flavor(DisableOverride)"},
    {"Read", "boolean = true, Scope(property, reference)"},
    {"Write", "boolean = false, Scope(property, reference)"},
    {"In", "boolean = true, Scope(parameter), Flavor(DisableOverride)"},
    {"Out", "boolean = false, Scope(parameter), Flavor(DisableOverride)"},
    {"Counter DN EmbeddedObject Gauge OctetString Required Static",
     "boolean = false, Scope(property, reference, method, parameter), Flavor(DisableOverride)"},
    {"Delete Expensive IfDeleted Invisible Large", "boolean = false, Scope(any)"},
    {"Experimental", "boolean = false, Scope(any), Flavor(Restricted)"},
    {"Max Min", "uint32, Scope(reference)"},
    {"MaxLen MinLen", "uint32, Scope(property, method, parameter)"},
    {"MaxValue MinValue", "sint64, Scope(property, method, parameter)"},
    {"Alias Description DisplayName Units", "string, Scope(any), Flavor(Translatable)"},
    {"Revision Version", "string, Scope(schema, class, association, indication), Flavor(Restricted, Translatable)"},
    {"Override", "string, Scope(property, method, reference), Flavor(Restricted)"},
    {"Propagated", "string, Scope(property, reference), Flavor(DisableOverride)"},
    {"ArrayType EmbeddedInstance NonLocal NonLocalType NullValue Provider PUnit Schema Source SourceType Syntax "
     "SyntaxType TriggerType",
     "string, Scope(any)"},
    {"Deprecated", "string[], Scope(any), Flavor(Restricted)"},
    {"MappingStrings ModelCorrespondence", "string[], Scope(any)"},
    {"BitMap UnknownValues UnsupportedValues ValueMap", "string[], Scope(property, method, parameter)"},
    {"BitValues Values", "string[], Scope(property, method, parameter), Flavor(Translatable)"},
};

std::map<std::string, CIMQualifierType> standardTypes() {
    std::map<std::string, CIMQualifierType> types;
    for (const Standard& row : kStandard) {
        std::istringstream names(row.names);
        for (std::string name; names >> name;) {
            const std::string mof = "Qualifier " + name + " : " + row.declaration + ";";
            const auto declaration = Parser(mof, "standard qualifiers").next();
            types.emplace(folded(name), buildQualifierType(std::get<ast::QualifierDeclaration>(*declaration)));
        }
    }
    return types;
}

} // namespace

std::vector<CIMFlavor::Flavor> flavorsOf(const std::vector<Token>& words) {
    std::vector<CIMFlavor::Flavor> flavors;
    const auto has = [&](CIMFlavor::Flavor f) { return std::find(flavors.begin(), flavors.end(), f) != flavors.end(); };
    for (const Token& word : words) {
        if (equalsIgnoringCase(word.text, "toinstance")) {
            continue; // of early schemas; without effect since instances carry what their provider gives them
        }
        flavors.push_back(meaningOf(word, kFlavorWords, "flavor"));
        if ((has(CIMFlavor::ENABLEOVERRIDE) && has(CIMFlavor::DISABLEOVERRIDE)) ||
            (has(CIMFlavor::TOSUBCLASS) && has(CIMFlavor::RESTRICTED))) {
            fail(word.location, "the flavor \"" + word.text + "\" contradicts another one");
        }
    }
    return flavors;
}

CIMQualifierType buildQualifierType(const ast::QualifierDeclaration& declaration) {
    CIMQualifierType type(CIMName(declaration.name.c_str()));
    const CIMDataType data = dataType(declaration.type);
    if (data.isReferenceType()) {
        fail(declaration.type.location, "a qualifier cannot be a reference");
    }
    type.setDataType(data);
    if (declaration.defaultValue) {
        type.setDefaultValue(value(*declaration.defaultValue, data));
    }
    if (declaration.scopes.empty()) {
        fail(declaration.location, "the qualifier \"" + declaration.name + "\" is declared without a scope");
    }
    for (const Token& scope : declaration.scopes) {
        type.addScope(CIMScope(meaningOf(scope, kScopeWords, "scope")));
    }
    for (const auto flavor : flavorsOf(declaration.flavors)) {
        type.addFlavor(CIMFlavor(flavor));
    }
    return type;
}

const CIMQualifierType* standardQualifier(std::string_view name) {
    static const auto types = standardTypes();
    const auto found = types.find(folded(name));
    return found == types.end() ? nullptr : &found->second;
}

} // namespace cimserver::schema
