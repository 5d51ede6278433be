// The operations that the schema answers.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/ObjectWriter.hpp"
#include "cimserver/cimxml/OperationTable.hpp"
#include "cimserver/cimxml/XmlWriter.hpp"
#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimxml {

using namespace OpenWBEM;

namespace {

ClassForm formOf(const OperationCall& call) {
    ClassForm form;
    form.localOnly = call.arguments.flag("LocalOnly");
    form.object.qualifiers = call.arguments.flag("IncludeQualifiers");
    form.object.classOrigin = call.arguments.flag("IncludeClassOrigin");
    return form;
}

std::vector<const CIMClass*> subclassesFor(const OperationCall& call) {
    return call.services.cimom.subclassesOf(call.nameSpace, call.arguments.className("ClassName"),
                                            call.arguments.flag("DeepInheritance"));
}

} // namespace

void getClass(OperationCall& call) {
    const CIMClass& found =
        call.services.cimom.classOf(call.nameSpace, call.arguments.className("ClassName"), Status::NotFound);
    const auto list = call.arguments.texts("PropertyList");
    ClassForm form = formOf(call);
    form.propertyList = list ? &*list : nullptr;
    const Element result(call.reply, "IRETURNVALUE");
    writeClass(call.reply, found, form);
}

void enumerateClasses(OperationCall& call) {
    const Element result(call.reply, "IRETURNVALUE");
    const auto classes = subclassesFor(call);
    if (classes.empty()) {
        return;
    }
    call.reply.inPieces([classes, form = formOf(call), next = std::size_t(0)](XmlWriter& writer) mutable {
        writeClass(writer, *classes[next], form);
        return ++next < classes.size();
    });
}

void enumerateClassNames(OperationCall& call) {
    const Element result(call.reply, "IRETURNVALUE");
    for (const CIMClass* one : subclassesFor(call)) {
        Element(call.reply, "CLASSNAME").attribute("NAME", view(one->getName()));
    }
}

void getQualifier(OperationCall& call) {
    const CIMQualifierType& found =
        call.services.cimom.qualifierType(call.nameSpace, call.arguments.text("QualifierName"));
    const Element result(call.reply, "IRETURNVALUE");
    writeQualifierDeclaration(call.reply, found);
}

void enumerateQualifiers(OperationCall& call) {
    const Element result(call.reply, "IRETURNVALUE");
    for (const CIMQualifierType* one : call.services.cimom.repository().qualifierTypes(call.nameSpace)) {
        writeQualifierDeclaration(call.reply, *one);
    }
}

} // namespace cimserver::cimxml
