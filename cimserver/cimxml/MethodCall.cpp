#include "MethodCall.hpp"

#include "Characters.hpp"
#include "Errors.hpp"
#include "ObjectReader.hpp"
#include "ObjectWriter.hpp"

namespace cimserver::cimxml {
namespace {

using OpenWBEM::CIMMethod;
using OpenWBEM::CIMParameter;
using OpenWBEM::CIMParameterArray;
using OpenWBEM::CIMParamValue;
using OpenWBEM::CIMParamValueArray;
using OpenWBEM::String;

[[noreturn]] void refuse(const String& parameter, const char* what) {
    throw OperationError(InvalidParameter, "parameter " + quote(view(parameter)) + " " + what);
}

const CIMParameter& requireInput(const CIMParameterArray& inputs, const String& name) {
    for (const CIMParameter& one : inputs) {
        if (one.getName().equalsIgnoreCase(name)) {
            return one;
        }
    }
    refuse(name, "is unknown");
}

void requireNew(const CIMParamValueArray& present, const String& name) {
    for (const CIMParamValue& one : present) {
        if (one.getName().equalsIgnoreCase(name)) {
            refuse(name, "is given twice");
        }
    }
}

CIMParamValueArray readParameters(const RequestMessage& message, const CIMMethod& method, const ObjectReader& reader) {
    const CIMParameterArray inputs = method.getINParameters();
    CIMParamValueArray values;
    for (const pugi::xml_node element : message.call().children("PARAMVALUE")) {
        const String name(element.attribute("NAME").value());
        const CIMParameter& declared = requireInput(inputs, name);
        requireNew(values, name);
        values.push_back(CIMParamValue(name, reader.value(element, declared.getType(), view(name))));
    }
    return values;
}

} // namespace

void callMethod(operations::Cimom& cimom, const operations::RequestContext& context, const RequestMessage& message,
                AuditRecord& audit, XmlWriter& reply) {
    const String nameSpace = toCim(message.nameSpace());
    const String name = toCim(message.name());
    const ObjectReader reader(cimom, nameSpace);
    const bool onClass = std::string_view(message.target().name()) == "CLASSNAME";
    // A method is called on an object: without its class, it is the object that is not found.
    const String className(message.target().attribute(onClass ? "NAME" : "CLASSNAME").value());
    const auto& cimClass = cimom.classOf(nameSpace, className, OpenWBEM::CIMException::NOT_FOUND);
    const auto path = onClass ? reader.className(message.target()) : reader.instanceName(message.target());
    audit.target(path);
    const CIMMethod method = cimClass.getMethod(name);
    if (!method) {
        throw OperationError(MethodNotFound, view(name));
    }
    const CIMParamValueArray in = readParameters(message, method, reader);
    for (const CIMParamValue& one : in) {
        audit.value(one.getName(), one.getValue());
    }
    CIMParamValueArray out;
    writeReturnValue(reply, cimom.invokeMethod(context, nameSpace, path, name, in, out));
    for (const CIMParamValue& one : out) {
        writeParamValue(reply, view(one.getName()), one.getValue());
    }
}

} // namespace cimserver::cimxml
