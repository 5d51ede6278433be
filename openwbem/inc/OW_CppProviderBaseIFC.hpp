// Base of all interfaces of a C++ provider, and the macro that exports a provider from its module.

#pragma once

#include "OW_CIMFwd.hpp"
#include "OW_DateTime.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_ProviderEnvironmentIFC.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_config.h"
#include <atomic>
#include <ctime>

namespace OpenWBEM {

class CppAssociatorProviderIFC;
class CppIndicationExportProviderIFC;
class CppIndicationProviderIFC;
class CppInstanceProviderIFC;
class CppMethodProviderIFC;
class CppPolledProviderIFC;
class CppSecondaryInstanceProviderIFC;

/// A provider derives from one or more of the interfaces that derive from this. The object manager may make and destroy
/// an object without calling initialize(), just to ask what it serves: keep constructor and destructor free of side
/// effects. Throw CIMException only: the client then gets its code and its message.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppProviderBaseIFC : public virtual IntrusiveCountableBase {
  public:
    CppProviderBaseIFC();
    CppProviderBaseIFC(const CppProviderBaseIFC& arg);
    ~CppProviderBaseIFC() override;

    /// Called once before the first request. When it throws, that request fails and the object is destroyed; the next
    /// request makes a new one. Does nothing by default.
    virtual void initialize(const ProviderEnvironmentIFCRef& env);
    /// This object as the given interface, null if it does not implement it. Each interface overrides its own function.
    virtual CppInstanceProviderIFC* getInstanceProvider() { return nullptr; }
    virtual CppSecondaryInstanceProviderIFC* getSecondaryInstanceProvider() { return nullptr; }
    virtual CppMethodProviderIFC* getMethodProvider() { return nullptr; }
    virtual CppAssociatorProviderIFC* getAssociatorProvider() { return nullptr; }
    virtual CppIndicationExportProviderIFC* getIndicationExportProvider() { return nullptr; }
    virtual CppPolledProviderIFC* getPolledProvider() { return nullptr; }
    virtual CppIndicationProviderIFC* getIndicationProvider() { return nullptr; }
    /// Whether the object manager may destroy the object when it has not been used for a while. True by default.
    virtual bool canUnload() { return true; }

    /// When the object was last used.
    DateTime getLastAccessTime() const;
    /// Called by the object manager before each call; may be called from several threads at once.
    void updateAccessTime();
    /// Whether the object manager keeps the object as long as it runs; it sets that itself.
    bool getPersist() const { return persist_; }
    void setPersist(bool persist = true) { persist_ = persist; }

  private:
    CppProviderBaseIFC& operator=(const CppProviderBaseIFC&);

    std::atomic<time_t> lastAccess_;
    std::atomic<bool> persist_;
};

typedef SharedLibraryReference<IntrusiveReference<CppProviderBaseIFC>> CppProviderBaseIFCRef;

} // namespace OpenWBEM

// NOLINTBEGIN(bugprone-macro-parentheses): the name of a type cannot be put in parentheses
/// Exports class prov under the id name from a shared library: the version check and the creator. Once per library, at
/// global scope, without a semicolon after it.
#define OW_PROVIDERFACTORY(prov, name)                                                                                 \
    extern "C" OW_VISIBILITY_DEFAULT const char* getOWVersion();                                                       \
    extern "C" OW_VISIBILITY_DEFAULT const char* getOWVersion() {                                                      \
        return OW_VERSION;                                                                                             \
    }                                                                                                                  \
    extern "C" OW_VISIBILITY_DEFAULT ::OpenWBEM::CppProviderBaseIFC* createProvider##name();                           \
    extern "C" OW_VISIBILITY_DEFAULT ::OpenWBEM::CppProviderBaseIFC* createProvider##name() {                          \
        return new prov;                                                                                               \
    }
/// The same for polled and indication export providers, which need no id.
#define OW_PROVIDERFACTORY_NOID(prov, name) OW_PROVIDERFACTORY(prov, NO_ID)
#define OW_NOIDPROVIDERFACTORY(prov) OW_PROVIDERFACTORY(prov, NO_ID)

// NOLINTEND(bugprone-macro-parentheses)
