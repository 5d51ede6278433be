#include "cimserver/schema/QualifierTypes.hpp"

#include "cimserver/schema/Names.hpp"
#include "cimserver/schema/Parser.hpp"
#include "cimserver/schema/Values.hpp"

#include <algorithm>
#include <map>

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

// The standard's qualifiers in the widest scope that any edition gives them.
constexpr char kStandardMof[] = R"mof(
Qualifier Abstract : boolean = false, Scope(class, association, indication), Flavor(Restricted);
Qualifier Aggregate : boolean = false, Scope(reference), Flavor(DisableOverride);
Qualifier Aggregation : boolean = false, Scope(association), Flavor(DisableOverride);
Qualifier Alias : string, Scope(property, reference, method), Flavor(Translatable);
Qualifier ArrayType : string = "Bag", Scope(property, parameter), Flavor(DisableOverride);
Qualifier Association : boolean = false, Scope(class, association), Flavor(DisableOverride);
Qualifier BitMap : string[], Scope(property, method, parameter);
Qualifier BitValues : string[], Scope(property, method, parameter), Flavor(Translatable);
Qualifier Composition : boolean = false, Scope(association), Flavor(DisableOverride);
Qualifier Counter : boolean = false, Scope(property, method, parameter);
Qualifier Delete : boolean = false, Scope(association, reference);
Qualifier Deprecated : string[], Scope(any), Flavor(Restricted);
Qualifier Description : string, Scope(any), Flavor(Translatable);
Qualifier DisplayName : string, Scope(any), Flavor(Translatable);
Qualifier DN : boolean = false, Scope(property, method, parameter), Flavor(DisableOverride);
Qualifier EmbeddedInstance : string, Scope(property, method, parameter);
Qualifier EmbeddedObject : boolean = false, Scope(property, method, parameter), Flavor(DisableOverride);
Qualifier Exception : boolean = false, Scope(class, indication), Flavor(DisableOverride);
Qualifier Expensive : boolean = false, Scope(any);
Qualifier Experimental : boolean = false, Scope(any), Flavor(Restricted);
Qualifier Gauge : boolean = false, Scope(property, method, parameter);
Qualifier IfDeleted : boolean = false, Scope(association, reference);
Qualifier In : boolean = true, Scope(parameter), Flavor(DisableOverride);
Qualifier Indication : boolean = false, Scope(class, indication), Flavor(DisableOverride);
Qualifier Invisible : boolean = false, Scope(property, method, reference, class, association);
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride);
Qualifier Large : boolean = false, Scope(property, class);
Qualifier MappingStrings : string[], Scope(any);
Qualifier Max : uint32, Scope(reference);
Qualifier MaxLen : uint32, Scope(property, method, parameter);
Qualifier MaxValue : sint64, Scope(property, method, parameter);
Qualifier Min : uint32 = 0, Scope(reference);
Qualifier MinLen : uint32 = 0, Scope(property, method, parameter);
Qualifier MinValue : sint64, Scope(property, method, parameter);
Qualifier ModelCorrespondence : string[], Scope(any);
Qualifier NonLocal : string, Scope(reference);
Qualifier NonLocalType : string, Scope(reference);
Qualifier NullValue : string, Scope(property);
Qualifier OctetString : boolean = false, Scope(property, method, parameter), Flavor(DisableOverride);
Qualifier Out : boolean = false, Scope(parameter), Flavor(DisableOverride);
Qualifier Override : string, Scope(property, method, reference), Flavor(Restricted);
Qualifier Propagated : string, Scope(property, reference), Flavor(DisableOverride);
Qualifier Provider : string, Scope(any);
Qualifier PUnit : string, Scope(property, method, parameter);
Qualifier Read : boolean = true, Scope(property, reference);
Qualifier Required : boolean = false, Scope(property, reference, method, parameter), Flavor(DisableOverride);
Qualifier Revision : string, Scope(schema, class, association, indication), Flavor(Restricted, Translatable);
Qualifier Schema : string, Scope(any), Flavor(Translatable);
Qualifier Source : string, Scope(class, association, indication, reference);
Qualifier SourceType : string, Scope(class, association, indication, reference);
Qualifier Static : boolean = false, Scope(property, method), Flavor(DisableOverride);
Qualifier Syntax : string, Scope(property, reference, method, parameter);
Qualifier SyntaxType : string, Scope(property, reference, method, parameter);
Qualifier Terminal : boolean = false, Scope(class, association, indication), Flavor(Restricted);
Qualifier TriggerType : string, Scope(any);
Qualifier Units : string, Scope(property, method, parameter), Flavor(Translatable);
Qualifier UnknownValues : string[], Scope(property);
Qualifier UnsupportedValues : string[], Scope(property);
Qualifier ValueMap : string[], Scope(property, method, parameter);
Qualifier Values : string[], Scope(property, method, parameter), Flavor(Translatable);
Qualifier Version : string, Scope(schema, class, association, indication), Flavor(Restricted, Translatable);
Qualifier Weak : boolean = false, Scope(reference), Flavor(DisableOverride);
Qualifier Write : boolean = false, Scope(property, reference);
)mof";

using Types = std::map<std::string, CIMQualifierType>;

Types standardTypes() {
    Types types;
    Parser parser(kStandardMof, "standard qualifiers");
    while (const auto declaration = parser.next()) {
        const auto& qualifier = std::get<ast::QualifierDeclaration>(*declaration);
        types.emplace(fold(qualifier.name), buildQualifierType(qualifier));
    }
    return types;
}

} // namespace

std::vector<CIMFlavor::Flavor> flavorsOf(const std::vector<Token>& words) {
    std::vector<CIMFlavor::Flavor> flavors;
    const auto has = [&](CIMFlavor::Flavor f) { return std::find(flavors.begin(), flavors.end(), f) != flavors.end(); };
    for (const Token& word : words) {
        if (sameName(word.text, "toinstance")) {
            continue; // of early schemas; without effect since instances carry what their provider gives them
        }
        flavors.push_back(meaningOf(word, kFlavorWords, "flavor"));
        if ((has(CIMFlavor::ENABLEOVERRIDE) && has(CIMFlavor::DISABLEOVERRIDE)) ||
            (has(CIMFlavor::TOSUBCLASS) && has(CIMFlavor::RESTRICTED))) {
            fail(word.place, "the flavor \"" + word.text + "\" contradicts another one");
        }
    }
    return flavors;
}

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
    for (const auto flavor : flavorsOf(declaration.flavors)) {
        type.addFlavor(CIMFlavor(flavor));
    }
    return type;
}

const CIMQualifierType* standardQualifier(std::string_view name) {
    static const Types types = standardTypes();
    const auto found = types.find(fold(name));
    return found == types.end() ? nullptr : &found->second;
}

} // namespace cimserver::schema
