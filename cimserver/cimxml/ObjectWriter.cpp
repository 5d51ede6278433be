#include "cimserver/cimxml/ObjectWriter.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/NameWriter.hpp"
#include "cimserver/cimxml/ValueText.hpp"
#include "cimserver/common/Log.hpp"

#include <algorithm>
#include <limits>

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

// A "for" over an array that a function returns would copy its elements: only a constant array is read in place.

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

void warn(const std::string& text) {
    log::write(log::Level::Warning, "cimxml", text);
}

void writeReferences(XmlWriter& writer, const CIMValue& value) {
    if (!value.isArray()) {
        writeReference(writer, value.toCIMObjectPath());
        return;
    }
    const Element array(writer, "VALUE.REFARRAY");
    for (const CIMObjectPath& path : value.toCIMObjectPathArray()) {
        writeReference(writer, path);
    }
}

/// The XML of an embedded instance or class, to be written as text.
std::string embeddedText(const CIMInstance& instance) {
    XmlWriter inner;
    writeInstance(inner, instance, false);
    return inner.take();
}

std::string embeddedText(const CIMClass& cimClass) {
    XmlWriter inner;
    writeClass(inner, cimClass, ClassForm());
    return inner.take();
}

/// Like forEachText, for a value of any type but a reference.
void forEachElement(const CIMValue& value, const UseText& use) {
    const auto useAll = [&](const auto& objects) {
        for (const auto& object : objects) {
            use(embeddedText(object));
        }
    };
    const bool array = value.isArray();
    if (value.getType() == CIMDataType::EMBEDDEDINSTANCE) {
        useAll(array ? value.toCIMInstanceArray() : CIMInstanceArray(std::size_t(1), value.toCIMInstance()));
    } else if (value.getType() == CIMDataType::EMBEDDEDCLASS) {
        useAll(array ? value.toCIMClassArray() : CIMClassArray(std::size_t(1), value.toCIMClass()));
    } else {
        forEachText(value, use);
    }
}

/// Writes a value that is not NULL, of an array at most `limit` elements. False when a date-time in it is none: a
/// scalar is not written then.
bool writeElements(XmlWriter& writer, const CIMValue& value, std::size_t limit) {
    const CIMDataType::Type type = value.getType();
    if (type == CIMDataType::REFERENCE) {
        writeReferences(writer, value);
        return true;
    }
    if (!value.isArray() && type < CIMDataType::REFERENCE) {
        TextBuffer buffer;
        const auto text = scalarText(value, buffer);
        if (text) {
            writer.element("VALUE", *text);
        }
        return text.has_value();
    }
    if (!value.isArray()) {
        forEachElement(value, [&](std::optional<std::string_view> text) { writer.element("VALUE", *text); });
        return true;
    }
    const Element array(writer, "VALUE.ARRAY");
    bool valid = true;
    forEachElement(value, [&writer, &valid, left = limit](std::optional<std::string_view> text) mutable {
        if (left == 0) {
            return;
        }
        --left;
        if (text) {
            writer.element("VALUE", *text);
        } else {
            valid = false;
            Element(writer, "VALUE.NULL");
        }
    });
    return valid;
}

void warnOfDateTime(const std::string& name) {
    warn(name + ": no valid date-time, sent as NULL");
}

void warnOfCharacters(const std::string& name) {
    warn(name + ": characters that XML does not allow were replaced");
}

/// False for NULL and for an invalid date-time, which is logged.
bool hasText(const CIMValue& value, std::string_view name) {
    bool valid = static_cast<bool>(value);
    if (valid && value.getType() == CIMDataType::DATETIME && !value.isArray()) {
        TextBuffer buffer;
        valid = scalarText(value, buffer).has_value();
        if (!valid) {
            warnOfDateTime(std::string(name));
        }
    }
    return valid;
}

/// What determines a property's element and TYPE: the value if there is one, because a provider may deliver another
/// type than it declares.
struct Shape {
    CIMDataType::Type type;
    bool array;
};

Shape shapeOf(const CIMProperty& property, const CIMValue& value) {
    if (value) {
        return {value.getType(), value.isArray()};
    }
    const CIMDataType& declared = CIMAccess::dataType(property);
    return declared ? Shape{declared.getType(), declared.isArrayType()} : Shape{CIMDataType::CIMNULL, false};
}

