// The operations that the schema answers.
#include "Characters.hpp"
#include "ClassWriter.hpp"
#include "Errors.hpp"
#include "Operations.hpp"

#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimxml {
namespace {

using OpenWBEM::CIMClass;
using OpenWBEM::CIMQualifierType;

const schema::Repository& repositoryOf(const OperationCall& call) {
    return call.services.cimom.repository();
}

ClassForm formOf(const OperationCall& call) {
    ClassForm form;
    form.localOnly = call.arguments.flag("LocalOnly");
    form.object.qualifiers = call.arguments.flag("IncludeQualifiers");
    form.object.classOrigin = call.arguments.flag("IncludeClassOrigin");
    return form;
}

/// The subclasses asked for; the class they start from must exist.
std::vector<const CIMClass*> subclassesFor(const OperationCall& call) {
    const OpenWBEM::String top = call.arguments.className("ClassName");
    if (!top.empty()) {
        static_cast<void>(call.services.cimom.classOf(call.nameSpace, top));
    }
    return repositoryOf(call).subclasses(call.nameSpace, top, call.arguments.flag("DeepInheritance"));
}

} // namespace

void getClass(OperationCall& call) {
    const CIMClass& found = call.services.cimom.classOf(call.nameSpace, call.arguments.className("ClassName"));
    const auto list = call.arguments.texts("PropertyList");
    ClassForm form = formOf(call);
    form.propertyList = list ? &*list : nullptr;
    const Element result(call.reply, "IRETURNVALUE");
    writeClass(call.reply, found, form);
}

void enumerateClasses(OperationCall& call) {
    const Element result(call.reply, "IRETURNVALUE");
    for (const CIMClass* one : subclassesFor(call)) {
        writeClass(call.reply, *one, formOf(call));
    }
}

void enumerateClassNames(OperationCall& call) {
    const Element result(call.reply, "IRETURNVALUE");
    for (const CIMClass* one : subclassesFor(call)) {
        Element(call.reply, "CLASSNAME").attribute("NAME", view(one->getName()));
    }
}

void getQualifier(OperationCall& call) {
    const OpenWBEM::String name = call.arguments.text("QualifierName");
    const CIMQualifierType* found = repositoryOf(call).findQualifierType(call.nameSpace, name);
    if (found == nullptr) {
        throw OperationError(NotFound, "qualifier " + quote(view(name)));
    }
    const Element result(call.reply, "IRETURNVALUE");
    writeQualifierDeclaration(call.reply, *found);
}

void enumerateQualifiers(OperationCall& call) {
    const Element result(call.reply, "IRETURNVALUE");
    for (const CIMQualifierType* one : repositoryOf(call).qualifierTypes(call.nameSpace)) {
        writeQualifierDeclaration(call.reply, *one);
    }
}

} // namespace cimserver::cimxml
