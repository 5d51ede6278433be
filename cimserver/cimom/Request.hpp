// One operation on its way through Cimom: the namespace, the classes in it, and the way into their providers.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
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
    static provider::CallOrigin originOf(const Cimom& cimom, const RequestContext& context);

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

    /// Calls use(CppInstanceProviderIFC&, env) inside the class's provider and translates what it throws. False when
    /// the class has no instance provider.
    template <class Use>
    bool withInstances(const CIMClass& cimClass, Use&& use) {
        return within(host().instanceProvider(ns_, cimClass), &provider::ProviderCall::instances, use);
    }
    template <class Use>
    bool withAssociators(const CIMClass& cimClass, Use&& use) {
        return within(host().associatorProvider(ns_, cimClass), &provider::ProviderCall::associators, use);
    }
    template <class Use>
    bool withMethods(const CIMClass& cimClass, const CIMMethod& method, Use&& use) {
        return within(host().methodProvider(ns_, cimClass, method), &provider::ProviderCall::methods, use);
    }

  private:
    provider::ProviderHost& host() { return cimom_.host_; }

    template <class Interface, class Use>
    bool within(const std::string& id, Interface* (provider::ProviderCall::*side)() const, Use&& use) {
        if (id.empty()) {
            return false;
        }
        const provider::ProviderCall call = host().enter(id, access_, origin_);
        return guarded([&] {
            Interface* const provider = (call.*side)();
            if (provider != nullptr) {
                use(*provider, call.env());
            }
            return provider != nullptr;
        });
    }

    Cimom& cimom_;
    provider::Access access_;
    String ns_;
    provider::CallOrigin origin_;
};

} // namespace cimserver::cimom
