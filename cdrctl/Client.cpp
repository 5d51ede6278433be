#include "cdrctl/Client.hpp"

#include "cdrctl/Errors.hpp"
#include "cdrctl/Reply.hpp"
#include "cdrctl/StatusCodes.hpp"
#include "cimserver/cimxml/XmlWriter.hpp"

namespace cdrctl {

using cimserver::cimxml::Element;
using cimserver::cimxml::XmlWriter;

namespace {

/// IPARAMVALUE with what `write` puts inside.
template <class Write>
void parameter(XmlWriter& writer, std::string_view name, Write write) {
    Element element(writer, "IPARAMVALUE");
    element.attribute("NAME", name);
    write();
}

void flag(XmlWriter& writer, std::string_view name, bool value) {
    parameter(writer, name, [&] { Element(writer, "VALUE").text(value ? "TRUE" : "FALSE"); });
}

void classNameParameter(XmlWriter& writer, const std::string& name) {
    parameter(writer, "ClassName", [&] { Element(writer, "CLASSNAME").attribute("NAME", name); });
}

void writeProperty(XmlWriter& writer, const Property& property) {
    Element element(writer, "PROPERTY");
    element.attribute("NAME", property.name).attribute("TYPE", property.type);
    Element(writer, "VALUE").text(property.value.value_or(""));
}

std::vector<Property> withKeys(const Object& instance, const std::vector<Property>& changed) {
    std::vector<Property> all = changed;
    for (const Property& property : instance.properties) {
        if (property.is("Key") && property.value) {
            all.push_back(property);
        }
    }
    return all;
}

/// What an HTTP status other than 200 means, with what the server says of it.
std::string statusError(const Answer& answer) {
    const std::string number = std::to_string(answer.status);
    std::string text = "the server answered with HTTP status " + number;
    const std::string detail = answer.cimError.empty() ? answer.body.substr(0, 200) : answer.cimError;
    for (const StatusMeaning& meaning : meaningsOf(number)) {
        text += meaning.source == "HTTP" ? ": " + meaning.text + " (" + meaning.advice + ")" : "";
    }
    return text + (detail.empty() ? "" : ": " + detail);
}

} // namespace

std::string Client::namespacePath() const {
    XmlWriter writer;
    {
        const Element path(writer, "LOCALNAMESPACEPATH");
        for (const std::string_view part : cimserver::split(nameSpace_, '/')) {
            Element(writer, "NAMESPACE").attribute("NAME", part);
        }
    }
    return writer.take();
}

std::string Client::ask(const std::string& method, const std::string& object, const std::string& body) const {
    const std::string message = R"(<?xml version="1.0" encoding="utf-8" ?><CIM CIMVERSION="2.0" DTDVERSION="2.0">)"
                                R"(<MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLEREQ>)" +
                                body + "</SIMPLEREQ></MESSAGE></CIM>";
    const Answer answer = post(address_, access_,
                               {{"Content-Type", "application/xml; charset=\"utf-8\""},
                                {"CIMOperation", "MethodCall"},
                                {"CIMMethod", method},
                                {"CIMObject", object}},
                               message);
    if (answer.status == 401) {
        throw LoginError(address_.url() + (access_.user.empty() ? ": a user is needed (--user NAME)"
                                                                : ": unknown user or wrong password"));
    }
    if (answer.status != 200) {
        throw ConnectError(address_.url() + ": " + statusError(answer));
    }
    return answer.body;
}

std::string Client::operation(const std::string& name, const std::string& parameters) const {
    XmlWriter writer;
    {
        Element call(writer, "IMETHODCALL");
        call.attribute("NAME", name);
        writer.raw(namespacePath());
        writer.raw(parameters);
    }
    return ask(name, nameSpace_, writer.take());
}

Object Client::getClass(const std::string& name) const {
    XmlWriter writer;
    classNameParameter(writer, name);
    flag(writer, "LocalOnly", false);
    flag(writer, "IncludeQualifiers", true);
    return readClass(operation("GetClass", writer.take()));
}

std::vector<Object> Client::instances(const std::string& className) const {
    XmlWriter writer;
    classNameParameter(writer, className);
    flag(writer, "LocalOnly", false);
    flag(writer, "IncludeQualifiers", true);
    return readInstances(operation("EnumerateInstances", writer.take()));
}

Object Client::onlyInstance(const std::string& className) const {
    auto all = instances(className);
    if (all.empty()) {
        throw std::runtime_error(address_.url() + ": the server has no instance of " + className);
    }
    return std::move(all.front());
}

void Client::modify(const Object& instance, const std::vector<Property>& changed) const {
    const std::vector<Property> sent = withKeys(instance, changed);
    XmlWriter writer;
    parameter(writer, "ModifiedInstance", [&] {
        const Element named(writer, "VALUE.NAMEDINSTANCE");
        writer.raw(instance.nameXml);
        Element body(writer, "INSTANCE");
        body.attribute("CLASSNAME", instance.className);
        for (const Property& property : sent) {
            writeProperty(writer, property);
        }
    });
    parameter(writer, "PropertyList", [&] {
        const Element list(writer, "VALUE.ARRAY");
        for (const Property& property : sent) {
            Element(writer, "VALUE").text(property.name);
        }
    });
    requireSuccess(operation("ModifyInstance", writer.take()));
}

std::string Client::invoke(const Object& instance, const std::string& method) const {
    XmlWriter writer;
    {
        Element call(writer, "METHODCALL");
        call.attribute("NAME", method);
        const Element path(writer, "LOCALINSTANCEPATH");
        writer.raw(namespacePath());
        writer.raw(instance.nameXml);
    }
    return readReturnValue(ask(method, nameSpace_ + ":" + instance.nameText, writer.take()));
}

} // namespace cdrctl
