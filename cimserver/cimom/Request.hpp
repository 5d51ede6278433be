// One operation on its way through Cimom: the namespace, the classes in it, and the way into their providers.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/DeclaredProvider.hpp"
#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/common/CrashReport.hpp"
#include "cimserver/provider/CallOrigin.hpp"
#include "cimserver/provider/ProviderCall.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include <string>
#include <vector>

namespace cimserver::cimom {

using namespace OpenWBEM; // its types are this folder's vocabulary

class Cimom::Request {
  public:
    /// Throws what Cimom::admit throws. `access` is how the request's calls enter their providers.
    Request(Cimom& cimom, const RequestContext& context, const String& ns, provider::Access access);

    /// What a provider's environment knows about the request.
    static provider::CallOrigin originOf(const Cimom& cimom, RequestContext context);

    /// The namespace in its own spelling.
    const String& ns() const { return ns_; }

    /// Like Cimom::classOf.
    const CIMClass& classOf(const String& name, Status missing = Status::InvalidClass) const {
        return cimom_.classOf(ns_, name, missing);
    }

    /// The class and all its subclasses.
    std::vector<const CIMClass*> family(const CIMClass& top) const;

    /// The path in the namespace, its keys with the class's spelling and types.
    CIMObjectPath synced(const CIMObjectPath& path, const CIMClass& cimClass) const;

    /// Calls use(CppInstanceProviderIFC&, env) inside the class's provider and translates what it throws. The instances
    /// of a class without instance provider are those that the schema declares.
    template <class Use>
    void withInstances(const CIMClass& cimClass, Use&& use) {
        const std::string id = host().instanceProvider(ns_, cimClass);
        if (!within(id, cimClass, &provider::ProviderCall::instances, use)) {
            const Status missing = id.empty() ? Status::NotFound : Status::NotSupported;
            use(*declaredProvider(cimom_.repository_, missing), environment());
        }
    }
    template <class Use>
    void withAssociators(const CIMClass& cimClass, Use&& use) {
        if (!within(host().associatorProvider(ns_, cimClass), cimClass, &provider::ProviderCall::associators, use)) {
            use(*declaredProvider(cimom_.repository_), environment());
        }
    }
    /// Calls use(CppSecondaryInstanceProviderIFC&, env) inside each secondary provider of the class.
    template <class Use>
    void withSecondaries(const CIMClass& cimClass, Use&& use) {
        for (const std::string& id : host().secondaryProviders(ns_, cimClass)) {
            within(id, cimClass, &provider::ProviderCall::secondaries, use);
        }
    }
    /// False when the method has no provider.
    template <class Use>
    bool withMethods(const CIMClass& cimClass, const CIMMethod& method, Use&& use) {
        return within(host().methodProvider(ns_, cimClass, method), cimClass, &provider::ProviderCall::methods, use);
    }

    /// Tells the observer that a provider is about to be called to change something.
    void announceChange() const {
        if (observer_ != nullptr) {
            observer_->beforeChange();
        }
    }

    /// Calls use(const CIMInstance&) for what the secondary providers make of an instance that the class's provider
    /// delivered; they may drop it. Throws Failed for a null instance.
    template <class Use>
    void withCompleted(const CIMInstance& delivered, const String& className, const InstanceSelection& selection,
                       const CIMClass& requested, const CIMClass& cimClass, Use&& use) {
        if (selection.propertyList == nullptr) {
            cimom_.schemaCheck_.onAnswer(requireInstance(delivered), cimClass);
        }
        if (host().secondaryProviders(ns_, cimClass).empty()) {
            use(requireInstance(delivered));
            return;
        }
        const CIMInstanceArray left = filtered(delivered, className, selection, requested, cimClass);
        for (const CIMInstance& one : left) {
            use(one);
        }
    }

    /// The instance that the provider, which withInstances gave, and the secondary providers have for the path. Throws
    /// what they throw, and NotFound when it was dropped.
    CIMInstance read(CppInstanceProviderIFC& provider, const ProviderEnvironmentIFCRef& env, const CIMObjectPath& path,
                     const CIMClass& cimClass, const InstanceSelection& selection = kWhole);

  private:
    static const InstanceSelection kWhole;

    CIMInstanceArray filtered(const CIMInstance& delivered, const String& className, const InstanceSelection&,
                              const CIMClass& requested, const CIMClass& cimClass);

    provider::ProviderHost& host() { return cimom_.host_; }

    /// For the provider of declared instances.
    ProviderEnvironmentIFCRef environment() const;

    template <class Interface, class Use>
    bool within(const std::string& id, const CIMClass& cimClass, Interface* (provider::ProviderCall::*side)() const,
                Use&& use) {
        if (id.empty()) {
            return false;
        }
        const crash::Task task{origin_.what,
                               " of ",
                               cimClass.getName().c_str(),
                               ", provider ",
                               id,
                               ", user ",
                               origin_.user.empty() ? "-" : origin_.user.c_str()};
        origin_.className = cimClass.getName();
        const provider::ProviderCall call = host().enter(id, access_, origin_);
        return asCimError([&] {
            Interface* const provider = (call.*side)();
            if (provider != nullptr) {
                use(*provider, call.env());
            }
            return provider != nullptr;
        });
    }

    Cimom& cimom_;
    provider::Access access_;
    ChangeObserver* observer_;
    String ns_;
    provider::CallOrigin origin_;
};

} // namespace cimserver::cimom
