#include "cimserver/cimxml/ObjectReader.hpp"

#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/EmbeddedObjects.hpp"
#include "cimserver/cimxml/RequestMessage.hpp"
#include "cimserver/cimxml/ValueText.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

/// More keys than any class has: a bound for paths whose class the schema does not know.
constexpr std::size_t kMostKeys = 64;
constexpr unsigned kDeepestObject = 8;

String nameOf(pugi::xml_node element, const char* attribute = "NAME") {
    return String(element.attribute(attribute).value());
}

/// The value inside PROPERTY and its like, after the qualifiers.
pugi::xml_node valueElement(pugi::xml_node parent) {
    const pugi::xml_node last = lastElement(parent);
    return std::string_view(last.name()) == "QUALIFIER" ? pugi::xml_node() : last;
}

std::string typeText(const CIMDataType& type) {
    return (type.isArrayType() ? "an array of " : "a ") + std::string(typeName(type.getType()));
}

/// The value being read, as error messages describe it.
struct ExpectedValue {
    std::string_view name;
    const CIMDataType& type;
    Status mismatch;

    [[noreturn]] void refuse(const std::string& what) const {
        throw CimError(mismatch, std::string(name) + ": " + what + " is not " + typeText(type));
    }
};

CIMValue scalarValue(pugi::xml_node element, const ExpectedValue& expected) {
    const std::string text = textOf(element);
    const auto value = parseScalar(expected.type.getType(), text);
    if (!value) {
        expected.refuse(quote(text));
    }
    return *value;
}

/// The elements of VALUE.ARRAY or VALUE.REFARRAY; refuses NULL and more than fit.
std::vector<pugi::xml_node> arrayElements(pugi::xml_node array, const ExpectedValue& expected) {
    std::vector<pugi::xml_node> elements;
    for (pugi::xml_node item = firstElement(array); item; item = nextElement(item)) {
        if (std::string_view(item.name()) == "VALUE.NULL") {
            expected.refuse("a NULL element in the array");
        }
        elements.push_back(item);
    }
    const auto most = expected.type.getSize();
    if (most > 0 && elements.size() > static_cast<std::size_t>(most)) {
        expected.refuse(std::to_string(elements.size()) + " elements, where " + std::to_string(most) + " fit,");
    }
    return elements;
}

CIMValue arrayValue(pugi::xml_node array, const ExpectedValue& expected) {
    std::vector<std::string> texts;
    for (const pugi::xml_node item : arrayElements(array, expected)) {
        texts.push_back(textOf(item));
    }
    std::string bad;
    const auto value = parseArray(expected.type.getType(), texts, bad);
    if (!value) {
        expected.refuse("the element " + quote(bad));
    }
    return *value;
}

/// The type that the request gives to a key, for a class that the schema does not have.
CIMDataType claimedType(pugi::xml_node keyValue) {
    const std::string_view valueType = keyValue.attribute("VALUETYPE").value();
    if (const pugi::xml_attribute type = keyValue.attribute("TYPE")) {
        return CIMDataType::getDataType(String(type.value()));
    }
    if (valueType == "numeric") {
        return textOf(keyValue).find_first_of(".eE") == std::string::npos ? CIMDataType(CIMDataType::SINT64)
                                                                          : CIMDataType(CIMDataType::REAL64);
    }
    return valueType == "boolean" ? CIMDataType(CIMDataType::BOOLEAN) : CIMDataType(CIMDataType::STRING);
}

void requireNew(const CIMPropertyArray& present, const CIMProperty& next, const char* kind) {
    if (CIMAccess::find(present, CIMAccess::name(next)) != nullptr) {
        throw CimError(Status::InvalidParameter, std::string(kind) + " " + toStd(next.getName()) + " occurs twice");
    }
}

/// The name of the only key of a class, for an INSTANCENAME that leaves it out.
String onlyKey(const CIMClass* cimClass, const String& className) {
    const CIMPropertyArray keys = cimClass != nullptr ? CIMAccess::keys(*cimClass) : CIMPropertyArray();
    if (keys.size() != 1) {
        throw CimError(Status::InvalidParameter, "the key value of " + toStd(className) + " has no name");
    }
    return keys[0].getName();
}

} // namespace

