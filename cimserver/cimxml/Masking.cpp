#include "cimserver/cimxml/Masking.hpp"

#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/cimxml/WellFormedness.hpp"
#include "cimserver/common/Text.hpp"

#include <pugixml.hpp>

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>

namespace cimserver::cimxml {
namespace {

constexpr const char* kMask = "***";
constexpr std::string_view kSecret = "password";
constexpr unsigned kFlags = pugi::format_raw | pugi::format_no_declaration;

bool isSecret(std::string_view text) {
    return containsIgnoringCase(text, kSecret);
}

/// An embedded object is XML inside a text, maybe with another one in it. A name in it that is written with character
/// references, or interrupted by a comment, a CDATA section or an instruction around the inner one, could be anything.
bool isSecretObject(std::string_view text) {
    const auto holds = [text](std::string_view part) { return text.find(part) != std::string_view::npos; };
    return holds("<") && (isSecret(text) || holds("&#") || holds("amp;#") || holds("<!") || holds("lt;!") ||
                          text.find("<?", 1) != std::string_view::npos || holds("lt;?"));
}

/// The element's name is compared in any case: a request with a wrong one is refused, but dumped.
bool isNamedSecret(pugi::xml_node element) {
    const std::string_view name = element.name();
    const bool named = equalsIgnoringCase(name.substr(0, 8), "PROPERTY") || equalsIgnoringCase(name, "KEYBINDING") ||
                       equalsIgnoringCase(name, "PARAMVALUE") || equalsIgnoringCase(name, "IPARAMVALUE");
    return named && std::any_of(element.attributes_begin(), element.attributes_end(),
                                [](pugi::xml_attribute one) { return isSecret(one.value()); });
}

bool isParameter(pugi::xml_node element, std::string_view name) {
    return equalsIgnoringCase(element.name(), "IPARAMVALUE") &&
           equalsIgnoringCase(element.attribute("NAME").value(), name);
}

/// Elements with the value of GetProperty and SetProperty, whose property is named elsewhere.
bool isNamedElsewhere(pugi::xml_node element) {
    return std::string_view(element.name()) == "IRETURNVALUE" || isParameter(element, "NewValue");
}

/// True when a parameter PropertyName names a secret.
bool namesSecretProperty(pugi::xml_node root) {
    return static_cast<bool>(root.find_node([](pugi::xml_node node) {
        return isParameter(node, "PropertyName") &&
               node.find_node([](pugi::xml_node inner) { return isSecret(inner.value()) || isSecret(textOf(inner)); });
    }));
}

/// Masks the secrets in and below the element; false when there was none.
bool mask(pugi::xml_node element, bool valuesToo) {
    const bool secret = isNamedSecret(element) || (valuesToo && isNamedElsewhere(element));
    if (secret || isSecretObject(textOf(element))) {
        element.remove_children();
        element.append_child(pugi::node_pcdata).set_value(kMask);
        return true;
    }
    bool masked = false;
    for (pugi::xml_node child = firstElement(element); child; child = nextElement(child)) {
        masked = mask(child, valuesToo) || masked;
    }
    return masked;
}

/// Comments, processing instructions and document types are not in the tree, and may hold anything; character
/// references may hide a URL, whose user and password the dump takes out.
bool holdsMore(std::string_view xml) {
    return xml.find("<!") != std::string_view::npos || xml.find("<?", 1) != std::string_view::npos ||
           xml.find("&#") != std::string_view::npos;
}

std::string maskedText(const std::string& xml, const XmlDocument& document, bool valuesToo) {
    if (!mask(document.root(), valuesToo) && !holdsMore(xml)) {
        return xml;
    }
    std::ostringstream text;
    document.root().print(text, "", kFlags, pugi::encoding_utf8);
    return text.str();
}

} // namespace

bool holdsSecret(std::string_view text) {
    return isSecret(text) || isSecretObject(text);
}

std::string withoutSecrets(const std::string& description) {
    const auto at = folded(description).find(kSecret);
    return at == std::string::npos ? description : description.substr(0, at + kSecret.size()) + kMask;
}

OpenWBEM::CIMValue valueWithoutSecret(const OpenWBEM::String& name, const OpenWBEM::CIMValue& value) {
    using namespace OpenWBEM;
    if (!value) {
        return value;
    }
    const auto type = value.getType();
    const bool text = type == CIMDataType::STRING;
    const bool object = type == CIMDataType::EMBEDDEDINSTANCE || type == CIMDataType::EMBEDDEDCLASS;
    if (!isSecret(view(name)) && !(text && isSecretObject(view(value.toString()))) &&
        !(object && isSecret(view(value.toString())))) {
        return value;
    }
    return text && !value.isArray() ? CIMValue(kMask) : CIMValue(CIMNULL);
}

OpenWBEM::CIMInstance withoutSecretValues(OpenWBEM::CIMInstance instance) {
    using namespace OpenWBEM;
    const CIMPropertyArray keys = instance.getKeyValuePairs();
    CIMPropertyArray properties = instance.getProperties();
    for (CIMProperty& property : properties) {
        const CIMValue value = property.getValue();
        if (value) {
            const CIMDataType type = property.getDataType();
            property.setValue(valueWithoutSecret(property.getName(), value));
            property.setDataType(type);
        }
    }
    return instance.setProperties(properties).setKeys(keys);
}

http::ShownBodies maskedBodies(const http::Request& request, const http::Response& response, const XmlLimits& limits) {
    http::ShownBodies bodies;
    bool valuesToo = true;
    try {
        if (!request.body.empty()) {
            const XmlDocument document(request.body, limits);
            valuesToo = namesSecretProperty(document.root());
            bodies.request = maskedText(request.body, document, valuesToo);
        }
    } catch (const HttpError&) {
        bodies.request = kMask;
    }
    const bool isXml = response.body.find('<') != std::string::npos;
    try {
        bodies.response =
            isXml ? maskedText(response.body, XmlDocument(response.body, kUnlimited), valuesToo) : response.body;
    } catch (const HttpError&) {
        bodies.response = kMask;
    }
    return bodies;
}

} // namespace cimserver::cimxml
