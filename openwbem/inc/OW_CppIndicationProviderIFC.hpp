// Interface of a C++ provider that sends indications.

#pragma once

#include "OW_CppProviderBaseIFC.hpp"
#include "OW_IndicationProviderInfo.hpp"
#include "OW_SharedLibraryReference.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class WQLSelectStatement;

/// Is notified of subscriptions to indications. filter is the parsed query, eventType the indication class, classes
/// those that the query is about. By default the functions do nothing.
class OW_VISIBILITY_DEFAULT OW_CPPPROVIFC_API CppIndicationProviderIFC : public virtual CppProviderBaseIFC {
  public:
    ~CppIndicationProviderIFC() override;
    /// Reports the indication classes.
    virtual void getIndicationProviderInfo(IndicationProviderInfo& info);
    /// Called for each new subscription; firstActivation is true for the first that matches the provider.
    virtual void activateFilter(const ProviderEnvironmentIFCRef& env, const WQLSelectStatement& filter,
                                const String& eventType, const String& nameSpace, const StringArray& classes,
                                bool firstActivation);
    /// Throws ACCESS_DENIED if owner may not subscribe.
    virtual void authorizeFilter(const ProviderEnvironmentIFCRef& env, const WQLSelectStatement& filter,
                                 const String& eventType, const String& nameSpace, const StringArray& classes,
                                 const String& owner);
    /// Called for each subscription that ends; lastActivation is true for the last one.
    virtual void deActivateFilter(const ProviderEnvironmentIFCRef& env, const WQLSelectStatement& filter,
                                  const String& eventType, const String& nameSpace, const StringArray& classes,
                                  bool lastActivation);
    /// Seconds between the object manager's own checks for changed instances; 0, the default, if the provider sends all
    /// indications itself.
    virtual int mustPoll(const ProviderEnvironmentIFCRef& env, const WQLSelectStatement& filter,
                         const String& eventType, const String& nameSpace, const StringArray& classes);
    /// This object.
    CppIndicationProviderIFC* getIndicationProvider() override;
};

typedef SharedLibraryReference<IntrusiveReference<CppIndicationProviderIFC>> CppIndicationProviderIFCRef;

} // namespace OpenWBEM
