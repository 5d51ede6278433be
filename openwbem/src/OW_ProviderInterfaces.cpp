// The default behaviour of the provider interfaces and of what providers are given.

#include "OW_CIM.hpp"
#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_CppIndicationExportProviderIFC.hpp"
#include "OW_CppIndicationProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"
#include "OW_CppPolledProviderIFC.hpp"
#include "OW_CppProviderBaseIFC.hpp"
#include "OW_CppSecondaryInstanceProviderIFC.hpp"
#include "OW_RepositoryIFC.hpp"
#include "OW_SharedLibrary.hpp"

namespace OpenWBEM {

SharedLibrary::~SharedLibrary() = default;
RepositoryIFC::~RepositoryIFC() = default;
ProviderEnvironmentIFC::~ProviderEnvironmentIFC() = default;

CppProviderBaseIFC::CppProviderBaseIFC() : lastAccess_(0), persist_(false) {}

CppProviderBaseIFC::CppProviderBaseIFC(const CppProviderBaseIFC& arg)
    : IntrusiveCountableBase(arg), lastAccess_(arg.lastAccess_.load()), persist_(arg.persist_.load()) {}

CppProviderBaseIFC::~CppProviderBaseIFC() = default;

void CppProviderBaseIFC::initialize(const ProviderEnvironmentIFCRef&) {}

DateTime CppProviderBaseIFC::getLastAccessTime() const {
    return DateTime(lastAccess_.load());
}

void CppProviderBaseIFC::updateAccessTime() {
    DateTime now;
    now.setToCurrent();
    lastAccess_ = now.get();
}

CppMethodProviderIFC::~CppMethodProviderIFC() = default;

void CppMethodProviderIFC::getMethodProviderInfo(MethodProviderInfo&) {}

CppMethodProviderIFC* CppMethodProviderIFC::getMethodProvider() {
    return this;
}

CppAssociatorProviderIFC::~CppAssociatorProviderIFC() = default;

void CppAssociatorProviderIFC::getAssociatorProviderInfo(AssociatorProviderInfo&) {}

CppAssociatorProviderIFC* CppAssociatorProviderIFC::getAssociatorProvider() {
    return this;
}

CppSecondaryInstanceProviderIFC::~CppSecondaryInstanceProviderIFC() = default;

void CppSecondaryInstanceProviderIFC::filterInstances(const ProviderEnvironmentIFCRef&, const String&, const String&,
                                                      CIMInstanceArray&, WBEMFlags::ELocalOnlyFlag,
                                                      WBEMFlags::EDeepFlag, WBEMFlags::EIncludeQualifiersFlag,
                                                      WBEMFlags::EIncludeClassOriginFlag, const StringArray*,
                                                      const CIMClass&, const CIMClass&) {}

void CppSecondaryInstanceProviderIFC::createInstance(const ProviderEnvironmentIFCRef&, const String&,
                                                     const CIMInstance&) {}

void CppSecondaryInstanceProviderIFC::modifyInstance(const ProviderEnvironmentIFCRef&, const String&,
                                                     const CIMInstance&, const CIMInstance&,
                                                     WBEMFlags::EIncludeQualifiersFlag, const StringArray*,
                                                     const CIMClass&) {}

void CppSecondaryInstanceProviderIFC::deleteInstance(const ProviderEnvironmentIFCRef&, const String&,
                                                     const CIMObjectPath&) {}

CppSecondaryInstanceProviderIFC* CppSecondaryInstanceProviderIFC::getSecondaryInstanceProvider() {
    return this;
}

CppPolledProviderIFC::~CppPolledProviderIFC() = default;

void CppPolledProviderIFC::doCooperativeCancel() {}

void CppPolledProviderIFC::doDefinitiveCancel() {}

CppPolledProviderIFC* CppPolledProviderIFC::getPolledProvider() {
    return this;
}

CppIndicationProviderIFC::~CppIndicationProviderIFC() = default;

void CppIndicationProviderIFC::getIndicationProviderInfo(IndicationProviderInfo&) {}

void CppIndicationProviderIFC::activateFilter(const ProviderEnvironmentIFCRef&, const WQLSelectStatement&,
                                              const String&, const String&, const StringArray&, bool) {}

void CppIndicationProviderIFC::authorizeFilter(const ProviderEnvironmentIFCRef&, const WQLSelectStatement&,
                                               const String&, const String&, const StringArray&, const String&) {}

void CppIndicationProviderIFC::deActivateFilter(const ProviderEnvironmentIFCRef&, const WQLSelectStatement&,
                                                const String&, const String&, const StringArray&, bool) {}

int CppIndicationProviderIFC::mustPoll(const ProviderEnvironmentIFCRef&, const WQLSelectStatement&, const String&,
                                       const String&, const StringArray&) {
    return 0;
}

CppIndicationProviderIFC* CppIndicationProviderIFC::getIndicationProvider() {
    return this;
}

CppIndicationExportProviderIFC::~CppIndicationExportProviderIFC() = default;

void CppIndicationExportProviderIFC::doCooperativeCancel() {}

void CppIndicationExportProviderIFC::doDefinitiveCancel() {}

CppIndicationExportProviderIFC* CppIndicationExportProviderIFC::getIndicationExportProvider() {
    return this;
}

} // namespace OpenWBEM
