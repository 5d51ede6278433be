// Calls of methods that classes declare: the parameters are converted to the types of the method's declaration.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/ObjectReader.hpp"
#include "cimserver/cimxml/ObjectWriter.hpp"
#include "cimserver/cimxml/OperationTable.hpp"
#include "cimserver/cimxml/RequestMessage.hpp"
#include "cimserver/common/Text.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

[[noreturn]] void refuse(const String& parameter, const char* what) {
    throw CimError(Status::InvalidParameter, "parameter " + quote(view(parameter)) + " " + what);
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

CIMParamValueArray readParameters(OperationCall& call, const CIMMethod& method) {
    const CIMParameterArray inputs = method.getINParameters();
    CIMParamValueArray values;
    for (const pugi::xml_node element : call.message.call().children("PARAMVALUE")) {
        const String name(element.attribute("NAME").value());
        const CIMParameter& declared = requireInput(inputs, name);
        requireNew(values, name);
        values.push_back(
            CIMParamValue(name, call.reader.value(element, declared.getType(), declared.getQualifiers(), view(name))));
    }
    return values;
}

} // namespace

void callMethod(OperationCall& call) {
    const String name = toCim(call.message.name());
    // A method is called on an object: without its class, it is the object that is not found.
    const CIMObjectPath path = call.reader.objectName(call.message.target(), Status::NotFound);
    call.audit.target(path);
    const auto in = [&call](const CIMMethod& method) { return readParameters(call, method); };
    CIMParamValueArray out;
    writeReturnValue(call.reply, call.services.cimom.invokeMethod(call.context, call.nameSpace, path, name, in, out));
    for (const CIMParamValue& one : out) {
        writeParamValue(call.reply, view(one.getName()), one.getValue());
    }
}

} // namespace cimserver::cimxml
