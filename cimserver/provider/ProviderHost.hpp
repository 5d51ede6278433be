// Finds, loads and holds the providers: shared objects written against OpenWBEM's C++ provider interface, and the few
// providers that are part of the server. Nothing here knows of namespaces' contents or of CIM-XML.
#pragma once

#include "cimserver/provider/ProviderCall.hpp"

#include "OW_CIM.hpp"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace cimserver::provider {

/// What the host is told at start.
struct HostSettings {
    std::vector<std::filesystem::path> folders;     ///< searched in order for libID.so and ID.so
    std::set<std::string> concurrentReads;          ///< ids of providers whose reads may run side by side
    std::set<std::string> concurrentProviders;      ///< ids of providers that serialise themselves: they get no gate
    std::map<std::string, std::string> configItems; ///< what a provider's getConfigItem answers from
    std::chrono::milliseconds busyLimit{60000};     ///< how long a request waits for a busy provider
};

/// One object per provider id, made and initialized at its first use and destroyed with the host. All members may be
/// called from any thread, except scan and addBuiltIn, which belong to the start.
class ProviderHost {
  public:
    using Factory = std::function<OpenWBEM::CppProviderBaseIFC*()>;

    explicit ProviderHost(HostSettings settings);
    ~ProviderHost();
    ProviderHost(const ProviderHost&) = delete;
    ProviderHost& operator=(const ProviderHost&) = delete;

    /// Opens each module of the folders once and asks which classes it reports by its ProviderInfo. What cannot be
    /// loaded is logged and left out. Without this call only the Provider qualifier registers.
    void scan();

    /// Makes `factory` the source of provider `id`, before any file of that name.
    void addBuiltIn(const std::string& id, Factory factory);

    /// The id of the provider that serves the class's instances (or associations, or the method): what a ProviderInfo
    /// reports for exactly this class, else the Provider qualifier, of the method before that of the class. Empty when
    /// there is none. Throws CimError Failed for a qualifier of another interface than "c++" or a malformed id.
    std::string instanceProvider(const OpenWBEM::String& ns, const OpenWBEM::CIMClass& cimClass) const;
    std::string associatorProvider(const OpenWBEM::String& ns, const OpenWBEM::CIMClass& cimClass) const;
    std::string methodProvider(const OpenWBEM::String& ns, const OpenWBEM::CIMClass& cimClass,
                               const OpenWBEM::CIMMethod& method) const;
    /// The ids of the secondary instance providers reported for exactly this class, in the order of the scan.
    std::vector<std::string> secondaryProviders(const OpenWBEM::String& ns, const OpenWBEM::CIMClass& cimClass) const;

    /// True when there is a built-in provider of that id or a file for it, whether it can be loaded or not.
    bool has(const std::string& id) const;

    /// Enters the provider for one call: loads and initializes it when needed and waits its turn. The calls of one
    /// provider follow one another, unless its reads, or all its calls, may run side by side; a thread that is inside
    /// the provider enters again without waiting. Throws CIMException: Failed with "Invalid provider: ID (reason)" when
    /// it cannot be loaded or "Provider ID is busy" after the limit; what its initialize threw, when that failed (the
    /// next call tries again).
    ProviderCall enter(const std::string& id, Access access, const CallOrigin& origin);

  private:
    class Slot;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace cimserver::provider
