// The CIM operations over the schema and the providers, in OpenWBEM's types: what the CIM-XML side and a provider's own
// CIMOM handle both call. Nothing here knows of XML or HTTP.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/provider/Gate.hpp"

#include "OW_CIM.hpp"
#include "OW_ResultHandlerIFC.hpp"
#include "OW_WBEMFlags.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace cimserver::schema {
class Repository;
}
namespace cimserver::provider {
class ProviderHost;
}

namespace cimserver::cimom {

/// Who sent the request and with which rights; lives as long as the request.
struct RequestContext {
    std::string user; ///< empty without authentication
    std::string peer;
    bool mayWrite = true;
    std::shared_ptr<OpenWBEM::OperationContext>
        operation{}; ///< what providers share within one request; made on demand
    /// When set, modifyInstance and setProperty call it with the properties that the provider is to change, before it
    /// does: what the audit line names.
    std::function<void(const OpenWBEM::CIMPropertyArray&)> onChange{};
};

/// What a read returns of each instance. A null property list means all, an empty one none.
struct InstanceSelection {
    OpenWBEM::WBEMFlags::ELocalOnlyFlag localOnly = OpenWBEM::WBEMFlags::E_NOT_LOCAL_ONLY;
    OpenWBEM::WBEMFlags::EDeepFlag deep = OpenWBEM::WBEMFlags::E_DEEP;
    OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers = OpenWBEM::WBEMFlags::E_EXCLUDE_QUALIFIERS;
    OpenWBEM::WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = OpenWBEM::WBEMFlags::E_EXCLUDE_CLASS_ORIGIN;
    const OpenWBEM::StringArray* propertyList = nullptr;
};

/// The four association operations' filters; an empty text filters nothing.
struct AssociationFilter {
    OpenWBEM::String assocClass;
    OpenWBEM::String resultClass;
    OpenWBEM::String role;
    OpenWBEM::String resultRole;
};

/// The class's property. Throws NoSuchProperty.
OpenWBEM::CIMProperty propertyOf(const OpenWBEM::CIMClass& cimClass, const OpenWBEM::String& name);

/// Every operation throws OpenWBEM::CIMException with the code and text meant for the client: AccessDenied and
/// InvalidNamespace as admit, InvalidClass for an unknown class, otherwise what the provider threw; whatever else a
/// provider throws is turned into Failed here. `ns` is a namespace name such as "root/cimv2", in any case, with or
/// without a leading slash.
class Cimom {
  public:
    struct Settings {
        bool forwardUnchanged = false; ///< ModifyInstance hands unchanged properties on too
    };

    /// Both must outlive the object. The schema is complete by now.
    Cimom(const schema::Repository& repository, provider::ProviderHost& host, Settings settings);
    Cimom(const Cimom&) = delete;
    Cimom& operator=(const Cimom&) = delete;

    const schema::Repository& repository() const { return repository_; }

    /// Throws AccessDenied for a write by a user who may only read, and InvalidNamespace. Returns the namespace in its
    /// own spelling. Every operation begins with it.
    OpenWBEM::String admit(const RequestContext& context, const OpenWBEM::String& ns, provider::Access access) const;
    /// The namespace in its own spelling. Throws InvalidNamespace.
    OpenWBEM::String namespaceOf(const OpenWBEM::String& ns) const;

    /// The class whole, with inherited properties and qualifiers: what requests are converted by. Throws
    /// InvalidNamespace, or `missing` when there is no such class.
    const OpenWBEM::CIMClass& classOf(const OpenWBEM::String& ns, const OpenWBEM::String& className,
                                      Status missing = Status::InvalidClass) const;

    /// The direct (or with `deep` all) subclasses; an empty name asks from the top. Throws as classOf.
    std::vector<const OpenWBEM::CIMClass*> subclassesOf(const OpenWBEM::String& ns, const OpenWBEM::String& className,
                                                        bool deep) const;
    /// Throws InvalidNamespace or NotFound.
    const OpenWBEM::CIMQualifierType& qualifierType(const OpenWBEM::String& ns, const OpenWBEM::String& name) const;

    /// Loads and initializes a provider now instead of at its first use. Throws what its first request would get.
    void preload(const std::string& id);

    OpenWBEM::CIMInstance getInstance(const RequestContext&, const OpenWBEM::String& ns,
                                      const OpenWBEM::CIMObjectPath& path, const InstanceSelection&);
    void enumInstances(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::String& className,
                       const InstanceSelection&, OpenWBEM::CIMInstanceResultHandlerIFC& result);
    void enumInstanceNames(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::String& className,
                           OpenWBEM::CIMObjectPathResultHandlerIFC& result);

    /// `modified` holds the properties of the request in request order, each already of its class's type; `path` names
    /// the instance. The provider gets those whose value differs from the present one or which `propertyList` names.
    void modifyInstance(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path,
                        const OpenWBEM::CIMInstance& modified,
                        OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                        const OpenWBEM::StringArray* propertyList);
    OpenWBEM::CIMObjectPath createInstance(const RequestContext&, const OpenWBEM::String& ns,
                                           const OpenWBEM::CIMInstance& instance);
    void deleteInstance(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path);

    OpenWBEM::CIMValue getProperty(const RequestContext&, const OpenWBEM::String& ns,
                                   const OpenWBEM::CIMObjectPath& path, const OpenWBEM::String& name);
    void setProperty(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path,
                     const OpenWBEM::String& name, const OpenWBEM::CIMValue& value);

    /// `in` as the client sent it, already of the method's types; missing ones are filled in here. On return `out`
    /// holds the output parameters.
    OpenWBEM::CIMValue invokeMethod(const RequestContext&, const OpenWBEM::String& ns,
                                    const OpenWBEM::CIMObjectPath& path, const OpenWBEM::String& methodName,
                                    const OpenWBEM::CIMParamValueArray& in, OpenWBEM::CIMParamValueArray& out);

    void associators(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path,
                     const AssociationFilter&, const InstanceSelection&, OpenWBEM::CIMInstanceResultHandlerIFC& result);
    void associatorNames(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path,
                         const AssociationFilter&, OpenWBEM::CIMObjectPathResultHandlerIFC& result);
    void references(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path,
                    const AssociationFilter&, const InstanceSelection&, OpenWBEM::CIMInstanceResultHandlerIFC& result);
    void referenceNames(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path,
                        const AssociationFilter&, OpenWBEM::CIMObjectPathResultHandlerIFC& result);

  private:
    class Request;
    template <class Use>
    void forAssociations(const RequestContext&, const OpenWBEM::String& ns, const OpenWBEM::CIMObjectPath& path,
                         const OpenWBEM::String& named, const char* parameter, Use&& use);

    const schema::Repository& repository_;
    provider::ProviderHost& host_;
    Settings settings_;
    std::shared_ptr<Cimom*> self_; ///< for the handles given to providers: they must notice when this has ended
};

} // namespace cimserver::cimom
