// The operations that follow associations from an instance or a class, handed on to the object manager.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cim/Sink.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/NameWriter.hpp"
#include "cimserver/cimxml/ObjectWriter.hpp"
#include "cimserver/cimxml/OperationTable.hpp"
#include "cimserver/cimxml/RequestedSelection.hpp"
#include "cimserver/cimxml/XmlWriter.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;
using cimom::AssociationEnd;

namespace {

CIMObjectPath sourceOf(const OperationCall& call) {
    return call.reader.objectName(call.arguments.element("ObjectName"), Status::NotFound);
}

cimom::AssociationFilter filterOf(const OperationCall& call, AssociationEnd wanted) {
    if (wanted == AssociationEnd::Reference) {
        return {call.arguments.className("ResultClass"), "", call.arguments.text("Role"), ""};
    }
    return {call.arguments.className("AssocClass"), call.arguments.className("ResultClass"),
            call.arguments.text("Role"), call.arguments.text("ResultRole")};
}

void writePath(OperationCall& call, const CIMObjectPath& path) {
    if (path.isClassPath()) {
        writeClassPath(call.reply, path.getClassName(), call.services.hostName, call.nameSpace);
    } else {
        writeInstancePath(call.reply, path, call.services.hostName, call.nameSpace);
    }
}

void writeClasses(OperationCall& call, const CIMObjectPath& source, AssociationEnd wanted) {
    const auto list = call.arguments.texts("PropertyList");
    ClassForm form;
    form.object = {call.arguments.flag("IncludeQualifiers"), call.arguments.flag("IncludeClassOrigin")};
    form.propertyList = list ? &*list : nullptr;
    const auto filter = filterOf(call, wanted);
    for (const CIMClass* const one :
         call.services.cimom.classesFor(wanted, call.context, call.nameSpace, source, filter)) {
        const Element object(call.reply, "VALUE.OBJECTWITHPATH");
        writePath(call, CIMObjectPath(CIMName(one->getName())));
        writeClass(call.reply, *one, form);
    }
}

/// The classes associated with a class, or what `find` has for an instance.
template <typename Find>
void writeObjects(OperationCall& call, AssociationEnd wanted, Find find) {
    const CIMObjectPath source = sourceOf(call);
    const RequestedSelection selection(call.arguments);
    const Element result(call.reply, "IRETURNVALUE");
    if (source.isClassPath()) {
        return writeClasses(call, source, wanted);
    }
    Sink<CIMInstance> sink([&](const CIMInstance& one) {
        const Element object(call.reply, "VALUE.OBJECTWITHPATH");
        writePath(call, nameOfInstance(one, call.nameSpace));
        writeFound(call, call.reply, one, selection.classOrigin());
    });
    find(source, filterOf(call, wanted), selection.get(), sink);
}

template <typename Find>
void writeNames(OperationCall& call, AssociationEnd wanted, Find find) {
    const CIMObjectPath source = sourceOf(call);
    const Element result(call.reply, "IRETURNVALUE");
    Sink<CIMObjectPath> sink([&](const CIMObjectPath& one) {
        const Element object(call.reply, "OBJECTPATH");
        writePath(call, one);
    });
    find(source, filterOf(call, wanted), sink);
}

} // namespace

void associators(OperationCall& call) {
    writeObjects(call, AssociationEnd::Associator,
                 [&](auto&&... asked) { call.services.cimom.associators(call.context, call.nameSpace, asked...); });
}

void associatorNames(OperationCall& call) {
    writeNames(call, AssociationEnd::Associator,
               [&](auto&&... asked) { call.services.cimom.associatorNames(call.context, call.nameSpace, asked...); });
}

void references(OperationCall& call) {
    writeObjects(call, AssociationEnd::Reference,
                 [&](auto&&... asked) { call.services.cimom.references(call.context, call.nameSpace, asked...); });
}

void referenceNames(OperationCall& call) {
    writeNames(call, AssociationEnd::Reference,
               [&](auto&&... asked) { call.services.cimom.referenceNames(call.context, call.nameSpace, asked...); });
}

} // namespace cimserver::cimxml