bool canBeProperty(const Shape& shape) {
    const bool typed = shape.type > CIMDataType::CIMNULL && shape.type < CIMDataType::MAXDATATYPE;
    return typed && !(shape.type == CIMDataType::REFERENCE && shape.array);
}

std::string_view propertyElement(const Shape& shape) {
    if (shape.type == CIMDataType::REFERENCE) {
        return "PROPERTY.REFERENCE";
    }
    return shape.array ? "PROPERTY.ARRAY" : "PROPERTY";
}

void writeEmbeddedObject(XmlWriter& writer, CIMDataType::Type type, const CIMQualifierArray& qualifiers) {
    bool instance = type == CIMDataType::EMBEDDEDINSTANCE;
    bool object = type == CIMDataType::EMBEDDEDCLASS;
    if (type == CIMDataType::STRING) {
        for (const CIMQualifier& qualifier : qualifiers) {
            instance = instance || qualifier.getName().equalsIgnoreCase("EmbeddedInstance");
            object = object || qualifier.getName().equalsIgnoreCase("EmbeddedObject");
        }
    }
    if (instance || object) {
        writer.attribute("EmbeddedObject", instance ? "instance" : "object");
    }
}

void writeName(Element& element, const CIMName& name) {
    if (CIMAccess::isIdentifier(name)) {
        element.plainAttribute("NAME", view(name));
    } else {
        element.attribute("NAME", view(name));
    }
}

void writePropertyAttributes(XmlWriter& writer, Element& element, const CIMProperty& property, const Shape& shape,
                             const ObjectForm& form) {
    const CIMDataType& declared = CIMAccess::dataType(property);
    writeName(element, CIMAccess::name(property));
    if (shape.type == CIMDataType::REFERENCE) {
        const String target = declared ? declared.getRefClassName() : String();
        element.attributeIf(!target.empty(), "REFERENCECLASS", view(target));
    } else {
        element.plainAttribute("TYPE", typeName(shape.type));
        if (shape.array && declared && declared.isArrayType() && declared.getSize() > 0) {
            element.attribute("ARRAYSIZE", std::to_string(declared.getSize()));
        }
        writeEmbeddedObject(writer, shape.type, CIMAccess::qualifiers(property));
    }
    const String origin = form.classOrigin ? property.getOriginClass() : String();
    element.attributeIf(!origin.empty(), "CLASSORIGIN", view(origin));
    element.attributeIf(property.getPropagated(), "PROPAGATED", "true");
}

/// The length to which ValueMap and Values are cut, for clients that pair them up.
std::size_t pairLimit(const CIMQualifierArray& qualifiers) {
    std::size_t limit = kNoLimit;
    std::size_t found = 0;
    for (const CIMQualifier& qualifier : qualifiers) {
        const String name = qualifier.getName();
        const CIMValue value = qualifier.getValue();
        if (value && value.isArray() && (name.equalsIgnoreCase("ValueMap") || name.equalsIgnoreCase("Values"))) {
            limit = std::min<std::size_t>(limit, value.getArraySize());
            ++found;
        }
    }
    return found == 2 ? limit : kNoLimit;
}

void writeQualifier(XmlWriter& writer, const CIMQualifier& qualifier, std::size_t limit) {
    const CIMValue value = qualifier.getValue();
    const CIMDataType declared = qualifier.getDefaults() ? qualifier.getDefaults().getDataType() : CIMDataType();
    Element element(writer, "QUALIFIER");
    element.attribute("NAME", view(qualifier.getName()))
        .attribute("TYPE", typeName(value      ? value.getType()
                                    : declared ? declared.getType()
                                               : CIMDataType::STRING))
        .attributeIf(qualifier.getPropagated(), "PROPAGATED", "true")
        .attributeIf(qualifier.hasFlavor(CIMFlavor(CIMFlavor::DISABLEOVERRIDE)), "OVERRIDABLE", "false")
        .attributeIf(qualifier.hasFlavor(CIMFlavor(CIMFlavor::RESTRICTED)), "TOSUBCLASS", "false")
        .attributeIf(qualifier.hasFlavor(CIMFlavor(CIMFlavor::TRANSLATE)), "TRANSLATABLE", "true");
    if (value && value.getType() != CIMDataType::REFERENCE) {
        writeElements(writer, value, limit);
    }
}

