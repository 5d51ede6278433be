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

CppProviderBaseIFC::CppProviderBaseIFC() : m_lastAccess(0), m_persist(false) {}

CppProviderBaseIFC::CppProviderBaseIFC(const CppProviderBaseIFC& arg)
    : IntrusiveCountableBase(arg), m_lastAccess(arg.m_lastAccess.load()), m_persist(arg.m_persist.load()) {}

CppProviderBaseIFC::~CppProviderBaseIFC() = default;

void CppProviderBaseIFC::initialize(const ProviderEnvironmentIFCRef&) {}

CppInstanceProviderIFC* CppProviderBaseIFC::getInstanceProvider() {
    return nullptr;
}

CppSecondaryInstanceProviderIFC* CppProviderBaseIFC::getSecondaryInstanceProvider() {
    return nullptr;
}

CppMethodProviderIFC* CppProviderBaseIFC::getMethodProvider() {
    return nullptr;
}

CppAssociatorProviderIFC* CppProviderBaseIFC::getAssociatorProvider() {
    return nullptr;
}

CppIndicationExportProviderIFC* CppProviderBaseIFC::getIndicationExportProvider() {
    return nullptr;
}

CppPolledProviderIFC* CppProviderBaseIFC::getPolledProvider() {
    return nullptr;
}

CppIndicationProviderIFC* CppProviderBaseIFC::getIndicationProvider() {
    return nullptr;
}

bool CppProviderBaseIFC::canUnload() {
    return true;
}

DateTime CppProviderBaseIFC::getLastAccessTime() const {
    return DateTime(m_lastAccess.load());
}

void CppProviderBaseIFC::updateAccessTime() {
    m_lastAccess = DateTime::getCurrent().get();
}

bool CppProviderBaseIFC::getPersist() const {
    return m_persist;
}

void CppProviderBaseIFC::setPersist(bool persist) {
    m_persist = persist;
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

void CppSecondaryInstanceProviderIFC::getSecondaryInstanceProviderInfo(SecondaryInstanceProviderInfo&) {}

void CppSecondaryInstanceProviderIFC::filterInstances(const ProviderEnvironmentIFCRef&, const String&, const String&,
                                                      CIMInstanceArray&, WBEMFlags::ELocalOnlyFlag,
                                                      WBEMFlags::EDeepFlag, WBEMFlags::EIncludeQualifiersFlag,
                                                      WBEMFlags::EIncludeClassOriginFlag, const StringArray*,
                                                      const CIMClass&, const CIMClass&) {}

void CppSecondaryInstanceProviderIFC::instanceCreated(const ProviderEnvironmentIFCRef&, const String&,
                                                      const CIMInstance&) {}

void CppSecondaryInstanceProviderIFC::instanceModified(const ProviderEnvironmentIFCRef&, const String&,
                                                       const CIMInstance&, const CIMInstance&,
                                                       WBEMFlags::EIncludeQualifiersFlag, const StringArray*,
                                                       const CIMClass&) {}

void CppSecondaryInstanceProviderIFC::instanceDeleted(const ProviderEnvironmentIFCRef&, const String&,
                                                      const CIMObjectPath&) {}

CppSecondaryInstanceProviderIFC* CppSecondaryInstanceProviderIFC::getSecondaryInstanceProvider() {
    return this;
}

CppPolledProviderIFC::~CppPolledProviderIFC() = default;

CppPolledProviderIFC* CppPolledProviderIFC::getPolledProvider() {
    return this;
}

CppIndicationProviderIFC::~CppIndicationProviderIFC() = default;

void CppIndicationProviderIFC::getIndicationProviderInfo(IndicationProviderInfo&) {}

void CppIndicationProviderIFC::authorizeFilter(const ProviderEnvironmentIFCRef&, const String&, const String&,
                                               const String&, const StringArray&, const String&) {}

int CppIndicationProviderIFC::mustPoll(const ProviderEnvironmentIFCRef&, const String&, const String&, const String&,
                                       const StringArray&) {
    return 0;
}

CppIndicationProviderIFC* CppIndicationProviderIFC::getIndicationProvider() {
    return this;
}

CppIndicationExportProviderIFC::~CppIndicationExportProviderIFC() = default;

CppIndicationExportProviderIFC* CppIndicationExportProviderIFC::getIndicationExportProvider() {
    return this;
}

} // namespace OpenWBEM
