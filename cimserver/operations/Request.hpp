// One operation on its way through Cimom: the namespace, the classes in it, and the way into their providers.
#pragma once

#include "cimserver/operations/Cimom.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include <string>
#include <vector>

namespace cimserver::operations {

/// Throws the CIMException of this code and text.
[[noreturn]] void fail(OpenWBEM::CIMException::ErrNoType code, const std::string& text);

/// Says who writes, or throws ACCESS_DENIED.
void requireWrite(const RequestContext& context);

class Cimom::Request {
  public:
    /// Throws INVALID_NAMESPACE.
    Request(Cimom& cimom, const RequestContext& context, const OpenWBEM::String& ns);

    /// What a provider's environment tells of the request.
    static provider::CallOrigin originOf(const Cimom& cimom, const RequestContext& context);

    /// The namespace in its own spelling.
    const OpenWBEM::String& ns() const { return ns_; }

    /// Throws INVALID_CLASS, or the code given.
    const OpenWBEM::CIMClass&
    classOf(const OpenWBEM::String& name,
            OpenWBEM::CIMException::ErrNoType code = OpenWBEM::CIMException::INVALID_CLASS) const;

    /// The class and all below it.
    std::vector<const OpenWBEM::CIMClass*> family(const OpenWBEM::CIMClass& top) const;

    /// The path in the namespace, its keys spelled and typed as the class says.
    OpenWBEM::CIMObjectPath synced(const OpenWBEM::CIMObjectPath& path, const OpenWBEM::CIMClass& cimClass) const;

    /// Calls use(CppInstanceProviderIFC&, env) inside the class's provider and translates what it throws. False when
    /// the class has no instance provider.
    template <class Use>
    bool withInstances(const OpenWBEM::CIMClass& cimClass, provider::Access access, Use&& use) {
        return within(host().instanceProvider(ns_, cimClass), access, &provider::ProviderCall::instances, use);
    }
    template <class Use>
    bool withAssociators(const OpenWBEM::CIMClass& cimClass, Use&& use) {
        return within(host().associatorProvider(ns_, cimClass), provider::Access::Read,
                      &provider::ProviderCall::associators, use);
    }
    template <class Use>
    bool withMethods(const OpenWBEM::CIMClass& cimClass, const OpenWBEM::CIMMethod& method, Use&& use) {
        return within(host().methodProvider(ns_, cimClass, method), provider::Access::Write,
                      &provider::ProviderCall::methods, use);
    }

  private:
    provider::ProviderHost& host() { return cimom_.host_; }

    template <class Interface, class Use>
    bool within(const std::string& id, provider::Access access, Interface* (provider::ProviderCall::*side)() const,
                Use&& use) {
        if (id.empty()) {
            return false;
        }
        const provider::ProviderCall call = host().enter(id, access, origin_);
        return provider::guarded([&] {
            Interface* const provider = (call.*side)();
            if (provider != nullptr) {
                use(*provider, call.env());
            }
            return provider != nullptr;
        });
    }

    Cimom& cimom_;
    provider::CallOrigin origin_;
    OpenWBEM::String ns_;
};

} // namespace cimserver::operations
