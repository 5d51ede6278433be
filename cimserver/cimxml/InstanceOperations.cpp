// The operations on instances, passed on to the object manager.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cim/Sink.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/Audit.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/Masking.hpp"
#include "cimserver/cimxml/NameWriter.hpp"
#include "cimserver/cimxml/ObjectWriter.hpp"
#include "cimserver/cimxml/OperationTable.hpp"
#include "cimserver/cimxml/RequestedSelection.hpp"
#include "cimserver/cimxml/XmlWriter.hpp"
#include "cimserver/common/Text.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

bool mustNotKnow(const OperationCall& call) {
    return call.services.hideSecrets && !call.context.mayWrite;
}

} // namespace

void writeFound(const OperationCall& call, XmlWriter& writer, const CIMInstance& instance, bool classOrigin) {
    writeInstance(writer, mustNotKnow(call) ? withoutSecretValues(instance) : instance, classOrigin);
}

void getInstance(OperationCall& call) {
    const CIMObjectPath path = call.reader.instanceName(call.arguments.element("InstanceName"));
    const RequestedSelection selection(call.arguments);
    const CIMInstance found = call.services.cimom.getInstance(call.context, call.nameSpace, path, selection.get());
    const Element result(call.reply, "IRETURNVALUE");
    writeFound(call, call.reply, found, selection.classOrigin());
}

void enumerateInstances(OperationCall& call) {
    const RequestedSelection selection(call.arguments);
    const Element result(call.reply, "IRETURNVALUE");
    Sink<CIMInstance> sink([&](const CIMInstance& one) {
        const Element named(call.reply, "VALUE.NAMEDINSTANCE");
        writeInstanceName(call.reply, nameOfInstance(one, call.nameSpace));
        writeFound(call, call.reply, one, selection.classOrigin());
    });
    call.services.cimom.enumInstances(call.context, call.nameSpace, call.arguments.className("ClassName"),
                                      selection.get(), sink);
}

void enumerateInstanceNames(OperationCall& call) {
    const Element result(call.reply, "IRETURNVALUE");
    Sink<CIMObjectPath> sink([&](const CIMObjectPath& one) { writeInstanceName(call.reply, one); });
    call.services.cimom.enumInstanceNames(call.context, call.nameSpace, call.arguments.className("ClassName"), sink);
}

void modifyInstance(OperationCall& call) {
    const pugi::xml_node named = call.arguments.element("ModifiedInstance");
    const CIMObjectPath path = call.reader.instanceName(named.child("INSTANCENAME"));
    call.audit.target(path);
    const CIMInstance modified = call.reader.instance(named.child("INSTANCE"));
    if (!modified.getClassName().equalsIgnoreCase(path.getClassName())) {
        throw CimError(Status::InvalidParameter, "the instance is of class " + quote(view(modified.getClassName())) +
                                                     ", its name of " + quote(view(path.getClassName())));
    }
    const RequestedSelection selection(call.arguments);
    call.services.cimom.modifyInstance(call.context, call.nameSpace, path, modified, selection.get().includeQualifiers,
                                       selection.get().propertyList);
}

void createInstance(OperationCall& call) {
    const pugi::xml_node element = call.arguments.element("NewInstance");
    const CIMInstance instance = call.reader.instance(element);
    const CIMObjectPath created = call.services.cimom.createInstance(call.context, call.nameSpace, instance);
    call.audit.target(created);
    const Element result(call.reply, "IRETURNVALUE");
    writeInstanceName(call.reply, created);
}

void deleteInstance(OperationCall& call) {
    const CIMObjectPath path = call.reader.instanceName(call.arguments.element("InstanceName"));
    call.audit.target(path);
    call.services.cimom.deleteInstance(call.context, call.nameSpace, path);
}

void getProperty(OperationCall& call) {
    const CIMObjectPath path = call.reader.instanceName(call.arguments.element("InstanceName"));
    const String name = call.arguments.text("PropertyName");
    const CIMValue found = call.services.cimom.getProperty(call.context, call.nameSpace, path, name);
    const Element result(call.reply, "IRETURNVALUE");
    writeValue(call.reply, mustNotKnow(call) ? valueWithoutSecret(name, found) : found,
               toStd(path.getClassName()) + "." + toStd(name));
}

void setProperty(OperationCall& call) {
    const CIMObjectPath path = call.reader.instanceName(call.arguments.element("InstanceName"));
    call.audit.target(path);
    const String name = call.arguments.text("PropertyName");
    const CIMClass& cimClass = call.services.cimom.classOf(call.nameSpace, path.getClassName());
    const CIMProperty& known = cimom::propertyOf(cimClass, name.c_str());
    const CIMValue value = call.reader.value(call.arguments.findParameter("NewValue"), known.getDataType(),
                                             known.getQualifiers(), view(name), Status::TypeMismatch);
    call.services.cimom.setProperty(call.context, call.nameSpace, path, name, value);
}

} // namespace cimserver::cimxml
