#include "cimserver/cimom/DeclaredProvider.hpp"

#include "cimserver/common/Log.hpp"

#include "OW_CIM.hpp"
#include "OW_CppSimpleAssociatorProviderIFC.hpp"
#include "OW_CppSimpleInstanceProviderIFC.hpp"

namespace cimserver::cimom {

using namespace OpenWBEM;
using Environment = ProviderEnvironmentIFCRef;

namespace {

class DeclaredProvider : public CppSimpleInstanceProviderIFC, public CppSimpleAssociatorProviderIFC {
  public:
    DeclaredProvider(const schema::Repository& repository, Status missing)
        : repository_(repository), missing_(missing) {}

    void doSimpleEnumInstances(const Environment&, const String& ns, const CIMClass& cimClass,
                               CIMInstanceResultHandlerIFC& result, EPropertiesFlag) override {
        for (const CIMInstance* const instance : repository_.instances(ns, cimClass.getName())) {
            result.handle(*instance);
        }
    }
    CIMInstance getInstance(const Environment&, const String& ns, const CIMObjectPath& path,
                            WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                            WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                            const CIMClass&) override {
        const CIMInstance* const found = repository_.findInstance(ns, path);
        if (found == nullptr) {
            throw CimError(missing_, CIMObjectPath(path).setNameSpace(ns).toString().c_str());
        }
        return found->clone(localOnly, includeQualifiers, includeClassOrigin, propertyList);
    }
    CIMObjectPath createInstance(const Environment&, const String&, const CIMInstance& instance) override {
        throw CimError(Status::NotSupported,
                       std::string("No provider serves the class ") + instance.getClassName().c_str());
    }
    void modifyInstance(const Environment&, const String&, const CIMInstance&, const CIMInstance&,
                        WBEMFlags::EIncludeQualifiersFlag, const StringArray*, const CIMClass&) override {
        throw CimError(Status::NotSupported, kReadOnly);
    }
    void deleteInstance(const Environment&, const String&, const CIMObjectPath&) override {
        throw CimError(Status::NotSupported, kReadOnly);
    }

  protected:
    void doReferences(const Environment&, CIMInstanceResultHandlerIFC& result, const String& ns,
                      const CIMObjectPath& objectName, const CIMClass& assocClass, const String& resultClass,
                      const String& role, const String&) override {
        for (const CIMInstance* const association : repository_.instances(ns, assocClass.getName())) {
            const CIMInstance seen = seenFrom(objectName, *association, ns, resultClass, role);
            try {
                if (seen) {
                    result.handle(seen);
                }
            } catch (const CIMException& error) {
                if (error.getErrNo() != CIMException::NOT_FOUND) {
                    throw; // what was not found is the object at the other end, which is left out
                }
            }
        }
    }

  private:
    static constexpr const char* kReadOnly = "What the schema declares cannot be changed";

    /// The association without those other ends that are not of the result class; null when it does not refer to the
    /// object in the role.
    CIMInstance seenFrom(const CIMObjectPath& object, const CIMInstance& association, const String& ns,
                         const String& resultClass, const String& role) const {
        CIMInstance seen(association);
        bool found = false;
        for (const CIMProperty& end : association.getProperties(CIMDataType::REFERENCE)) {
            const CIMObjectPath path = end.getValue() ? end.getValue().toCIMObjectPath() : CIMObjectPath();
            if (!found && path == object && (role.empty() || role.equalsIgnoreCase(end.getName()))) {
                found = true;
            } else if (!resultClass.empty() && !repository_.isA(ns, path.getClassName(), resultClass)) {
                seen.removeProperty(CIMName(end.getName()));
            }
        }
        return found ? seen : CIMInstance(CIMNULL);
    }

    const schema::Repository& repository_;
    Status missing_;
};

} // namespace

IntrusiveReference<CppAssociatorProviderIFC> declaredProvider(const schema::Repository& repository, Status missing) {
    return IntrusiveReference<CppAssociatorProviderIFC>(new DeclaredProvider(repository, missing));
}

void warnOfHiddenInstances(const schema::Repository& repository, const provider::ProviderHost& host) {
    for (const String& ns : repository.namespaces()) {
        for (const CIMClass* const one : repository.subclasses(ns, "", true)) {
            std::string id;
            if (!repository.instances(ns, one->getName()).empty()) {
                outcomeOf([&] { id = host.instanceProvider(ns, *one); }); // its failure is told to who asks for them
            }
            if (!id.empty()) {
                log::write(log::Level::Warning, "schema",
                           std::string("Provider ") + id + " serves " + one->getName().c_str() +
                               ", so the instances that the schema declares of it are not seen");
            }
        }
    }
}

} // namespace cimserver::cimom
