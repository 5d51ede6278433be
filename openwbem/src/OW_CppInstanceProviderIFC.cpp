// The instance provider interface and the two convenience classes on top of it.

#include "OW_CppInstanceProviderIFC.hpp"

#include "OW_CIM.hpp"
#include "OW_CppReadOnlyInstanceProviderIFC.hpp"
#include "OW_CppSimpleInstanceProviderIFC.hpp"

namespace OpenWBEM {

using namespace WBEMFlags;

namespace {
// The filters that a request for instances carries.
struct Wanted {
    ELocalOnlyFlag localOnly;
    EIncludeQualifiersFlag includeQualifiers;
    EIncludeClassOriginFlag includeClassOrigin;
    const StringArray* propertyList;
};

// Passes on the instance of each name.
class InstanceGetter : public CIMObjectPathResultHandlerIFC {
  public:
    InstanceGetter(CppInstanceProviderIFC& provider, const ProviderEnvironmentIFCRef& env, const String& ns,
                   const Wanted& wanted, const CIMClass& cimClass, CIMInstanceResultHandlerIFC& result)
        : provider_(provider), env_(env), ns_(ns), wanted_(wanted), class_(cimClass), result_(result) {}

  protected:
    void doHandle(const CIMObjectPath& name) override {
        result_.handle(provider_.getInstance(env_, ns_, name, wanted_.localOnly, wanted_.includeQualifiers,
                                             wanted_.includeClassOrigin, wanted_.propertyList, class_));
    }

  private:
    CppInstanceProviderIFC& provider_;
    const ProviderEnvironmentIFCRef& env_;
    const String& ns_;
    const Wanted& wanted_;
    const CIMClass& class_;
    CIMInstanceResultHandlerIFC& result_;
};

// Passes on the name of each instance.
class NameMaker : public CIMInstanceResultHandlerIFC {
  public:
    NameMaker(const String& ns, CIMObjectPathResultHandlerIFC& result) : ns_(ns), result_(result) {}

  protected:
    void doHandle(const CIMInstance& instance) override { result_.handle(CIMObjectPath(ns_, instance)); }

  private:
    const String& ns_;
    CIMObjectPathResultHandlerIFC& result_;
};

// Passes on each instance, filtered.
class InstanceFilter : public CIMInstanceResultHandlerIFC {
  public:
    InstanceFilter(const Wanted& wanted, EDeepFlag deep, const CIMClass& requestedClass, const CIMClass& cimClass,
                   CIMInstanceResultHandlerIFC& result)
        : wanted_(wanted), deep_(deep), requestedClass_(requestedClass), class_(cimClass), result_(result) {}

  protected:
    void doHandle(const CIMInstance& instance) override {
        result_.handle(instance.clone(wanted_.localOnly, deep_, wanted_.includeQualifiers, wanted_.includeClassOrigin,
                                      wanted_.propertyList, requestedClass_, class_));
    }

  private:
    const Wanted& wanted_;
    EDeepFlag deep_;
    const CIMClass& requestedClass_;
    const CIMClass& class_;
    CIMInstanceResultHandlerIFC& result_;
};

// Thrown through the provider to end its enumeration; not an Exception, so that it is not mistaken for a failure.
struct Found {};

// Keeps the instance of one name, and throws Found.
class InstanceFinder : public CIMInstanceResultHandlerIFC {
  public:
    explicit InstanceFinder(const CIMObjectPath& name) : name_(name), found_(CIMNULL) {}
    const CIMInstance& found() const { return found_; }

  protected:
    void doHandle(const CIMInstance& instance) override {
        if (CIMObjectPath(name_.getNameSpace(), instance) == name_) {
            found_ = instance;
            throw Found();
        }
    }

  private:
    const CIMObjectPath& name_;
    CIMInstance found_;
};
} // namespace

CppInstanceProviderIFC::~CppInstanceProviderIFC() = default;

void CppInstanceProviderIFC::getInstanceProviderInfo(InstanceProviderInfo&) {}

void CppInstanceProviderIFC::enumInstances(const ProviderEnvironmentIFCRef& env, const String& ns,
                                           const String& className, CIMInstanceResultHandlerIFC& result,
                                           ELocalOnlyFlag localOnly, EDeepFlag,
                                           EIncludeQualifiersFlag includeQualifiers,
                                           EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                                           const CIMClass&, const CIMClass& cimClass) {
    const Wanted wanted = {localOnly, includeQualifiers, includeClassOrigin, propertyList};
    InstanceGetter getter(*this, env, ns, wanted, cimClass, result);
    enumInstanceNames(env, ns, className, getter, cimClass);
}

CppInstanceProviderIFC* CppInstanceProviderIFC::getInstanceProvider() {
    return this;
}

// The one text for all three operations is deliberate: clients know it.
static const char* const kNotSupported = "DeleteInstance not supported by provider";

CIMObjectPath CppReadOnlyInstanceProviderIFC::createInstance(const ProviderEnvironmentIFCRef&, const String&,
                                                             const CIMInstance&) {
    OW_THROWCIMMSG(CIMException::FAILED, kNotSupported);
}

void CppReadOnlyInstanceProviderIFC::modifyInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMInstance&,
                                                    const CIMInstance&, EIncludeQualifiersFlag, const StringArray*,
                                                    const CIMClass&) {
    OW_THROWCIMMSG(CIMException::FAILED, kNotSupported);
}

void CppReadOnlyInstanceProviderIFC::deleteInstance(const ProviderEnvironmentIFCRef&, const String&,
                                                    const CIMObjectPath&) {
    OW_THROWCIMMSG(CIMException::FAILED, kNotSupported);
}

void CppSimpleInstanceProviderIFC::enumInstanceNames(const ProviderEnvironmentIFCRef& env, const String& ns,
                                                     const String&, CIMObjectPathResultHandlerIFC& result,
                                                     const CIMClass& cimClass) {
    NameMaker maker(ns, result);
    doSimpleEnumInstances(env, ns, cimClass, maker, E_KEY_PROPERTIES_ONLY);
}

void CppSimpleInstanceProviderIFC::enumInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const String&,
                                                 CIMInstanceResultHandlerIFC& result, ELocalOnlyFlag localOnly,
                                                 EDeepFlag deep, EIncludeQualifiersFlag includeQualifiers,
                                                 EIncludeClassOriginFlag includeClassOrigin,
                                                 const StringArray* propertyList, const CIMClass& requestedClass,
                                                 const CIMClass& cimClass) {
    const Wanted wanted = {localOnly, includeQualifiers, includeClassOrigin, propertyList};
    InstanceFilter filter(wanted, deep, requestedClass, cimClass, result);
    doSimpleEnumInstances(env, ns, cimClass, filter, E_ALL_PROPERTIES);
}

CIMInstance CppSimpleInstanceProviderIFC::getInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                                      const CIMObjectPath& instanceName, ELocalOnlyFlag localOnly,
                                                      EIncludeQualifiersFlag includeQualifiers,
                                                      EIncludeClassOriginFlag includeClassOrigin,
                                                      const StringArray* propertyList, const CIMClass& cimClass) {
    InstanceFinder finder(instanceName);
    try {
        doSimpleEnumInstances(env, ns, cimClass, finder, E_ALL_PROPERTIES);
    } catch (const Found&) {
        return finder.found().clone(localOnly, includeQualifiers, includeClassOrigin, propertyList);
    }
    OW_THROWCIMMSG(CIMException::NOT_FOUND, instanceName.toString().c_str());
}

} // namespace OpenWBEM
