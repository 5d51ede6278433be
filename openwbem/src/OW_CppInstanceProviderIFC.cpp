// The instance provider interface and the two conveniences over it.

#include "OW_CppInstanceProviderIFC.hpp"

#include "OW_CIM.hpp"
#include "OW_CppReadOnlyInstanceProviderIFC.hpp"
#include "OW_CppSimpleInstanceProviderIFC.hpp"

namespace OpenWBEM {

using namespace WBEMFlags;

namespace {
// What the operations on instances are asked for beside the instance.
struct Wanted {
    ELocalOnlyFlag localOnly;
    EIncludeQualifiersFlag includeQualifiers;
    EIncludeClassOriginFlag includeClassOrigin;
    const StringArray* propertyList;
};

// Hands the instance of each name on.
class InstanceGetter : public CIMObjectPathResultHandlerIFC {
  public:
    InstanceGetter(CppInstanceProviderIFC& provider, const ProviderEnvironmentIFCRef& env, const String& ns,
                   const Wanted& wanted, const CIMClass& cimClass, CIMInstanceResultHandlerIFC& result)
        : m_provider(provider), m_env(env), m_ns(ns), m_wanted(wanted), m_class(cimClass), m_result(result) {}

  protected:
    void doHandle(const CIMObjectPath& name) override {
        m_result.handle(m_provider.getInstance(m_env, m_ns, name, m_wanted.localOnly, m_wanted.includeQualifiers,
                                               m_wanted.includeClassOrigin, m_wanted.propertyList, m_class));
    }

  private:
    CppInstanceProviderIFC& m_provider;
    const ProviderEnvironmentIFCRef& m_env;
    const String& m_ns;
    const Wanted& m_wanted;
    const CIMClass& m_class;
    CIMInstanceResultHandlerIFC& m_result;
};

// Hands the name of each instance on.
class NameMaker : public CIMInstanceResultHandlerIFC {
  public:
    NameMaker(const String& ns, CIMObjectPathResultHandlerIFC& result) : m_ns(ns), m_result(result) {}

  protected:
    void doHandle(const CIMInstance& instance) override { m_result.handle(CIMObjectPath(m_ns, instance)); }

  private:
    const String& m_ns;
    CIMObjectPathResultHandlerIFC& m_result;
};

CIMInstance cutDown(const CIMInstance& instance, const Wanted& wanted) {
    return instance.clone(wanted.localOnly, wanted.includeQualifiers, wanted.includeClassOrigin, wanted.propertyList);
}

// Hands on of each instance what is wanted.
class InstanceCutter : public CIMInstanceResultHandlerIFC {
  public:
    InstanceCutter(const Wanted& wanted, CIMInstanceResultHandlerIFC& result) : m_wanted(wanted), m_result(result) {}

  protected:
    void doHandle(const CIMInstance& instance) override { m_result.handle(cutDown(instance, m_wanted)); }

  private:
    const Wanted& m_wanted;
    CIMInstanceResultHandlerIFC& m_result;
};

// Keeps the instance of one name.
class InstanceFinder : public CIMInstanceResultHandlerIFC {
  public:
    InstanceFinder(const String& ns, const CIMObjectPath& name) : m_ns(ns), m_name(name), m_found(CIMNULL) {
        m_name.setNameSpace(ns);
    }
    const CIMInstance& found() const { return m_found; }

  protected:
    void doHandle(const CIMInstance& instance) override {
        if (!m_found && CIMObjectPath(m_ns, instance) == m_name) {
            m_found = instance;
        }
    }

  private:
    const String& m_ns;
    CIMObjectPath m_name;
    CIMInstance m_found;
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

CppReadOnlyInstanceProviderIFC::~CppReadOnlyInstanceProviderIFC() = default;

CIMObjectPath CppReadOnlyInstanceProviderIFC::createInstance(const ProviderEnvironmentIFCRef&, const String&,
                                                             const CIMInstance&) {
    OW_THROWCIM(CIMException::NOT_SUPPORTED);
}

void CppReadOnlyInstanceProviderIFC::modifyInstance(const ProviderEnvironmentIFCRef&, const String&, const CIMInstance&,
                                                    const CIMInstance&, EIncludeQualifiersFlag, const StringArray*,
                                                    const CIMClass&) {
    OW_THROWCIM(CIMException::NOT_SUPPORTED);
}

void CppReadOnlyInstanceProviderIFC::deleteInstance(const ProviderEnvironmentIFCRef&, const String&,
                                                    const CIMObjectPath&) {
    OW_THROWCIM(CIMException::NOT_SUPPORTED);
}

CppSimpleInstanceProviderIFC::~CppSimpleInstanceProviderIFC() = default;

void CppSimpleInstanceProviderIFC::enumInstanceNames(const ProviderEnvironmentIFCRef& env, const String& ns,
                                                     const String&, CIMObjectPathResultHandlerIFC& result,
                                                     const CIMClass& cimClass) {
    NameMaker maker(ns, result);
    doSimpleEnumInstances(env, ns, cimClass, maker, E_KEY_PROPERTIES_ONLY);
}

void CppSimpleInstanceProviderIFC::enumInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const String&,
                                                 CIMInstanceResultHandlerIFC& result, ELocalOnlyFlag localOnly,
                                                 EDeepFlag, EIncludeQualifiersFlag includeQualifiers,
                                                 EIncludeClassOriginFlag includeClassOrigin,
                                                 const StringArray* propertyList, const CIMClass&,
                                                 const CIMClass& cimClass) {
    const Wanted wanted = {localOnly, includeQualifiers, includeClassOrigin, propertyList};
    InstanceCutter cutter(wanted, result);
    doSimpleEnumInstances(env, ns, cimClass, cutter, E_ALL_PROPERTIES);
}

CIMInstance CppSimpleInstanceProviderIFC::getInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                                      const CIMObjectPath& instanceName, ELocalOnlyFlag localOnly,
                                                      EIncludeQualifiersFlag includeQualifiers,
                                                      EIncludeClassOriginFlag includeClassOrigin,
                                                      const StringArray* propertyList, const CIMClass& cimClass) {
    InstanceFinder finder(ns, instanceName);
    doSimpleEnumInstances(env, ns, cimClass, finder, E_ALL_PROPERTIES);
    if (!finder.found()) {
        OW_THROWCIMMSG(CIMException::NOT_FOUND, instanceName.toString().c_str());
    }
    const Wanted wanted = {localOnly, includeQualifiers, includeClassOrigin, propertyList};
    return cutDown(finder.found(), wanted);
}

} // namespace OpenWBEM
