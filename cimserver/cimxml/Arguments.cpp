#include "cimserver/cimxml/Arguments.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/ValueText.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"
#include "cimserver/common/Text.hpp"

#include <algorithm>

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

std::optional<std::uint32_t> parseNumber(pugi::xml_node element) {
    const auto value = parseScalar(CIMDataType::UINT32, textOf(element));
    return value ? std::optional<std::uint32_t>(value->toUInt32()) : std::nullopt;
}

/// What is wrong with the element as a parameter of that kind, or an empty text.
std::string fault(pugi::xml_node element, ParameterKind kind) {
    const std::string_view name = element.name();
    const auto unless = [](bool right, const char* expected) {
        return right ? std::string() : "is not " + std::string(expected);
    };
    switch (kind) {
    case ParameterKind::Flag:
        return unless(name == "VALUE" && parseBoolean(textOf(element)), "a boolean");
    case ParameterKind::Text:
        return unless(name == "VALUE", "a single text");
    case ParameterKind::TextArray:
        return unless(name == "VALUE.ARRAY" && !element.child("VALUE.NULL"), "a list of texts");
    case ParameterKind::Number:
        return unless(name == "VALUE" && parseNumber(element), "a uint32");
    case ParameterKind::ClassName:
        return unless(name == "CLASSNAME", "a class name");
    case ParameterKind::InstanceName:
        return unless(name == "INSTANCENAME", "an instance name");
    case ParameterKind::ObjectName:
        return unless(name == "CLASSNAME" || name == "INSTANCENAME", "a class or instance name");
    case ParameterKind::Instance:
        return unless(name == "INSTANCE", "an instance");
    case ParameterKind::NamedInstance:
        return unless(name == "VALUE.NAMEDINSTANCE", "an instance with its name");
    case ParameterKind::Value:
        break;
    }
    return unless(name.substr(0, 5) == "VALUE" && name != "VALUE.NAMEDINSTANCE", "a value");
}

[[noreturn]] void refuse(std::string_view name, const std::string& what) {
    throw CimError(Status::InvalidParameter, "parameter " + quote(name) + " " + what);
}

} // namespace

Arguments::Arguments(pugi::xml_node call, const std::vector<Parameter>& declared) : declared_(declared) {
    for (const pugi::xml_node parameterElement : call.children("IPARAMVALUE")) {
        take(parameterElement);
    }
    requireAll();
}

void Arguments::take(pugi::xml_node parameterElement) {
    const std::string_view name = parameterElement.attribute("NAME").value();
    const auto parameter = std::find_if(declared_.begin(), declared_.end(),
                                        [&](const Parameter& one) { return equalsIgnoringCase(one.name, name); });
    if (parameter == declared_.end()) {
        refuse(name, "is unknown");
    }
    if (findParameter(parameter->name)) {
        refuse(parameter->name, "is given twice");
    }
    const pugi::xml_node element = firstElement(parameterElement);
    const std::string wrong = element ? fault(element, parameter->kind) : std::string();
    if (!wrong.empty()) {
        refuse(parameter->name, wrong);
    }
    given_.push_back({&*parameter, parameterElement});
}

void Arguments::requireAll() const {
    for (const Parameter& parameter : declared_) {
        if (parameter.presence == Presence::Required && !has(parameter.name)) {
            refuse(parameter.name, "is missing");
        }
    }
}

pugi::xml_node Arguments::findParameter(std::string_view name) const {
    for (const Given& one : given_) {
        if (one.parameter->name == name) {
            return one.parameterElement;
        }
    }
    return {};
}

pugi::xml_node Arguments::element(std::string_view name) const {
    const pugi::xml_node parameterElement = findParameter(name);
    return parameterElement ? firstElement(parameterElement) : parameterElement;
}

bool Arguments::flag(std::string_view name) const {
    if (const pugi::xml_node given = element(name)) {
        return parseBoolean(textOf(given)).value_or(false);
    }
    return std::any_of(declared_.begin(), declared_.end(),
                       [&](const Parameter& one) { return one.name == name && one.presence == Presence::DefaultTrue; });
}

String Arguments::text(std::string_view name) const {
    return toCim(textOf(element(name)));
}

std::optional<StringArray> Arguments::texts(std::string_view name) const {
    const pugi::xml_node given = element(name);
    if (!given) {
        return std::nullopt;
    }
    StringArray list;
    for (const pugi::xml_node item : given.children("VALUE")) {
        list.push_back(toCim(textOf(item)));
    }
    return list;
}

std::optional<std::uint32_t> Arguments::number(std::string_view name) const {
    const pugi::xml_node given = element(name);
    return given ? parseNumber(given) : std::nullopt;
}

String Arguments::className(std::string_view name) const {
    return {element(name).attribute("NAME").value()};
}

} // namespace cimserver::cimxml
