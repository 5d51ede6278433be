// The CIM operations over the schema and the providers, in OpenWBEM's types: what the CIM-XML side and a provider's own
// CIMOM handle both call. Nothing here knows of XML or HTTP.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/SchemaCheck.hpp"
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

using namespace OpenWBEM; // its types are this folder's vocabulary

/// Follows an operation that changes something.
class ChangeObserver {
  public:
    virtual ~ChangeObserver() = default;
    /// The properties that the provider is to be handed, maybe none, and the instance before.
    virtual void onModification(const CIMPropertyArray& changes, const CIMInstance& previous) = 0;
    /// Just before a provider is called to change something. What it throws ends the operation.
    virtual void beforeChange() = 0;
    /// Whether the instance is to be read again for afterModification.
    virtual bool wantsResult() const { return true; }
    /// The instance after a modification, whether that failed or not. Not called when it cannot be read.
    virtual void afterModification(const CIMInstance& present) = 0;
};

/// Who sent the request and with which rights.
struct RequestContext {
    std::string user; ///< empty without authentication
    std::string peer;
    bool mayWrite = true;
    std::string operationName{"a call"};           ///< of the protocol's operation or the method, for reports
    std::shared_ptr<OperationContext> operation{}; ///< what providers share within one request; made on demand
    ChangeObserver* observer = nullptr;            ///< of this operation, not of those that a provider calls in turn
};

/// What a read returns of each instance. A null property list means all, an empty one none.
struct InstanceSelection {
    WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY;
    WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP;
    WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS;
    WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN;
    const StringArray* propertyList = nullptr;
};

/// The four association operations' filters; an empty text filters nothing. The class that References and
/// ReferenceNames filter by is assocClass; they look at role besides.
struct AssociationFilter {
    String assocClass;
    String resultClass;
    String role;
    String resultRole;
};

enum class AssociationEnd { Associator, Reference };

/// The class's property. Throws NoSuchProperty.
const CIMProperty& propertyOf(const CIMClass& cimClass, const char* name);

/// Every operation throws CIMException with the code and text meant for the client: AccessDenied and
/// InvalidNamespace as admit, InvalidClass for an unknown class (NotFound in methods and associations), otherwise what
/// the provider threw; whatever else a provider throws is turned into Failed here. `ns` is a namespace name such as
/// "root/cimv2", in any case, with or without a leading slash.
class Cimom {
  public:
    struct Settings {
        bool forwardUnchanged = false; ///< ModifyInstance passes unchanged properties on too
    };

    /// Both must outlive the object. The schema must be complete.
    Cimom(const schema::Repository& repository, provider::ProviderHost& host, Settings settings);
    Cimom(const Cimom&) = delete;
    Cimom& operator=(const Cimom&) = delete;

    const schema::Repository& repository() const { return repository_; }

    /// Throws AccessDenied for a write by a user who may only read, and InvalidNamespace. Returns the namespace in its
    /// own spelling. Every operation on instances and methods checks with it.
    String admit(const RequestContext& context, const String& ns, provider::Access access) const;
    /// The namespace in its own spelling. Throws InvalidNamespace.
    String namespaceOf(const String& ns) const;

    /// The class whole, with inherited properties and qualifiers: what requests are converted by. Throws
    /// InvalidNamespace, or `missing` when there is no such class.
    const CIMClass& classOf(const String& ns, const String& className, Status missing = Status::InvalidClass) const;

    /// The direct (or with `deep` all) subclasses; an empty name asks from the top. Throws as classOf.
    std::vector<const CIMClass*> subclassesOf(const String& ns, const String& className, bool deep) const;
    /// Throws InvalidNamespace or NotFound.
    const CIMQualifierType& qualifierType(const String& ns, const String& name) const;

    /// Loads and initializes a provider now instead of at its first use. Throws what its first request would get.
    void preload(const std::string& id);

    CIMInstance getInstance(const RequestContext&, const String& ns, const CIMObjectPath& path,
                            const InstanceSelection&);
    void enumInstances(const RequestContext&, const String& ns, const String& className, const InstanceSelection&,
                       CIMInstanceResultHandlerIFC& result);
    void enumInstanceNames(const RequestContext&, const String& ns, const String& className,
                           CIMObjectPathResultHandlerIFC& result);

    /// `modified` holds the properties of the request in request order, each already of its class's type; `path` names
    /// the instance. The provider gets those that `propertyList` names, or, without a list, those whose value differs
    /// from the present one (all with Settings::forwardUnchanged).
    void modifyInstance(const RequestContext&, const String& ns, const CIMObjectPath& path, const CIMInstance& modified,
                        WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* propertyList);
    CIMObjectPath createInstance(const RequestContext&, const String& ns, const CIMInstance& instance);
    void deleteInstance(const RequestContext&, const String& ns, const CIMObjectPath& path);

    CIMValue getProperty(const RequestContext&, const String& ns, const CIMObjectPath& path, const String& name);
    void setProperty(const RequestContext&, const String& ns, const CIMObjectPath& path, const String& name,
                     const CIMValue& value);

    /// Gives the input parameters as the client sent them, already of the method's types.
    using InputReader = std::function<CIMParamValueArray(const CIMMethod&)>;

    /// The instance that the path names is read first: without it the method is not called. Parameters missing in `in`,
    /// which is asked last, are filled in here. On return `out` holds the output parameters.
    CIMValue invokeMethod(const RequestContext&, const String& ns, const CIMObjectPath& path, const String& methodName,
                          const InputReader& in, CIMParamValueArray& out);

    /// What the association operations about a class find: classes.
    std::vector<const CIMClass*> classesFor(AssociationEnd wanted, const RequestContext&, const String& ns,
                                            const CIMObjectPath& path, const AssociationFilter& filter) const;

    /// About a class the ...Names operations give the names of classes; the others throw InvalidParameter.
    void associators(const RequestContext&, const String& ns, const CIMObjectPath& path, const AssociationFilter&,
                     const InstanceSelection&, CIMInstanceResultHandlerIFC& result);
    void associatorNames(const RequestContext&, const String& ns, const CIMObjectPath& path, const AssociationFilter&,
                         CIMObjectPathResultHandlerIFC& result);
    void references(const RequestContext&, const String& ns, const CIMObjectPath& path, const AssociationFilter&,
                    const InstanceSelection&, CIMInstanceResultHandlerIFC& result);
    void referenceNames(const RequestContext&, const String& ns, const CIMObjectPath& path, const AssociationFilter&,
                        CIMObjectPathResultHandlerIFC& result);

  private:
    class Request;
    template <class Use>
    void forAssociations(const RequestContext&, const String& ns, const CIMObjectPath& path, const String& named,
                         Use&& use);
    void requireAssociation(const String& ns, const String& named) const;
    static void requireTarget(Request& request, const CIMObjectPath& target, const CIMClass& cimClass);

    const schema::Repository& repository_;
    provider::ProviderHost& host_;
    Settings settings_;
    SchemaCheck schemaCheck_;
    std::shared_ptr<Cimom*> self_; ///< lets the handles given to providers notice the end of this object
};

} // namespace cimserver::cimom