void writeQualifiers(XmlWriter& writer, const CIMQualifierArray& qualifiers, bool withPropagated) {
    if (qualifiers.empty()) {
        return;
    }
    const std::size_t limit = pairLimit(qualifiers);
    for (const CIMQualifier& qualifier : qualifiers) {
        if (withPropagated || !qualifier.getPropagated()) {
            const String name = qualifier.getName();
            const bool paired = name.equalsIgnoreCase("ValueMap") || name.equalsIgnoreCase("Values");
            writeQualifier(writer, qualifier, paired ? limit : kNoLimit);
        }
    }
}

std::string_view parameterElement(const CIMDataType& type) {
    if (type.isReferenceType()) {
        return type.isArrayType() ? "PARAMETER.REFARRAY" : "PARAMETER.REFERENCE";
    }
    return type.isArrayType() ? "PARAMETER.ARRAY" : "PARAMETER";
}

void writeParameter(XmlWriter& writer, const CIMParameter& parameter, const ObjectForm& form) {
    const CIMDataType type = parameter.getType();
    const bool sized = type.isArrayType() && type.getSize() > 0;
    Element element(writer, parameterElement(type));
    element.attribute("NAME", view(parameter.getName()));
    if (type.isReferenceType()) {
        element.attributeIf(!type.getRefClassName().empty(), "REFERENCECLASS", view(type.getRefClassName()));
    } else {
        element.attribute("TYPE", typeName(type.getType()));
    }
    element.attributeIf(sized, "ARRAYSIZE", std::to_string(type.getSize()));
    if (form.qualifiers) {
        writeQualifiers(writer, parameter.getQualifiers(), true);
    }
}

void writeMethod(XmlWriter& writer, const CIMMethod& method, const ObjectForm& form) {
    const String origin = method.getOriginClass();
    Element element(writer, "METHOD");
    element.attribute("NAME", view(method.getName()))
        .attribute("TYPE", typeName(method.getReturnType().getType()))
        .attributeIf(form.classOrigin && !origin.empty(), "CLASSORIGIN", view(origin))
        .attributeIf(method.getPropagated(), "PROPAGATED", "true");
    if (form.qualifiers) {
        writeQualifiers(writer, method.getQualifiers(), true);
    }
    const CIMParameterArray parameters = method.getParameters();
    for (const CIMParameter& parameter : parameters) {
        writeParameter(writer, parameter, form);
    }
}

struct ScopeName {
    CIMScope::Scope scope;
    const char* attribute;
};

constexpr ScopeName kScopeNames[] = {
    {CIMScope::CLASS, "CLASS"},           {CIMScope::ASSOCIATION, "ASSOCIATION"}, {CIMScope::REFERENCE, "REFERENCE"},
    {CIMScope::PROPERTY, "PROPERTY"},     {CIMScope::METHOD, "METHOD"},           {CIMScope::PARAMETER, "PARAMETER"},
    {CIMScope::INDICATION, "INDICATION"},
};

void writeScope(XmlWriter& writer, const CIMQualifierType& declaration) {
    const bool any = declaration.hasScope(CIMScope(CIMScope::ANY));
    Element element(writer, "SCOPE");
    for (const ScopeName& known : kScopeNames) {
        element.attributeIf(any || declaration.hasScope(CIMScope(known.scope)), known.attribute, "true");
    }
}

} // namespace

void writeValue(XmlWriter& writer, const CIMValue& value, std::string_view name) {
    const std::size_t replaced = writer.replaced();
    if (value && !writeElements(writer, value, kNoLimit)) {
        warnOfDateTime(std::string(name));
    }
    if (writer.replaced() != replaced) {
        warnOfCharacters(std::string(name));
    }
}

