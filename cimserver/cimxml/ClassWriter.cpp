#include "ClassWriter.hpp"

#include "Characters.hpp"
#include "ValueText.hpp"

#include <algorithm>

namespace cimserver::cimxml {
namespace {

using OpenWBEM::CIMClass;
using OpenWBEM::CIMDataType;
using OpenWBEM::CIMFlavor;
using OpenWBEM::CIMMethod;
using OpenWBEM::CIMParameter;
using OpenWBEM::CIMProperty;
using OpenWBEM::CIMQualifierType;
using OpenWBEM::CIMScope;
using OpenWBEM::String;

bool listed(const OpenWBEM::StringArray* list, const String& name) {
    return list == nullptr ||
           std::any_of(list->begin(), list->end(), [&](const String& one) { return one.equalsIgnoreCase(name); });
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
    for (const CIMParameter& parameter : method.getParameters()) {
        writeParameter(writer, parameter, form);
    }
}

struct ScopeName {
    CIMScope::Scope scope;
    const char* attribute;
};

constexpr ScopeName scopeNames[] = {
    {CIMScope::CLASS, "CLASS"},           {CIMScope::ASSOCIATION, "ASSOCIATION"}, {CIMScope::REFERENCE, "REFERENCE"},
    {CIMScope::PROPERTY, "PROPERTY"},     {CIMScope::METHOD, "METHOD"},           {CIMScope::PARAMETER, "PARAMETER"},
    {CIMScope::INDICATION, "INDICATION"},
};

void writeScope(XmlWriter& writer, const CIMQualifierType& declaration) {
    const bool any = declaration.hasScope(CIMScope(CIMScope::ANY));
    Element element(writer, "SCOPE");
    for (const ScopeName& known : scopeNames) {
        element.attributeIf(any || declaration.hasScope(CIMScope(known.scope)), known.attribute, "true");
    }
}

} // namespace

void writeClass(XmlWriter& writer, const CIMClass& cimClass, const ClassForm& form) {
    const std::string name = toStd(cimClass.getName());
    const String superClass = cimClass.getSuperClass();
    Element element(writer, "CLASS");
    element.attribute("NAME", name).attributeIf(!superClass.empty(), "SUPERCLASS", view(superClass));
    if (form.object.qualifiers) {
        writeQualifiers(writer, cimClass.getQualifiers(), !form.localOnly);
    }
    for (const CIMProperty& property : cimClass.getAllProperties()) {
        if (!(form.localOnly && property.getPropagated()) && listed(form.propertyList, property.getName())) {
            writeProperty(writer, property, name, form.object);
        }
    }
    for (const CIMMethod& method : cimClass.getAllMethods()) {
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
    writeValue(writer, declaration.getDefaultValue());
}

} // namespace cimserver::cimxml