CIMValue ObjectReader::value(pugi::xml_node parent, const CIMDataType& type, const CIMQualifierArray& qualifiers,
                             std::string_view name, Status mismatch) const {
    if (const auto className = embeddedClassName(type, qualifiers)) {
        const CIMValue texts = value(parent, type, {}, name, mismatch);
        return texts ? embedded(texts, *className, name) : texts;
    }
    const ExpectedValue expected{name, type, mismatch};
    const pugi::xml_node element = valueElement(parent);
    if (!element) {
        return CIMValue(CIMNULL);
    }
    const std::string_view kind = element.name();
    if (!type.isReferenceType() && kind == (type.isArrayType() ? "VALUE.ARRAY" : "VALUE")) {
        return type.isArrayType() ? arrayValue(element, expected) : scalarValue(element, expected);
    }
    if (type.isReferenceType() && !type.isArrayType() && kind == "VALUE.REFERENCE") {
        return CIMValue(reference(element));
    }
    if (type.isReferenceType() && type.isArrayType() && kind == "VALUE.REFARRAY") {
        CIMObjectPathArray paths;
        for (const pugi::xml_node item : arrayElements(element, expected)) {
            paths.push_back(reference(item));
        }
        return CIMValue(paths);
    }
    expected.refuse(std::string(kind));
}

CIMObjectPath ObjectReader::instanceName(pugi::xml_node element, Status missing) const {
    const String className = nameOf(element, "CLASSNAME");
    return path(element, className, nameSpace_, &cimom_.classOf(nameSpace_, className, missing));
}

CIMObjectPath ObjectReader::objectName(pugi::xml_node element, Status missing) const {
    if (std::string_view(element.name()) != "CLASSNAME") {
        return instanceName(element, missing);
    }
    const String name = nameOf(element);
    static_cast<void>(cimom_.classOf(nameSpace_, name, missing));
    return {name, nameSpace_};
}

CIMObjectPath ObjectReader::path(pugi::xml_node instanceName, const String& className, const String& nameSpace,
                                 const CIMClass* cimClass) const {
    CIMPropertyArray keys;
    keys.reserve(cimClass != nullptr ? CIMAccess::keys(*cimClass).size() : 0);
    for (pugi::xml_node child = firstElement(instanceName); child; child = nextElement(child)) {
        const bool named = std::string_view(child.name()) == "KEYBINDING";
        const CIMProperty next = named ? key(child, child.attribute("NAME").value(), cimClass)
                                       : key(instanceName, onlyKey(cimClass, className).c_str(), cimClass);
        requireNew(keys, next, "key");
        if (keys.size() == kMostKeys) {
            throw CimError(Status::InvalidParameter, "the path of " + toStd(className) + " has too many keys");
        }
        keys.push_back(next);
    }
    CIMObjectPath result(className, nameSpace);
    result.setKeys(keys);
    return result;
}

CIMProperty ObjectReader::key(pugi::xml_node parent, const char* name, const CIMClass* cimClass) const {
    const CIMProperty* const known = cimClass != nullptr ? CIMAccess::find(CIMAccess::keys(*cimClass), name) : nullptr;
    if (cimClass != nullptr && known == nullptr) {
        throw CimError(Status::InvalidParameter, quote(name) + " is no key of " + toStd(cimClass->getName()));
    }
    const pugi::xml_node keyValue = parent.child("KEYVALUE");
    const CIMDataType type = known != nullptr ? CIMAccess::dataType(*known)
                             : keyValue       ? claimedType(keyValue)
                                              : CIMDataType(CIMDataType::REFERENCE);
    const ExpectedValue expected{name, type, Status::InvalidParameter};
    if (type.isReferenceType() == static_cast<bool>(keyValue)) {
        expected.refuse(firstElement(parent).name());
    }
    return {known != nullptr ? CIMAccess::name(*known) : CIMName(name),
            keyValue ? scalarValue(keyValue, expected) : CIMValue(reference(parent.child("VALUE.REFERENCE")))};
}

