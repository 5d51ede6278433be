#include "cimserver/cimom/Request.hpp"

#include "cimserver/cimom/CimomHandle.hpp"
#include "cimserver/provider/CallOrigin.hpp"
#include "cimserver/provider/Environment.hpp"
#include "cimserver/provider/ProviderCall.hpp"

#include <optional>

namespace cimserver::cimom {

namespace {

/// Makes handles in the name of one request.
class Handles : public provider::HandleSource {
  public:
    Handles(std::weak_ptr<Cimom*> cimom, RequestContext context)
        : cimom_(std::move(cimom)), context_(std::move(context)) {}
    CIMOMHandleIFCRef makeHandle() const override { return makeCimomHandle(cimom_, context_); }

  private:
    const std::weak_ptr<Cimom*> cimom_;
    const RequestContext context_;
};

} // namespace

const InstanceSelection Cimom::Request::kWhole{WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_DEEP,
                                               WBEMFlags::E_INCLUDE_QUALIFIERS, WBEMFlags::E_INCLUDE_CLASS_ORIGIN,
                                               nullptr};

Cimom::Request::Request(Cimom& cimom, const RequestContext& context, const String& ns, provider::Access access)
    : cimom_(cimom), access_(access), observer_(context.observer), ns_(cimom.admit(context, ns, access)),
      origin_(originOf(cimom, context)) {}

provider::CallOrigin Cimom::Request::originOf(const Cimom& cimom, RequestContext context) {
    context.observer = nullptr;
    if (!context.operation) {
        context.operation = std::make_shared<OperationContext>();
    }
    provider::CallOrigin origin;
    origin.user = context.user;
    origin.what = context.operationName;
    origin.operation = context.operation;
    origin.handles = std::make_shared<const Handles>(cimom.self_, std::move(context));
    return origin;
}

void Cimom::preload(const std::string& id) {
    const crash::Task task{"initialization, provider ", id};
    auto origin = Request::originOf(*this, RequestContext());
    origin.what = "preload";
    host_.enter(id, provider::Access::Write, origin);
}

std::vector<const CIMClass*> Cimom::Request::family(const CIMClass& top) const {
    std::vector<const CIMClass*> all = cimom_.repository_.subclasses(ns_, top.getName(), true);
    all.insert(all.begin(), &top);
    return all;
}

ProviderEnvironmentIFCRef Cimom::Request::environment() const {
    return ProviderEnvironmentIFCRef(
        new provider::Environment(origin_, "schema", std::make_shared<const provider::ConfigItems>()));
}

CIMInstanceArray Cimom::Request::filtered(const CIMInstance& delivered, const String& className,
                                          const InstanceSelection& selection, const CIMClass& requested,
                                          const CIMClass& cimClass) {
    CIMInstanceArray instances(1, requireInstance(delivered));
    withSecondaries(cimClass, [&](auto& secondary, const auto& env) {
        if (!instances.empty()) {
            secondary.filterInstances(env, ns_, className, instances, selection.localOnly, selection.deep,
                                      selection.includeQualifiers, selection.includeClassOrigin, selection.propertyList,
                                      requested, cimClass);
        }
    });
    return instances;
}

CIMInstance Cimom::Request::read(CppInstanceProviderIFC& provider, const ProviderEnvironmentIFCRef& env,
                                 const CIMObjectPath& path, const CIMClass& cimClass,
                                 const InstanceSelection& selection) {
    const CIMInstance delivered = provider.getInstance(env, ns_, path, selection.localOnly, selection.includeQualifiers,
                                                       selection.includeClassOrigin, selection.propertyList, cimClass);
    InstanceSelection one(selection);
    one.deep = WBEMFlags::E_DEEP;
    std::optional<CIMInstance> found;
    withCompleted(delivered, path.getClassName(), one, cimClass, cimClass, [&found](const CIMInstance& completed) {
        if (!found) {
            found = completed;
        }
    });
    if (!found) {
        throw CimError(Status::NotFound, path.toString().c_str());
    }
    return requireInstance(*found);
}

CIMObjectPath Cimom::Request::synced(const CIMObjectPath& path, const CIMClass& cimClass) const {
    CIMObjectPath result(path);
    result.setNameSpace(ns_);
    return result.syncWithClass(cimClass);
}

} // namespace cimserver::cimom
