// Finds, loads and holds the providers: shared objects written against OpenWBEM's C++ provider interface, and the few
// providers that are part of the server. Independent of the namespaces' contents and of CIM-XML.
#pragma once

#include "cimserver/provider/Attempt.hpp"
#include "cimserver/provider/CallOrigin.hpp"
#include "cimserver/provider/Gate.hpp"
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

/// The host's settings.
struct HostSettings {
    std::vector<std::filesystem::path> folders;     ///< searched in order for libID.so and ID.so
    std::set<std::string> concurrentReads;          ///< ids of providers whose reads may run side by side
    std::set<std::string> concurrentProviders;      ///< ids of providers that serialise themselves
    std::map<std::string, std::string> configItems; ///< what getConfigItem returns to providers
    std::chrono::milliseconds busyLimit{60000};     ///< how long a request waits for a busy provider
    std::chrono::milliseconds slowLimit{30000};     ///< a call that takes longer is logged
    GateLimits gate;                                ///< of each provider
};

/// One object per provider id, made and initialized at its first use and destroyed with the host. All members may be
/// called from any thread, but scan and addBuiltIn only at start.
class ProviderHost {
  public:
    using Factory = std::function<OpenWBEM::CppProviderBaseIFC*()>;

    explicit ProviderHost(HostSettings settings);
    ~ProviderHost();
    ProviderHost(const ProviderHost&) = delete;
    ProviderHost& operator=(const ProviderHost&) = delete;

    /// Opens each module in the folders and records which classes it reports in its ProviderInfo. A module that cannot
    /// be loaded is logged and left out. Without this call only Provider qualifiers assign classes to providers.
    void scan();

    /// Makes `factory` the source of provider `id`, instead of any file of that name.
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

    /// True when its module is open and has a factory.
    bool isLoaded(const std::string& id) const;
    /// True once it has been initialized.
    bool isInitialized(const std::string& id) const;

    /// Enters the provider for one call: loads and initializes it when needed. The calls of one provider follow one
    /// another, unless its reads, or all its calls, may run concurrently; a thread that is inside the provider enters
    /// again without waiting. The first entry of a job that would have to wait throws a Deferral. Throws CIMException:
    /// Failed with "Invalid provider: ID (reason)" when it cannot be loaded, or with "Provider ID is busy" when it has
    /// no room in time; what its initialize threw (the next call tries again).
    ProviderCall enter(const std::string& id, Access access, const CallOrigin& origin);

    /// Runs a request, on a worker; see runJob.
    void run(const std::shared_ptr<Job>& job);

    /// Logs calls that have become slow, and ends waiting that took too long; to be called every second or so.
    void inspect(Gate::Clock::time_point now);
    /// Calls under way that are slow.
    unsigned slowCalls() const;

  private:
    class Slot;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace cimserver::provider
