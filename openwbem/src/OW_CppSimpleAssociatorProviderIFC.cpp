#include "OW_CppSimpleAssociatorProviderIFC.hpp"

#include "OW_CIM.hpp"
#include "OW_CIMOMHandleIFC.hpp"

#include <utility>

namespace OpenWBEM {

using namespace WBEMFlags;

namespace {

/// Calls a function with each association.
template <class Function>
class ForEachAssociation : public CIMInstanceResultHandlerIFC {
  public:
    explicit ForEachAssociation(Function function) : function_(std::move(function)) {}

  protected:
    void doHandle(const CIMInstance& association) override { function_(association); }

  private:
    Function function_;
};

template <class Function>
ForEachAssociation<Function> forEachAssociation(Function function) {
    return ForEachAssociation<Function>(std::move(function));
}

bool playsRole(const CIMProperty& reference, const String& role) {
    return role.empty() || role.equalsIgnoreCase(reference.getName());
}

CIMObjectPath pathIn(const String& ns, const CIMValue& reference) {
    CIMObjectPath path = reference.toCIMObjectPath();
    return path.getNameSpace().empty() ? path.setNameSpace(ns) : path;
}

/// The objects at the other ends: all that the association refers to but one reference to the object itself.
CIMObjectPathArray otherEnds(const CIMInstance& association, const String& ns, const CIMObjectPath& objectName,
                             const String& role, const String& resultRole) {
    CIMObjectPath self(objectName);
    self.setNameSpace(objectName.getNameSpace().empty() ? ns : objectName.getNameSpace());
    bool selfSeen = false;
    CIMObjectPathArray ends;
    const CIMPropertyArray references = association.getProperties(CIMDataType::REFERENCE);
    for (const CIMProperty& reference : references) {
        if (!reference.getValue()) {
            continue;
        }
        const CIMObjectPath path = pathIn(ns, reference.getValue());
        if (!selfSeen && path == self && playsRole(reference, role)) {
            selfSeen = true;
        } else if (playsRole(reference, resultRole)) {
            ends.push_back(path);
        }
    }
    return ends;
}

} // namespace

void CppSimpleAssociatorProviderIFC::associators(const ProviderEnvironmentIFCRef& env,
                                                 CIMInstanceResultHandlerIFC& result, const String& ns,
                                                 const CIMObjectPath& objectName, const String& assocClass,
                                                 const String& resultClass, const String& role,
                                                 const String& resultRole, EIncludeQualifiersFlag includeQualifiers,
                                                 EIncludeClassOriginFlag includeClassOrigin,
                                                 const StringArray* propertyList) {
    const CIMOMHandleIFCRef manager = env->getCIMOMHandle();
    auto handler = forEachAssociation([&](const CIMInstance& association) {
        const CIMObjectPathArray ends = otherEnds(association, ns, objectName, role, resultRole);
        for (const CIMObjectPath& end : ends) {
            CIMInstance instance = manager->getInstance(end.getNameSpace(), end, E_NOT_LOCAL_ONLY, includeQualifiers,
                                                        includeClassOrigin, propertyList);
            result.handle(instance.setKeys(end.getKeys()));
        }
    });
    doReferences(env, handler, ns, objectName, manager->getClass(ns, assocClass), resultClass, role, resultRole);
}

void CppSimpleAssociatorProviderIFC::associatorNames(const ProviderEnvironmentIFCRef& env,
                                                     CIMObjectPathResultHandlerIFC& result, const String& ns,
                                                     const CIMObjectPath& objectName, const String& assocClass,
                                                     const String& resultClass, const String& role,
                                                     const String& resultRole) {
    auto handler = forEachAssociation([&](const CIMInstance& association) {
        const CIMObjectPathArray ends = otherEnds(association, ns, objectName, role, resultRole);
        for (const CIMObjectPath& end : ends) {
            result.handle(end);
        }
    });
    doReferences(env, handler, ns, objectName, env->getCIMOMHandle()->getClass(ns, assocClass), resultClass, role,
                 resultRole);
}

void CppSimpleAssociatorProviderIFC::references(const ProviderEnvironmentIFCRef& env,
                                                CIMInstanceResultHandlerIFC& result, const String& ns,
                                                const CIMObjectPath& objectName, const String& resultClass,
                                                const String& role, EIncludeQualifiersFlag includeQualifiers,
                                                EIncludeClassOriginFlag includeClassOrigin,
                                                const StringArray* propertyList) {
    auto handler = forEachAssociation([&](const CIMInstance& association) {
        result.handle(association.clone(E_NOT_LOCAL_ONLY, includeQualifiers, includeClassOrigin, propertyList));
    });
    doReferences(env, handler, ns, objectName, env->getCIMOMHandle()->getClass(ns, resultClass), String(), role,
                 String());
}

void CppSimpleAssociatorProviderIFC::referenceNames(const ProviderEnvironmentIFCRef& env,
                                                    CIMObjectPathResultHandlerIFC& result, const String& ns,
                                                    const CIMObjectPath& objectName, const String& resultClass,
                                                    const String& role) {
    auto handler =
        forEachAssociation([&](const CIMInstance& association) { result.handle(CIMObjectPath(ns, association)); });
    doReferences(env, handler, ns, objectName, env->getCIMOMHandle()->getClass(ns, resultClass), String(), role,
                 String());
}

} // namespace OpenWBEM
