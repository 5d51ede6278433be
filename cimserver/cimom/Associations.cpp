// The association operations of Cimom: about an instance each is passed to the associator providers of the
// association classes concerned, about a class the schema answers.
#include "cimserver/schema/Associations.hpp"
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cim/Sink.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/cimom/Request.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimom {

using provider::Access;

namespace {

/// Completes the names that providers give: where an object lies is part of an association's answer.
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

void handClasses(const std::vector<const CIMClass*>& classes, const String& ns, CIMObjectPathResultHandlerIFC& next) {
    auto sink = pathSink(ns, next);
    for (const CIMClass* const one : classes) {
        sink.handle(CIMObjectPath(CIMName(one->getName())));
    }
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

/// Throws for the name of a class that does not exist or is no association.
void Cimom::requireAssociation(const String& ns, const String& named) const {
    if (!named.empty() && !classOf(ns, named, Status::NotFound).isAssociation()) {
        throw CimError(Status::InvalidParameter, std::string("class ") + named.c_str() + " is not an association");
    }
}

std::vector<const CIMClass*> Cimom::classesFor(AssociationEnd wanted, const RequestContext& context, const String& ns,
                                               const CIMObjectPath& path, const AssociationFilter& filter) const {
    const String space = admit(context, ns, Access::Read);
    const String name = classOf(space, path.getClassName(), Status::NotFound).getName();
    requireAssociation(space, filter.assocClass);
    const schema::AssociationQuery query{name, filter.assocClass, filter.resultClass, filter.role, filter.resultRole};
    return wanted == AssociationEnd::Associator ? schema::associatorsOf(repository_, space, query)
                                                : schema::referencesOf(repository_, space, query);
}

/// Calls use(provider, env, namespace, object, association class) once for each association class: its associator
/// provider, or the one of declared instances.
template <class Use>
void Cimom::forAssociations(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                            const String& named, Use&& use) {
    Request request(*this, context, ns, Access::Read);
    const CIMClass& objectClass = request.classOf(path.getClassName(), Status::NotFound);
    if (!path.isInstancePath()) {
        throw CimError(Status::InvalidParameter, std::string(path.getClassName().c_str()) + " names no instance");
    }
    requireAssociation(ns, named);
    const CIMObjectPath object = request.synced(path, objectClass);
    // Of the classes below the one named, too, each is asked; without a name all that refer to the object's class.
    const auto associations =
        named.empty() ? schema::referencesOf(repository_, request.ns(), {objectClass.getName(), "", "", "", ""})
                      : request.family(request.classOf(named));
    for (const CIMClass* const association : associations) {
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
    forAssociations(context, ns, path, filter.assocClass, ask);
}

void Cimom::associatorNames(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                            const AssociationFilter& filter, CIMObjectPathResultHandlerIFC& result) {
    if (path.isClassPath()) {
        return handClasses(classesFor(AssociationEnd::Associator, context, ns, path, filter), namespaceOf(ns), result);
    }
    const auto ask = [&](auto& provider, const auto& env, const String& space, const auto&... which) {
        auto sink = pathSink(space, result);
        provider.associatorNames(env, sink, space, which..., filter.resultClass, filter.role, filter.resultRole);
    };
    forAssociations(context, ns, path, filter.assocClass, ask);
}

void Cimom::references(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                       const AssociationFilter& filter, const InstanceSelection& selection,
                       CIMInstanceResultHandlerIFC& result) {
    const auto ask = [&](auto& provider, const auto& env, const String& space, const auto&... which) {
        auto sink = objectSink(repository_, space, selection.propertyList, result);
        provider.references(env, sink, space, which..., filter.role, selection.includeQualifiers,
                            selection.includeClassOrigin, selection.propertyList);
    };
    forAssociations(context, ns, path, filter.assocClass, ask);
}

void Cimom::referenceNames(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                           const AssociationFilter& filter, CIMObjectPathResultHandlerIFC& result) {
    if (path.isClassPath()) {
        return handClasses(classesFor(AssociationEnd::Reference, context, ns, path, filter), namespaceOf(ns), result);
    }
    const auto ask = [&](auto& provider, const auto& env, const String& space, const auto&... which) {
        auto sink = pathSink(space, result);
        provider.referenceNames(env, sink, space, which..., filter.role);
    };
    forAssociations(context, ns, path, filter.assocClass, ask);
}

} // namespace cimserver::cimom