void writeProperty(XmlWriter& writer, const CIMProperty& property, std::string_view owner, const ObjectForm& form) {
    const CIMValue& value = CIMAccess::value(property);
    const Shape shape = shapeOf(property, value);
    const auto name = [&] { return std::string(owner) + "." + toStd(property.getName()); };
    if (!canBeProperty(shape)) {
        warn(name() + ": left out, it has neither a type nor a value that can be sent");
        return;
    }
    const std::size_t replaced = writer.replaced();
    Element element(writer, propertyElement(shape));
    writePropertyAttributes(writer, element, property, shape, form);
    if (form.qualifiers && !CIMAccess::qualifiers(property).empty()) {
        writeQualifiers(writer, CIMAccess::qualifiers(property), true);
    }
    if (value && !writeElements(writer, value, kNoLimit)) {
        warnOfDateTime(name());
    }
    if (writer.replaced() != replaced) {
        warnOfCharacters(name());
    }
}

void writeInstance(XmlWriter& writer, const CIMInstance& instance, bool classOrigin) {
    const String className = instance.getClassName();
    const std::string_view owner = view(className);
    Element element(writer, "INSTANCE");
    element.attribute("CLASSNAME", owner);
    writeQualifiers(writer, instance.getQualifiers(), true);
    for (const CIMProperty& property : CIMAccess::properties(instance)) {
        writeProperty(writer, property, owner, ObjectForm{true, classOrigin});
    }
}

void writeParamValue(XmlWriter& writer, std::string_view name, const CIMValue& value) {
    if (!hasText(value, name)) {
        return;
    }
    Element element(writer, "PARAMVALUE");
    element.attribute("NAME", name).attribute("PARAMTYPE", typeName(value.getType()));
    writeEmbeddedObject(writer, value.getType(), CIMQualifierArray());
    writeValue(writer, value, name);
}

void writeReturnValue(XmlWriter& writer, const CIMValue& value) {
    constexpr std::string_view kName = "return value";
    if (!hasText(value, kName)) {
        return;
    }
    if (value.isArray()) {
        throw CimError(Status::Failed, "the method returned an array");
    }
    Element element(writer, "RETURNVALUE");
    writeEmbeddedObject(writer, value.getType(), CIMQualifierArray());
    element.attribute("PARAMTYPE", typeName(value.getType()));
    writeValue(writer, value, kName);
}

void writeClass(XmlWriter& writer, const CIMClass& cimClass, const ClassForm& form) {
    const std::string name = toStd(cimClass.getName());
    const String superClass = cimClass.getSuperClass();
    Element element(writer, "CLASS");
    element.attribute("NAME", name).attributeIf(!superClass.empty(), "SUPERCLASS", view(superClass));
    if (form.object.qualifiers) {
        writeQualifiers(writer, cimClass.getQualifiers(), !form.localOnly);
    }
    for (const CIMProperty& property : CIMAccess::properties(cimClass)) {
        if (!(form.localOnly && property.getPropagated()) && cimom::isWanted(form.propertyList, property.getName())) {
            writeProperty(writer, property, name, form.object);
        }
    }
    const CIMMethodArray methods = cimClass.getAllMethods();
    for (const CIMMethod& method : methods) {
        if (!(form.localOnly && method.getPropagated())) {
            writeMethod(writer, method, form.object);
        }
    }
}

void writeQualifierDeclaration(XmlWriter& writer, const CIMQualifierType& declaration) {
    const CIMDataType type = declaration.getDataType();
    Element element(writer, "QUALIFIER.DECLARATION");
    element.attribute("NAME", view(declaration.getName()))
        .attribute("TYPE", typeName(type.getType()))
        .attribute("ISARRAY", type.isArrayType() ? "true" : "false")
        .attributeIf(type.isArrayType() && type.getSize() > 0, "ARRAYSIZE", std::to_string(type.getSize()))
        .attributeIf(declaration.hasFlavor(CIMFlavor(CIMFlavor::DISABLEOVERRIDE)), "OVERRIDABLE", "false")
        .attributeIf(declaration.hasFlavor(CIMFlavor(CIMFlavor::RESTRICTED)), "TOSUBCLASS", "false")
        .attributeIf(declaration.hasFlavor(CIMFlavor(CIMFlavor::TRANSLATE)), "TRANSLATABLE", "true");
    writeScope(writer, declaration);
    writeValue(writer, declaration.getDefaultValue(), toStd(declaration.getName()));
}

} // namespace cimserver::cimxml
