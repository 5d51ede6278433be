// Content models are written almost like in a DTD: "|" separates alternatives, "," the items of a sequence, "/" the
// names that an item may have; ? * or + after them says how often. "#" is character data.
#include "cimserver/cimxml/Grammar.hpp"

#include "cimserver/common/Text.hpp"

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace cimserver::cimxml {
namespace {

struct Row {
    const char* name;
    const char* content;
    /// Names; "!": required, ":b": boolean, ":t": CIM type, ":p": parameter type, ":k": key value type, ":e": kind of
    /// embedded object.
    const char* attributes;
};

#define OBJECT_PATHS "CLASSPATH/LOCALCLASSPATH/CLASSNAME/INSTANCEPATH/LOCALINSTANCEPATH/INSTANCENAME"
#define PROPERTIES "PROPERTY/PROPERTY.ARRAY/PROPERTY.REFERENCE*"
#define FLAVORS " OVERRIDABLE:b TOSUBCLASS:b TOINSTANCE:b TRANSLATABLE:b"
#define ORIGIN " CLASSORIGIN PROPAGATED:b"

const Row kRows[] = {
    {"CIM", "MESSAGE", "CIMVERSION! DTDVERSION!"},
    {"MESSAGE", "SIMPLEREQ/SIMPLERSP/MULTIREQ/MULTIRSP/SIMPLEEXPREQ/MULTIEXPREQ", "ID! PROTOCOLVERSION!"},
    {"MULTIREQ", "SIMPLEREQ, SIMPLEREQ+", ""},
    {"SIMPLEREQ", "CORRELATOR*, METHODCALL/IMETHODCALL", ""},
    {"MULTIRSP", "SIMPLERSP, SIMPLERSP+", ""},
    {"SIMPLERSP", "METHODRESPONSE/IMETHODRESPONSE", ""},
    {"CORRELATOR", "VALUE", "NAME! TYPE!:t"},
    {"METHODCALL", "LOCALCLASSPATH/LOCALINSTANCEPATH, PARAMVALUE*", "NAME!"},
    {"IMETHODCALL", "LOCALNAMESPACEPATH, IPARAMVALUE*", "NAME!"},
    {"METHODRESPONSE", "ERROR | RETURNVALUE?, PARAMVALUE*", "NAME!"},
    {"IMETHODRESPONSE", "ERROR | IRETURNVALUE?, PARAMVALUE*", "NAME!"},
    {"ERROR", "INSTANCE*", "CODE! DESCRIPTION"},
    {"PARAMVALUE",
     "VALUE/VALUE.REFERENCE/VALUE.ARRAY/VALUE.REFARRAY/CLASSNAME/INSTANCENAME/CLASS/INSTANCE/VALUE.NAMEDINSTANCE?",
     "NAME! PARAMTYPE:p EmbeddedObject:e"},
    {"IPARAMVALUE",
     "VALUE/VALUE.ARRAY/VALUE.REFERENCE/CLASSNAME/INSTANCENAME/QUALIFIER.DECLARATION/CLASS/INSTANCE/"
     "VALUE.NAMEDINSTANCE?",
     "NAME!"},
    {"RETURNVALUE", "VALUE/VALUE.REFERENCE?", "PARAMTYPE:p EmbeddedObject:e"},
    {"IRETURNVALUE",
     "CLASSNAME* | INSTANCENAME* | VALUE* | VALUE.OBJECTWITHPATH* | VALUE.OBJECTWITHLOCALPATH* | VALUE.OBJECT* | "
     "OBJECTPATH* | QUALIFIER.DECLARATION* | VALUE.ARRAY? | VALUE.REFERENCE? | CLASS* | INSTANCE* | INSTANCEPATH* | "
     "VALUE.NAMEDINSTANCE* | VALUE.INSTANCEWITHPATH*",
     ""},

    {"VALUE", "#", ""},
    {"VALUE.NULL", "", ""},
    {"VALUE.ARRAY", "VALUE/VALUE.NULL*", ""},
    {"VALUE.REFERENCE", OBJECT_PATHS, ""},
    {"VALUE.REFARRAY", "VALUE.REFERENCE/VALUE.NULL*", ""},
    {"VALUE.OBJECT", "CLASS/INSTANCE", ""},
    {"VALUE.NAMEDINSTANCE", "INSTANCENAME, INSTANCE", ""},
    {"VALUE.OBJECTWITHPATH", "CLASSPATH, CLASS | INSTANCEPATH, INSTANCE", ""},
    {"VALUE.OBJECTWITHLOCALPATH", "LOCALCLASSPATH, CLASS | LOCALINSTANCEPATH, INSTANCE", ""},
    {"VALUE.INSTANCEWITHPATH", "INSTANCEPATH, INSTANCE", ""},

    {"NAMESPACEPATH", "HOST, LOCALNAMESPACEPATH", ""},
    {"LOCALNAMESPACEPATH", "NAMESPACE+", ""},
    {"HOST", "#", ""},
    {"NAMESPACE", "", "NAME!"},
    {"CLASSPATH", "NAMESPACEPATH, CLASSNAME", ""},
    {"LOCALCLASSPATH", "LOCALNAMESPACEPATH, CLASSNAME", ""},
    {"CLASSNAME", "", "NAME!"},
    {"INSTANCEPATH", "NAMESPACEPATH, INSTANCENAME", ""},
    {"LOCALINSTANCEPATH", "LOCALNAMESPACEPATH, INSTANCENAME", ""},
    {"INSTANCENAME", "KEYBINDING* | KEYVALUE? | VALUE.REFERENCE?", "CLASSNAME!"},
    {"OBJECTPATH", "INSTANCEPATH/CLASSPATH", ""},
    {"KEYBINDING", "KEYVALUE/VALUE.REFERENCE", "NAME!"},
    {"KEYVALUE", "#", "VALUETYPE:k TYPE:t"},

    {"CLASS", "QUALIFIER*, " PROPERTIES ", METHOD*", "NAME! SUPERCLASS"},
    {"INSTANCE", "QUALIFIER*, " PROPERTIES, "CLASSNAME! xml:lang"},
    {"QUALIFIER", "VALUE/VALUE.ARRAY?", "NAME! TYPE!:t PROPAGATED:b xml:lang" FLAVORS},
    {"QUALIFIER.DECLARATION", "SCOPE?, VALUE/VALUE.ARRAY?", "NAME! TYPE!:t ISARRAY:b ARRAYSIZE" FLAVORS},
    {"SCOPE", "", "CLASS:b ASSOCIATION:b REFERENCE:b PROPERTY:b METHOD:b PARAMETER:b INDICATION:b"},
    {"PROPERTY", "QUALIFIER*, VALUE?", "NAME! TYPE!:t EmbeddedObject:e xml:lang" ORIGIN},
    {"PROPERTY.ARRAY", "QUALIFIER*, VALUE.ARRAY?", "NAME! TYPE!:t ARRAYSIZE EmbeddedObject:e xml:lang" ORIGIN},
    {"PROPERTY.REFERENCE", "QUALIFIER*, VALUE.REFERENCE?", "NAME! REFERENCECLASS" ORIGIN},
    {"METHOD", "QUALIFIER*, PARAMETER/PARAMETER.REFERENCE/PARAMETER.ARRAY/PARAMETER.REFARRAY*", "NAME! TYPE:t" ORIGIN},
    {"PARAMETER", "QUALIFIER*", "NAME! TYPE!:t"},
    {"PARAMETER.REFERENCE", "QUALIFIER*", "NAME! REFERENCECLASS"},
    {"PARAMETER.ARRAY", "QUALIFIER*", "NAME! TYPE!:t ARRAYSIZE"},
    {"PARAMETER.REFARRAY", "QUALIFIER*", "NAME! REFERENCECLASS ARRAYSIZE"},

    // Exported indications: known, so that they are refused as another kind of message and not as unknown elements.
    {"SIMPLEEXPREQ", "CORRELATOR*, EXPMETHODCALL", ""},
    {"MULTIEXPREQ", "SIMPLEEXPREQ, SIMPLEEXPREQ+", ""},
    {"EXPMETHODCALL", "EXPPARAMVALUE*", "NAME!"},
    {"EXPPARAMVALUE", "INSTANCE?", "NAME!"},
};

#undef OBJECT_PATHS
#undef PROPERTIES
#undef FLAVORS
#undef ORIGIN

struct ElementRule;

struct Item {
    std::vector<const ElementRule*> elements;
    bool optional = false;
    bool repeated = false;
};
using Sequence = std::vector<Item>;

struct AttributeRule {
    std::string name;
    bool required = false;
    char kind = ' ';
};

struct ElementRule {
    std::string_view name;
    bool characters = false;
    std::vector<Sequence> alternatives; ///< none: the element is empty
    std::vector<AttributeRule> attributes;
};

using Table = std::unordered_map<std::string_view, ElementRule>;

Item compileItem(std::string_view text, const Table& all) {
    Item item;
    const char last = text.back();
    item.optional = last == '?' || last == '*';
    item.repeated = last == '*' || last == '+';
    if (item.optional || item.repeated) {
        text.remove_suffix(1);
    }
    for (const std::string_view name : split(text, '/')) {
        item.elements.push_back(&all.at(name));
    }
    return item;
}

Sequence compileSequence(std::string_view text, const Table& all) {
    Sequence sequence;
    for (const std::string_view item : split(text, ',')) {
        sequence.push_back(compileItem(item, all));
    }
    return sequence;
}

AttributeRule compileAttribute(std::string_view text) {
    AttributeRule rule;
    if (text.size() > 2 && text[text.size() - 2] == ':' && text != "xml:lang") {
        rule.kind = text.back();
        text.remove_suffix(2);
    }
    rule.required = text.back() == '!';
    rule.name = text.substr(0, text.size() - (rule.required ? 1 : 0));
    return rule;
}

void compile(const Row& row, Table& all) {
    ElementRule& rule = all.at(row.name);
    rule.name = row.name;
    const std::string_view content = row.content;
    rule.characters = content == "#";
    if (!rule.characters) {
        for (const std::string_view alternative : split(content, '|')) {
            rule.alternatives.push_back(compileSequence(alternative, all));
        }
    }
    for (const std::string_view attribute : split(row.attributes, ' ')) {
        rule.attributes.push_back(compileAttribute(attribute));
    }
}

const Table& table() {
    static const Table compiled = [] {
        Table all;
        for (const Row& row : kRows) {
            all.try_emplace(row.name);
        }
        for (const Row& row : kRows) {
            compile(row, all);
        }
        return all;
    }();
    return compiled;
}

template <std::size_t N>
bool oneOf(std::string_view value, const std::array<std::string_view, N>& known) {
    return std::find(known.begin(), known.end(), value) != known.end();
}

constexpr std::array<std::string_view, 14> kCimTypes = {"string", "boolean", "uint8",    "sint8",  "uint16",
                                                        "sint16", "uint32",  "sint32",   "uint64", "sint64",
                                                        "real32", "real64",  "datetime", "char16"};
constexpr std::array<std::string_view, 3> kOtherParameterTypes = {"reference", "object", "instance"};
constexpr std::array<std::string_view, 3> kKeyTypes = {"string", "boolean", "numeric"};
constexpr std::array<std::string_view, 2> kEmbeddedKinds = {"object", "instance"};

bool fits(char kind, std::string_view value, Strictness strictness) {
    switch (kind) {
    case 'b':
        return value == "true" || value == "false" ||
               (strictness == Strictness::Loose &&
                (equalsIgnoringCase(value, "true") || equalsIgnoringCase(value, "false")));
    case 't':
        return oneOf(value, kCimTypes);
    case 'p':
        return oneOf(value, kCimTypes) || oneOf(value, kOtherParameterTypes);
    case 'k':
        return oneOf(value, kKeyTypes);
    case 'e':
        return oneOf(value, kEmbeddedKinds);
    default:
        return true;
    }
}

/// Walks a document; every error names the element.
class Checker {
  public:
    explicit Checker(Strictness strictness) : strictness_(strictness) {}

    /// Returns the element's rule.
    const ElementRule& check(pugi::xml_node element) {
        const auto found = table().find(element.name());
        if (found == table().end()) {
            throw GrammarError(GrammarError::Kind::Unknown, "unknown element " + quote(element.name()));
        }
        const ElementRule& rule = found->second;
        checkAttributes(element, rule);
        const std::size_t first = inside_.size();
        for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
            if (child.type() == pugi::node_element) {
                inside_.push_back(&check(child));
            } else if (!rule.characters) {
                checkBlank(element, child);
            }
        }
        checkContent(element, rule, inside_.begin() + static_cast<std::ptrdiff_t>(first));
        inside_.resize(first);
        return rule;
    }

  private:
    using Elements = boost::container::small_vector<const ElementRule*, 64>;
    using Position = Elements::const_iterator;

    [[noreturn]] static void fail(pugi::xml_node element, const std::string& text) {
        throw GrammarError(GrammarError::Kind::Broken, "element " + std::string(element.name()) + ": " + text);
    }

    void checkAttributes(pugi::xml_node element, const ElementRule& rule) const {
        for (const AttributeRule& attribute : rule.attributes) {
            const pugi::xml_attribute given = element.attribute(attribute.name.c_str());
            if (!given && attribute.required) {
                fail(element, "attribute " + attribute.name + " is missing");
            }
            if (given && attribute.kind != ' ' && !fits(attribute.kind, given.value(), strictness_)) {
                fail(element, "attribute " + attribute.name + " cannot be " + quote(given.value()));
            }
        }
        if (strictness_ == Strictness::Strict) {
            checkKnown(element, rule);
        }
    }

    static void checkKnown(pugi::xml_node element, const ElementRule& rule) {
        for (const pugi::xml_attribute given : element.attributes()) {
            if (std::none_of(rule.attributes.begin(), rule.attributes.end(),
                             [&](const AttributeRule& one) { return one.name == given.name(); })) {
                fail(element, "unknown attribute " + quote(given.name()));
            }
        }
    }

    static void checkBlank(pugi::xml_node element, pugi::xml_node child) {
        const bool text = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
        if (text && std::string_view(child.value()).find_first_not_of(" \t\r\n") != std::string_view::npos) {
            fail(element, "text is not allowed here"); // not quoted: it may be a secret outside its VALUE
        }
    }

    /// `child` is the first element inside.
    void checkContent(pugi::xml_node element, const ElementRule& rule, const Position& child) const {
        if (rule.alternatives.empty() && child == inside_.end()) {
            return;
        }
        Position furthest = child;
        for (const Sequence& sequence : rule.alternatives) {
            furthest = child;
            if (matches(sequence, furthest)) {
                return;
            }
        }
        fail(element, furthest != inside_.end() ? "element " + std::string((*furthest)->name) + " is not allowed here"
                                                : std::string("content is missing"));
    }

    static bool allows(const Item& item, const ElementRule* element) {
        return std::find(item.elements.begin(), item.elements.end(), element) != item.elements.end();
    }

    /// Matches greedily, which suffices: no item shares a name with the next one, but for "SIMPLEREQ, SIMPLEREQ+" and
    /// its like, where the first takes exactly one. `child` becomes the first element that did not match.
    bool matches(const Sequence& sequence, Position& child) const {
        for (const Item& item : sequence) {
            std::size_t count = 0;
            while (child != inside_.end() && allows(item, *child) && (item.repeated || count == 0)) {
                ++child;
                ++count;
            }
            if (count == 0 && !item.optional) {
                return false;
            }
        }
        return child == inside_.end();
    }

    Strictness strictness_;
    Elements inside_; ///< the elements found so far in the one that is checked, after those in the ones around it
};

} // namespace

void checkGrammar(pugi::xml_node element, Strictness strictness) {
    Checker(strictness).check(element);
}

} // namespace cimserver::cimxml
