// The association operations of Cimom: each is passed to the associator providers of the association classes concerned.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cim/Sink.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/cimom/Request.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Repository.hpp"

#include <algorithm>

namespace cimserver::cimom {

using provider::Access;

namespace {

/// The object's class and its superclasses.
std::vector<String> lineage(const schema::Repository& repository, const String& ns, const CIMClass& cimClass) {
    std::vector<String> names;
    for (const CIMClass* c = &cimClass; c != nullptr; c = repository.findClass(ns, c->getSuperClass())) {
        names.push_back(c->getName());
    }
    return names;
}

bool refersTo(const CIMClass& association, const std::vector<String>& classes) {
    for (const CIMProperty& property : association.getAllProperties()) {
        const String target = property.isReference() ? property.getDataType().getRefClassName() : String();
        if (std::any_of(classes.begin(), classes.end(), [&](const String& c) { return c.equalsIgnoreCase(target); })) {
            return true;
        }
    }
    return false;
}

/// The association classes to ask: the one named with its subclasses, or all that refer to the object's class.
std::vector<const CIMClass*> associationsOf(const schema::Repository& repository, const String& ns,
                                            const CIMClass& objectClass, const String& named, const char* parameter) {
    std::vector<const CIMClass*> result;
    if (named.empty()) {
        const std::vector<String> classes = lineage(repository, ns, objectClass);
        for (const CIMClass* const candidate : repository.subclasses(ns, "", true)) {
            if (candidate->isAssociation() && refersTo(*candidate, classes)) {
                result.push_back(candidate);
            }
        }
        return result;
    }
    const CIMClass* const top = repository.findClass(ns, named);
    if (top == nullptr) {
        throw CimError(Status::InvalidParameter,
                       std::string(parameter) + ": class " + named.c_str() + " does not exist");
    }
    if (!top->isAssociation()) {
        throw CimError(Status::InvalidParameter, std::string("class ") + named.c_str() + " is not an association");
    }
    result = repository.subclasses(ns, named, true);
    result.insert(result.begin(), top);
    return result;
}

/// Completes the paths that providers return: an association's answer has namespace and host.
Sink<CIMObjectPath> pathSink(const String& ns, CIMObjectPathResultHandlerIFC& next) {
    return Sink<CIMObjectPath>([ns, &next](const CIMObjectPath& delivered) {
        CIMObjectPath path(delivered);
        if (path.getNameSpace().empty()) {
            path.setNameSpace(ns);
        }
        if (path.getFullNameSpace().isLocal()) {
            path.setHost(hostName().c_str());
        }
        next.handle(path);
    });
}

/// Completes instances of any class of the namespace.
Sink<CIMInstance> objectSink(const schema::Repository& repository, const String& ns, const StringArray* propertyList,
                             CIMInstanceResultHandlerIFC& next) {
    return Sink<CIMInstance>([&repository, ns, propertyList, &next](const CIMInstance& delivered) {
        const CIMClass* const own = repository.findClass(ns, requireInstance(delivered).getClassName());
        if (own == nullptr) {
            throw CimError(Status::Failed, std::string("The provider returned an instance of the unknown class ") +
                                               delivered.getClassName().c_str());
        }
        next.handle(shapedWithKeys(delivered, *own, propertyList));
    });
}

} // namespace

/// Calls use(provider, env, namespace, object, association class) once for each association class with an associator
/// provider.
template <class Use>
void Cimom::forAssociations(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                            const String& named, const char* parameter, Use&& use) {
    Request request(*this, context, ns, Access::Read);
    const CIMClass& objectClass = request.classOf(path.getClassName());
    if (!path.isInstancePath()) {
        throw CimError(Status::NotSupported, "The association operations are served for instances, not for classes");
    }
    const CIMObjectPath object = request.synced(path, objectClass);
    for (const CIMClass* const association : associationsOf(repository_, request.ns(), objectClass, named, parameter)) {
        request.withAssociators(*association, [&](auto& provider, const auto& env) {
            use(provider, env, request.ns(), object, association->getName());
        });
    }
}

void Cimom::associators(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                        const AssociationFilter& filter, const InstanceSelection& selection,
                        CIMInstanceResultHandlerIFC& result) {
    const auto ask = [&](auto& provider, const auto& env, const String& space, const auto&... which) {
        auto sink = objectSink(repository_, space, selection.propertyList, result);
        provider.associators(env, sink, space, which..., filter.resultClass, filter.role, filter.resultRole,
                             selection.includeQualifiers, selection.includeClassOrigin, selection.propertyList);
    };
    forAssociations(context, ns, path, filter.assocClass, "AssocClass", ask);
}

void Cimom::associatorNames(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                            const AssociationFilter& filter, CIMObjectPathResultHandlerIFC& result) {
    const auto ask = [&](auto& provider, const auto& env, const String& space, const auto&... which) {
        auto sink = pathSink(space, result);
        provider.associatorNames(env, sink, space, which..., filter.resultClass, filter.role, filter.resultRole);
    };
    forAssociations(context, ns, path, filter.assocClass, "AssocClass", ask);
}

void Cimom::references(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                       const AssociationFilter& filter, const InstanceSelection& selection,
                       CIMInstanceResultHandlerIFC& result) {
    const auto ask = [&](auto& provider, const auto& env, const String& space, const auto&... which) {
        auto sink = objectSink(repository_, space, selection.propertyList, result);
        provider.references(env, sink, space, which..., filter.role, selection.includeQualifiers,
                            selection.includeClassOrigin, selection.propertyList);
    };
    forAssociations(context, ns, path, filter.resultClass, "ResultClass", ask);
}

void Cimom::referenceNames(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                           const AssociationFilter& filter, CIMObjectPathResultHandlerIFC& result) {
    const auto ask = [&](auto& provider, const auto& env, const String& space, const auto&... which) {
        auto sink = pathSink(space, result);
        provider.referenceNames(env, sink, space, which..., filter.role);
    };
    forAssociations(context, ns, path, filter.resultClass, "ResultClass", ask);
}

} // namespace cimserver::cimom
