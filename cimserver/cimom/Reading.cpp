// The operations of Cimom that read instances.
#include "cimserver/cim/Sink.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/cimom/Request.hpp"
#include "cimserver/schema/Repository.hpp"

#include <optional>

namespace cimserver::cimom {

using provider::Access;

namespace {

/// A provider may deliver an instance of a subclass.
const CIMClass& ownClass(const CIMInstance& delivered, const schema::Repository& repository, const String& ns,
                         const CIMClass& asked) {
    const String name = delivered.getClassName();
    const bool same = name.empty() || name.equalsIgnoreCase(asked.getName());
    const CIMClass* const found = same ? nullptr : repository.findClass(ns, name);
    return found != nullptr ? *found : asked;
}

/// The properties of the class that such a read is about; nothing when that is all.
std::optional<StringArray> coveredBy(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EDeepFlag deep,
                                     const CIMClass& requested, const CIMClass& cimClass) {
    if (localOnly == WBEMFlags::E_NOT_LOCAL_ONLY && deep == WBEMFlags::E_DEEP) {
        return std::nullopt;
    }
    return cimClass.getCloneProps(localOnly, deep, nullptr, requested);
}

/// Without the properties that subclasses of the requested class add.
CIMInstance withoutAdded(CIMInstance instance, const CIMClass& own, const CIMClass& requested) {
    const CIMPropertyArray keys = instance.getKeyValuePairs();
    CIMPropertyArray kept;
    for (const CIMProperty& property : instance.getProperties()) {
        const CIMName name(property.getName());
        if (requested.getProperty(name) || !own.getProperty(name)) {
            kept.push_back(property);
        }
    }
    return instance.setProperties(kept).setKeys(keys);
}

} // namespace

CIMInstance Cimom::getInstance(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                               const InstanceSelection& selection) {
    Request request(*this, context, ns, Access::Read);
    const CIMClass& cimClass = request.classOf(path.getClassName());
    CIMObjectPath wanted = request.synced(path, cimClass);
    CIMInstance result(CIMNULL);
    // Providers get the path of a client's read without its namespace; the namespace is the argument before it.
    const CIMObjectPath bare = CIMObjectPath(wanted).setNameSpace(String());
    request.withInstances(cimClass, [&](auto& provider, const auto& env) {
        result = request.read(provider, env, bare, cimClass, selection);
    });
    const auto covered = coveredBy(selection.localOnly, WBEMFlags::E_DEEP, cimClass, cimClass);
    return shaped(result, cimClass, selection.propertyList, wanted, covered);
}

void Cimom::enumInstances(const RequestContext& context, const String& ns, const String& className,
                          const InstanceSelection& selection, CIMInstanceResultHandlerIFC& result) {
    Request request(*this, context, ns, Access::Read);
    const CIMClass& requested = request.classOf(className);
    for (const CIMClass* const cimClass : request.family(requested)) {
        Sink<CIMInstance> sink([&](const CIMInstance& delivered) {
            const auto handle = [&](const CIMInstance& one) {
                const CIMClass& own = ownClass(requireInstance(one), repository_, request.ns(), *cimClass);
                const auto covered = coveredBy(selection.localOnly, selection.deep, requested, own);
                const CIMInstance whole = shapedWithKeys(one, own, selection.propertyList, covered);
                result.handle(selection.deep == WBEMFlags::E_DEEP ? whole : withoutAdded(whole, own, requested));
            };
            request.withCompleted(delivered, cimClass->getName(), selection, requested, *cimClass, handle);
        });
        request.withInstances(*cimClass, [&](auto& provider, const auto& env) {
            provider.enumInstances(env, request.ns(), cimClass->getName(), sink, selection.localOnly, selection.deep,
                                   selection.includeQualifiers, selection.includeClassOrigin, selection.propertyList,
                                   requested, *cimClass);
        });
    }
}

void Cimom::enumInstanceNames(const RequestContext& context, const String& ns, const String& className,
                              CIMObjectPathResultHandlerIFC& result) {
    Request request(*this, context, ns, Access::Read);
    for (const CIMClass* const cimClass : request.family(request.classOf(className))) {
        Sink<CIMObjectPath> sink([&](const CIMObjectPath& delivered) {
            requireKeys(delivered.getKeys(), *cimClass);
            result.handle(CIMObjectPath(delivered).setNameSpace(request.ns()));
        });
        request.withInstances(*cimClass, [&](auto& provider, const auto& env) {
            provider.enumInstanceNames(env, request.ns(), cimClass->getName(), sink, *cimClass);
        });
    }
}

CIMValue Cimom::getProperty(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                            const String& name) {
    propertyOf(classOf(ns, path.getClassName()), name.c_str());
    return getInstance(context, ns, path, InstanceSelection()).getPropertyValue(CIMName(name));
}

} // namespace cimserver::cimom
