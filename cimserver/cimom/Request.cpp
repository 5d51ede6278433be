#include "cimserver/cimom/Request.hpp"

#include "cimserver/cimom/CimomHandle.hpp"
#include "cimserver/provider/ProviderCall.hpp"

namespace cimserver::cimom {

Cimom::Request::Request(Cimom& cimom, const RequestContext& context, const String& ns, provider::Access access)
    : cimom_(cimom), access_(access), ns_(cimom.admit(context, ns, access)), origin_(originOf(cimom, context)) {}

provider::CallOrigin Cimom::Request::originOf(const Cimom& cimom, const RequestContext& context) {
    RequestContext shared = context;
    shared.onChange = nullptr; // for this operation only, not for those that a provider calls in turn
    if (!shared.operation) {
        shared.operation = std::make_shared<OperationContext>();
    }
    provider::CallOrigin origin;
    origin.user = shared.user;
    origin.operation = shared.operation;
    origin.makeHandle = [self = std::weak_ptr<Cimom*>(cimom.self_), shared] { return makeCimomHandle(self, shared); };
    return origin;
}

void Cimom::preload(const std::string& id) {
    host_.enter(id, provider::Access::Write, Request::originOf(*this, RequestContext()));
}

std::vector<const CIMClass*> Cimom::Request::family(const CIMClass& top) const {
    std::vector<const CIMClass*> all = cimom_.repository_.subclasses(ns_, top.getName(), true);
    all.insert(all.begin(), &top);
    return all;
}

CIMObjectPath Cimom::Request::synced(const CIMObjectPath& path, const CIMClass& cimClass) const {
    CIMObjectPath result(path);
    result.setNameSpace(ns_);
    return result.syncWithClass(cimClass);
}

} // namespace cimserver::cimom
