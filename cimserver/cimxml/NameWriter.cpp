#include "cimserver/cimxml/NameWriter.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/ValueText.hpp"
#include "cimserver/common/Text.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

void writeNameSpace(XmlWriter& writer, const String& nameSpace) {
    const Element path(writer, "LOCALNAMESPACEPATH");
    for (const std::string_view part : split(view(nameSpace), '/')) {
        Element(writer, "NAMESPACE").attribute("NAME", part);
    }
}

void writeNameSpacePath(XmlWriter& writer, std::string_view host, const String& nameSpace) {
    const Element path(writer, "NAMESPACEPATH");
    Element(writer, "HOST").text(host);
    writeNameSpace(writer, nameSpace);
}

void writeClassName(XmlWriter& writer, const String& className) {
    Element(writer, "CLASSNAME").attribute("NAME", view(className));
}

/// INSTANCENAME or CLASSNAME: a path without keys names a class.
void writeLocalName(XmlWriter& writer, const CIMObjectPath& path) {
    if (path.isClassPath()) {
        writeClassName(writer, path.getClassName());
    } else {
        writeInstanceName(writer, path);
    }
}

std::string_view keyValueType(CIMDataType::Type type) {
    if (type == CIMDataType::BOOLEAN) {
        return "boolean";
    }
    return CIMDataType::isNumericType(type) ? "numeric" : "string";
}

void writeKeyBinding(XmlWriter& writer, const CIMProperty& key, const String& className) {
    const CIMValue& value = CIMAccess::value(key);
    if (!value || value.isArray()) {
        throw CimError(Status::Failed, "key " + toStd(key.getName()) + " of " + toStd(className) + " has no value");
    }
    Element binding(writer, "KEYBINDING");
    binding.attribute("NAME", view(CIMAccess::name(key)));
    if (value.getType() == CIMDataType::REFERENCE) {
        writeReference(writer, value.toCIMObjectPath());
        return;
    }
    TextBuffer buffer;
    const auto text = scalarText(value, buffer);
    if (!text) {
        throw CimError(Status::Failed, "key " + toStd(key.getName()) + " of " + toStd(className) + " is no date-time");
    }
    Element(writer, "KEYVALUE")
        .attribute("VALUETYPE", keyValueType(value.getType()))
        .attribute("TYPE", typeName(value.getType()))
        .text(*text);
}

} // namespace

void writeInstanceName(XmlWriter& writer, const CIMObjectPath& path) {
    Element name(writer, "INSTANCENAME");
    name.attribute("CLASSNAME", view(path.getClassName()));
    for (const CIMProperty& key : CIMAccess::keys(path)) {
        writeKeyBinding(writer, key, path.getClassName());
    }
}

void writeInstancePath(XmlWriter& writer, const CIMObjectPath& path, std::string_view host, const String& nameSpace) {
    const Element full(writer, "INSTANCEPATH");
    writeNameSpacePath(writer, host, path.getNameSpace().empty() ? nameSpace : path.getNameSpace());
    writeInstanceName(writer, path);
}

void writeClassPath(XmlWriter& writer, const String& className, std::string_view host, const String& nameSpace) {
    const Element full(writer, "CLASSPATH");
    writeNameSpacePath(writer, host, nameSpace);
    writeClassName(writer, className);
}

CIMObjectPath nameOfInstance(const CIMInstance& instance, const String& nameSpace) {
    return {nameSpace, instance};
}

void writeReference(XmlWriter& writer, const CIMObjectPath& path) {
    const Element reference(writer, "VALUE.REFERENCE");
    if (path.getNameSpace().empty()) {
        writeLocalName(writer, path);
    } else {
        const Element local(writer, path.isClassPath() ? "LOCALCLASSPATH" : "LOCALINSTANCEPATH");
        writeNameSpace(writer, path.getNameSpace());
        writeLocalName(writer, path);
    }
}

} // namespace cimserver::cimxml
