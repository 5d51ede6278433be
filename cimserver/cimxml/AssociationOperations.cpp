// The operations that follow associations from an instance, passed on to the object manager.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cim/Sink.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/InstanceReads.hpp"
#include "cimserver/cimxml/NameWriter.hpp"
#include "cimserver/cimxml/ObjectWriter.hpp"
#include "cimserver/cimxml/OperationTable.hpp"
#include "cimserver/cimxml/XmlWriter.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

CIMObjectPath sourceOf(const OperationCall& call) {
    const pugi::xml_node element = call.arguments.element("ObjectName");
    if (std::string_view(element.name()) == "CLASSNAME") {
        throw CimError(Status::NotSupported, "associations between classes");
    }
    return call.reader.instanceName(element);
}

cimom::AssociationFilter filterOf(const OperationCall& call) {
    return {call.arguments.className("AssocClass"), call.arguments.className("ResultClass"),
            call.arguments.text("Role"), call.arguments.text("ResultRole")};
}

void writeObjectPath(OperationCall& call, const CIMObjectPath& path) {
    const Element object(call.reply, "OBJECTPATH");
    writeInstancePath(call.reply, path, call.services.hostName, call.nameSpace);
}

template <typename Find>
void writeInstances(OperationCall& call, Find find) {
    const CIMObjectPath source = sourceOf(call);
    const RequestedSelection selection(call.arguments);
    const Element result(call.reply, "IRETURNVALUE");
    Sink<CIMInstance> sink([&](const CIMInstance& one) {
        const Element object(call.reply, "VALUE.OBJECTWITHPATH");
        writeInstancePath(call.reply, nameOfInstance(one, call.nameSpace), call.services.hostName, call.nameSpace);
        writeInstance(call.reply, one, selection.classOrigin());
    });
    find(source, selection.get(), sink);
}

template <typename Find>
void writeNames(OperationCall& call, Find find) {
    const CIMObjectPath source = sourceOf(call);
    const Element result(call.reply, "IRETURNVALUE");
    Sink<CIMObjectPath> sink([&](const CIMObjectPath& one) { writeObjectPath(call, one); });
    find(source, sink);
}

} // namespace

void associators(OperationCall& call) {
    writeInstances(call, [&](const auto& source, const auto& selection, auto& sink) {
        call.services.cimom.associators(call.context, call.nameSpace, source, filterOf(call), selection, sink);
    });
}

void associatorNames(OperationCall& call) {
    writeNames(call, [&](const auto& source, auto& sink) {
        call.services.cimom.associatorNames(call.context, call.nameSpace, source, filterOf(call), sink);
    });
}

void references(OperationCall& call) {
    writeInstances(call, [&](const auto& source, const auto& selection, auto& sink) {
        call.services.cimom.references(call.context, call.nameSpace, source, filterOf(call), selection, sink);
    });
}

void referenceNames(OperationCall& call) {
    writeNames(call, [&](const auto& source, auto& sink) {
        call.services.cimom.referenceNames(call.context, call.nameSpace, source, filterOf(call), sink);
    });
}

} // namespace cimserver::cimxml