CIMObjectPath ObjectReader::reference(pugi::xml_node valueReference) const {
    pugi::xml_node name = firstElement(valueReference);
    pugi::xml_node local = name.child("LOCALNAMESPACEPATH");
    String host;
    if (const pugi::xml_node full = name.child("NAMESPACEPATH")) {
        host = toCim(textOf(full.child("HOST")));
        local = full.child("LOCALNAMESPACEPATH");
    }
    const String nameSpace = local ? toCim(nameSpaceOf(local)) : nameSpace_;
    if (local) {
        name = name.child("INSTANCENAME") ? name.child("INSTANCENAME") : name.child("CLASSNAME");
    }
    const bool ofClass = std::string_view(name.name()) == "CLASSNAME";
    const String className = nameOf(name, ofClass ? "NAME" : "CLASSNAME");
    CIMObjectPath result = ofClass
                               ? CIMObjectPath(className, nameSpace)
                               : path(name, className, nameSpace, cimom_.repository().findClass(nameSpace, className));
    if (!host.empty()) {
        result.setHost(host);
    }
    return result;
}

CIMInstance ObjectReader::instance(pugi::xml_node element) const {
    const String className = nameOf(element, "CLASSNAME");
    const CIMClass& cimClass = cimom_.classOf(nameSpace_, className);
    CIMPropertyArray properties;
    for (pugi::xml_node child = firstElement(element); child; child = nextElement(child)) {
        if (std::string_view(child.name()).substr(0, 8) == "PROPERTY") {
            const CIMProperty next = property(child, cimClass);
            requireNew(properties, next, "property");
            properties.push_back(next);
        }
    }
    CIMInstance result(className);
    result.setProperties(properties);
    return result;
}

CIMProperty ObjectReader::property(pugi::xml_node element, const CIMClass& cimClass) const {
    const char* const name = element.attribute("NAME").value();
    const CIMProperty& known = cimom::propertyOf(cimClass, name);
    CIMProperty result(known);
    result.setValue(value(element, CIMAccess::dataType(known), CIMAccess::qualifiers(known), name));
    return result;
}

CIMValue ObjectReader::embedded(const CIMValue& texts, const String& className, std::string_view name) const {
    if (depth_ == kDeepestObject) {
        throw CimError(Status::InvalidParameter,
                       std::string(name) + ": objects are embedded in one another too deeply");
    }
    ObjectReader inner(*this);
    ++inner.depth_;
    return embeddedObjects(texts, limits_, [&](pugi::xml_node element) {
        const std::string_view kind = element.name();
        if (kind == "INSTANCE") {
            return CIMValue(inner.embeddedInstance(element, className));
        }
        if (kind == "CLASS" && className.empty()) {
            return CIMValue(inner.embeddedClass(element));
        }
        throw CimError(Status::InvalidParameter, "embedded object: a " + std::string(kind));
    });
}

CIMClass ObjectReader::embeddedClass(pugi::xml_node element) const {
    CIMClass known = cimom_.classOf(nameSpace_, nameOf(element), Status::InvalidParameter);
    std::size_t features = 0;
    bool same = true;
    for (pugi::xml_node child = firstElement(element); child; child = nextElement(child)) {
        const std::string_view kind = child.name();
        const CIMName name(nameOf(child));
        same = same && (kind == "QUALIFIER" ||
                        (kind == "METHOD" ? bool(known.getMethod(name)) : bool(known.getProperty(name))));
        features += kind == "QUALIFIER" ? 0U : 1U;
    }
    if (!same || features != known.getAllProperties().size() + known.getAllMethods().size()) {
        throw CimError(Status::InvalidParameter,
                       "embedded object: the class " + toStd(known.getName()) + " of the schema is another one");
    }
    return known;
}

CIMInstance ObjectReader::embeddedInstance(pugi::xml_node element, const String& className) const {
    CIMInstance result = instance(element);
    const String own = result.getClassName();
    if (!className.empty() && !cimom_.repository().isA(nameSpace_, own, className)) {
        throw CimError(Status::InvalidParameter, "embedded object: " + toStd(own) + " is no " + toStd(className));
    }
    const CIMPropertyArray keys = result.getKeyValuePairs();
    CIMPropertyArray plain;
    for (const CIMProperty& property : result.getProperties()) {
        CIMProperty bare(CIMName(property.getName()), property.getDataType());
        plain.push_back(bare.setValue(property.getValue()));
    }
    return result.setProperties(plain).setKeys(keys);
}

} // namespace cimserver::cimxml
