#include "cimserver/cimom/Cimom.hpp"

#include "cimserver/schema/Repository.hpp"

#include "OW_CIMAccess.hpp"

namespace cimserver::cimom {

using provider::Access;

Cimom::Cimom(const schema::Repository& repository, provider::ProviderHost& host, Settings settings)
    : repository_(repository), host_(host), settings_(settings), self_(std::make_shared<Cimom*>(this)) {}

const CIMProperty& propertyOf(const CIMClass& cimClass, const char* name) {
    const CIMProperty* const found = CIMAccess::find(CIMAccess::properties(cimClass), name);
    if (found == nullptr) {
        throw CimError(Status::NoSuchProperty, name);
    }
    return *found;
}

String Cimom::admit(const RequestContext& context, const String& ns, Access access) const {
    if (access == Access::Write && !context.mayWrite) {
        throw CimError(Status::AccessDenied, "the role of \"" + context.user + "\" is read");
    }
    return namespaceOf(ns);
}

String Cimom::namespaceOf(const String& ns) const {
    String canonical = repository_.canonicalNamespace(ns);
    if (canonical.empty()) {
        throw CimError(Status::InvalidNamespace, ns.c_str());
    }
    return canonical;
}

const CIMClass& Cimom::classOf(const String& ns, const String& className, Status missing) const {
    const CIMClass* const found = repository_.findClass(ns, className);
    if (found == nullptr) {
        throw CimError(missing, std::string("/") + namespaceOf(ns).c_str() + ":" + className.c_str());
    }
    return *found;
}

std::vector<const CIMClass*> Cimom::subclassesOf(const String& ns, const String& className, bool deep) const {
    const String canonical = namespaceOf(ns);
    if (!className.empty()) {
        classOf(canonical, className); // throws when it is unknown
    }
    return repository_.subclasses(canonical, className, deep);
}

const CIMQualifierType& Cimom::qualifierType(const String& ns, const String& name) const {
    const CIMQualifierType* const found = repository_.findQualifierType(namespaceOf(ns), name);
    if (found == nullptr) {
        throw CimError(Status::NotFound, std::string("qualifier \"") + name.c_str() + "\"");
    }
    return *found;
}

} // namespace cimserver::cimom
