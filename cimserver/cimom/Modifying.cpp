// The operations of Cimom that change instances.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/cimom/Request.hpp"

#include "OW_CIMAccess.hpp"

namespace cimserver::cimom {

using provider::Access;

namespace {

/// Refuses unknown names, so that a mistyped property is not believed to be set.
void requireProperties(const CIMClass& cimClass, const CIMInstance& instance, const StringArray* propertyList) {
    for (const CIMProperty& property : CIMAccess::properties(instance)) {
        propertyOf(cimClass, CIMAccess::text(CIMAccess::name(property)).c_str());
    }
    if (propertyList != nullptr) {
        for (const String& name : *propertyList) {
            propertyOf(cimClass, name.c_str());
        }
    }
}

} // namespace

void Cimom::modifyInstance(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                           const CIMInstance& modified, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                           const StringArray* propertyList) {
    Request request(*this, context, ns, Access::Write);
    const CIMClass& cimClass = request.classOf(path.getClassName());
    requireProperties(cimClass, modified, propertyList);
    const CIMObjectPath target = request.synced(path, cimClass);
    request.withInstances(cimClass, [&](auto& provider, const auto& env) {
        const CIMInstance previous = request.read(provider, env, target, cimClass);
        const Modification change =
            modificationOf(modified, previous, cimClass, target, propertyList, settings_.forwardUnchanged);
        if (context.observer != nullptr) {
            context.observer->onModification(change.changes, previous);
        }
        if (change.empty()) {
            return;
        }
        request.announceChange();
        // Always with a list: a provider must not take what is not handed on for set to NULL.
        const auto modify = [&](auto& one, const auto& itsEnv) {
            one.modifyInstance(itsEnv, request.ns(), change.instance, previous, includeQualifiers, &change.names,
                               cimClass);
        };
        const auto showResult = [&] {
            if (context.observer != nullptr && context.observer->wantsResult()) {
                outcomeOf([&] { context.observer->afterModification(request.read(provider, env, target, cimClass)); });
            }
        };
        try {
            modify(provider, env);
            request.withSecondaries(cimClass, modify);
        } catch (...) {
            showResult();
            throw;
        }
        showResult();
    });
}

void Cimom::setProperty(const RequestContext& context, const String& ns, const CIMObjectPath& path, const String& name,
                        const CIMValue& value) {
    admit(context, ns, Access::Write);
    const CIMClass& cimClass = classOf(ns, path.getClassName());
    CIMInstance modified{CIMName(path.getClassName())};
    modified.setProperty(CIMProperty(propertyOf(cimClass, name.c_str())).setValue(value));
    const StringArray list(1, name);
    modifyInstance(context, ns, path, modified, WBEMFlags::E_EXCLUDE_QUALIFIERS, &list);
}

CIMObjectPath Cimom::createInstance(const RequestContext& context, const String& ns, const CIMInstance& instance) {
    Request request(*this, context, ns, Access::Write);
    const CIMClass& cimClass = request.classOf(instance.getClassName());
    const CIMQualifier abstract = cimClass.getQualifier(CIMQualifier::CIM_QUAL_ABSTRACT);
    if (abstract && abstract.getValue().equal(CIMValue(true))) {
        throw CimError(Status::InvalidParameter,
                       std::string("The class ") + cimClass.getName().c_str() + " is abstract");
    }
    requireProperties(cimClass, instance, nullptr);
    const CIMInstance complete = CIMInstance(instance).syncWithClass(cimClass);
    CIMObjectPath created(CIMNULL);
    request.withInstances(cimClass, [&](auto& provider, const auto& env) {
        request.announceChange();
        created = provider.createInstance(env, request.ns(), complete);
        request.withSecondaries(cimClass, [&](auto& secondary, const auto& itsEnv) {
            secondary.createInstance(itsEnv, request.ns(), complete);
        });
    });
    if (!created) {
        created = CIMObjectPath(request.ns(), complete);
    }
    return created.setNameSpace(request.ns());
}

void Cimom::deleteInstance(const RequestContext& context, const String& ns, const CIMObjectPath& path) {
    Request request(*this, context, ns, Access::Write);
    const CIMClass& cimClass = request.classOf(path.getClassName());
    const CIMObjectPath target = request.synced(path, cimClass);
    request.withInstances(cimClass, [&](auto& provider, const auto& env) {
        request.read(provider, env, target, cimClass); // throws when there is none
        const auto remove = [&](auto& one, const auto& itsEnv) { one.deleteInstance(itsEnv, request.ns(), target); };
        request.announceChange();
        remove(provider, env);
        request.withSecondaries(cimClass, remove);
    });
}

} // namespace cimserver::cimom
