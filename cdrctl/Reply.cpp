#include "cdrctl/Reply.hpp"

#include "cdrctl/Errors.hpp"
#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/cimxml/WellFormedness.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"

#include <cstdio>
#include <sstream>

namespace cdrctl {

using namespace cimserver::cimxml;

namespace {

constexpr XmlLimits kLimits{64, 500000, 32};

/// A reply's document and the IMETHODRESPONSE or METHODRESPONSE in it.
class ReplyDocument {
  public:
    explicit ReplyDocument(const std::string& body) try : document_(body, kLimits) {
        response_ = firstElement(document_.root().child("MESSAGE").child("SIMPLERSP"));
        if (!response_) {
            throw ConnectError("the server's answer is not a CIM-XML reply");
        }
        if (const pugi::xml_node error = response_.child("ERROR")) {
            throw CimFault(error.attribute("CODE").as_int(1), error.attribute("DESCRIPTION").value());
        }
    } catch (const HttpError& error) {
        throw ConnectError(std::string("the server's answer is not XML: ") + error.what());
    }

    pugi::xml_node response() const { return response_; }
    pugi::xml_node result() const { return response_.child("IRETURNVALUE"); }

  private:
    XmlDocument document_;
    pugi::xml_node response_;
};

std::vector<std::string> textsOf(pugi::xml_node parent) {
    std::vector<std::string> texts;
    for (const pugi::xml_node value : parent.child("VALUE.ARRAY").children("VALUE")) {
        texts.push_back(textOf(value));
    }
    if (const pugi::xml_node value = parent.child("VALUE")) {
        texts.push_back(textOf(value));
    }
    return texts;
}

Qualifiers readQualifiers(pugi::xml_node parent) {
    Qualifiers qualifiers;
    for (const pugi::xml_node qualifier : parent.children("QUALIFIER")) {
        qualifiers[qualifier.attribute("NAME").value()] = textsOf(qualifier);
    }
    return qualifiers;
}

Property readProperty(pugi::xml_node element) {
    Property property;
    property.name = element.attribute("NAME").value();
    property.type = element.attribute("TYPE").value();
    property.qualifiers = readQualifiers(element);
    if (element.child("VALUE") || element.child("VALUE.ARRAY")) {
        property.value.emplace();
        for (const std::string& text : textsOf(element)) {
            *property.value += (property.value->empty() ? "" : ", ") + text;
        }
    }
    return property;
}

/// CLASS or INSTANCE.
Object readObject(pugi::xml_node element, const char* nameAttribute) {
    Object object;
    object.className = element.attribute(nameAttribute).value();
    object.qualifiers = readQualifiers(element);
    for (const pugi::xml_node child : element.children()) {
        const std::string_view kind = child.name();
        if (kind == "PROPERTY" || kind == "PROPERTY.ARRAY") {
            object.properties.push_back(readProperty(child));
        }
    }
    return object;
}

std::string markupOf(pugi::xml_node node) {
    std::ostringstream text;
    node.print(text, "", pugi::format_raw);
    return text.str();
}

/// The name as the header field CIMObject has it: what a header may not hold is percent-encoded.
std::string nameTextOf(pugi::xml_node name) {
    std::string text = name.attribute("CLASSNAME").value();
    char separator = '.';
    for (const pugi::xml_node binding : name.children("KEYBINDING")) {
        const pugi::xml_node value = binding.child("KEYVALUE");
        const bool quoted = std::string_view(value.attribute("VALUETYPE").value()) == "string";
        std::string escaped;
        for (const char c : textOf(value)) {
            escaped += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
        }
        text += separator + std::string(binding.attribute("NAME").value()) + "=";
        text += quoted ? '"' + escaped + '"' : escaped;
        separator = ',';
    }
    std::string encoded;
    for (const char c : text) {
        char code[4];
        std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        encoded += c > ' ' && c < 0x7F && c != '%' ? std::string(1, c) : code;
    }
    return encoded;
}

/// The name tells which properties are keys, whether or not the server sends the qualifier.
void markKeys(Object& instance, pugi::xml_node name) {
    for (const pugi::xml_node binding : name.children("KEYBINDING")) {
        for (Property& property : instance.properties) {
            if (cimserver::equalsIgnoringCase(property.name, binding.attribute("NAME").value())) {
                property.qualifiers["Key"] = {"TRUE"};
            }
        }
    }
}

} // namespace

Object readClass(const std::string& body) {
    const ReplyDocument reply(body);
    const pugi::xml_node found = reply.result().child("CLASS");
    if (!found) {
        throw ConnectError("the server's answer holds no class");
    }
    return readObject(found, "NAME");
}

std::vector<Object> readInstances(const std::string& body) {
    const ReplyDocument reply(body);
    std::vector<Object> instances;
    for (const pugi::xml_node named : reply.result().children("VALUE.NAMEDINSTANCE")) {
        const pugi::xml_node name = named.child("INSTANCENAME");
        Object instance = readObject(named.child("INSTANCE"), "CLASSNAME");
        instance.nameXml = markupOf(name);
        instance.nameText = nameTextOf(name);
        markKeys(instance, name);
        instances.push_back(std::move(instance));
    }
    return instances;
}

std::string readReturnValue(const std::string& body) {
    const ReplyDocument reply(body);
    return textOf(reply.response().child("RETURNVALUE").child("VALUE"));
}

void requireSuccess(const std::string& body) {
    const ReplyDocument reply(body);
}

} // namespace cdrctl
