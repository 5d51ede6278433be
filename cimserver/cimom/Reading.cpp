// The operations of Cimom that read instances.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/cimom/Request.hpp"
#include "cimserver/schema/Repository.hpp"

namespace cimserver::cimom {

using namespace OpenWBEM;
using provider::Access;

namespace {

/// Passes the provider's instances on in the shape clients need.
class ShapingHandler : public CIMInstanceResultHandlerIFC {
  public:
    ShapingHandler(const schema::Repository& repository, const String& ns, const CIMClass& asked,
                   const StringArray* propertyList, CIMInstanceResultHandlerIFC& next)
        : repository_(repository), ns_(ns), asked_(asked), propertyList_(propertyList), next_(next) {}

  protected:
    void doHandle(const CIMInstance& delivered) override {
        if (!delivered) {
            throw CimError(Status::Failed, "Provider erroneously returned a NULL CIMInstance");
        }
        const CIMClass& own = classOf(delivered.getClassName());
        const CIMInstance result = shaped(delivered, own, propertyList_, CIMObjectPath());
        requireKeys(result.getKeyValuePairs(), own);
        next_.handle(result);
    }

  private:
    /// A provider may deliver an instance of a subclass.
    const CIMClass& classOf(const String& name) const {
        if (name.empty() || name.equalsIgnoreCase(asked_.getName())) {
            return asked_;
        }
        const CIMClass* const found = repository_.findClass(ns_, name);
        return found != nullptr ? *found : asked_;
    }

    const schema::Repository& repository_;
    const String& ns_;
    const CIMClass& asked_;
    const StringArray* propertyList_;
    CIMInstanceResultHandlerIFC& next_;
};

/// Passes names on with the namespace they are of, once they have proved complete.
class NamingHandler : public CIMObjectPathResultHandlerIFC {
  public:
    NamingHandler(const String& ns, const CIMClass& asked, CIMObjectPathResultHandlerIFC& next)
        : ns_(ns), asked_(asked), next_(next) {}

  protected:
    void doHandle(const CIMObjectPath& delivered) override {
        CIMObjectPath path(delivered);
        requireKeys(path.getKeys(), asked_);
        path.setNameSpace(ns_);
        next_.handle(path);
    }

  private:
    const String& ns_;
    const CIMClass& asked_;
    CIMObjectPathResultHandlerIFC& next_;
};

} // namespace

CIMInstance Cimom::getInstance(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                               const InstanceSelection& selection) {
    Request request(*this, context, ns, Access::Read);
    const CIMClass& cimClass = request.classOf(path.getClassName());
    CIMObjectPath wanted = request.synced(path, cimClass);
    CIMInstance result(CIMNULL);
    // Providers get the path of a client's read without its namespace; the namespace is the argument before it.
    const CIMObjectPath bare = CIMObjectPath(wanted).setNameSpace("");
    const bool served = request.withInstances(cimClass, [&](auto& provider, const auto& env) {
        result = provider.getInstance(env, request.ns(), bare, selection.localOnly, selection.includeQualifiers,
                                      selection.includeClassOrigin, selection.propertyList, cimClass);
    });
    if (!served) {
        throw CimError(Status::NotFound, wanted.toString().c_str());
    }
    if (!result) {
        throw CimError(Status::Failed, "Provider erroneously returned a NULL CIMInstance");
    }
    return shaped(result, cimClass, selection.propertyList, wanted);
}

void Cimom::enumInstances(const RequestContext& context, const String& ns, const String& className,
                          const InstanceSelection& selection, CIMInstanceResultHandlerIFC& result) {
    Request request(*this, context, ns, Access::Read);
    const CIMClass& requested = request.classOf(className);
    for (const CIMClass* const cimClass : request.family(requested)) {
        ShapingHandler handler(repository_, request.ns(), *cimClass, selection.propertyList, result);
        request.withInstances(*cimClass, [&](auto& provider, const auto& env) {
            provider.enumInstances(env, request.ns(), cimClass->getName(), handler, selection.localOnly, selection.deep,
                                   selection.includeQualifiers, selection.includeClassOrigin, selection.propertyList,
                                   requested, *cimClass);
        });
    }
}

void Cimom::enumInstanceNames(const RequestContext& context, const String& ns, const String& className,
                              CIMObjectPathResultHandlerIFC& result) {
    Request request(*this, context, ns, Access::Read);
    for (const CIMClass* const cimClass : request.family(request.classOf(className))) {
        NamingHandler handler(request.ns(), *cimClass, result);
        request.withInstances(*cimClass, [&](auto& provider, const auto& env) {
            provider.enumInstanceNames(env, request.ns(), cimClass->getName(), handler, *cimClass);
        });
    }
}

CIMValue Cimom::getProperty(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                            const String& name) {
    propertyOf(classOf(ns, path.getClassName()), name);
    return getInstance(context, ns, path, InstanceSelection()).getPropertyValue(CIMName(name));
}

} // namespace cimserver::cimom
