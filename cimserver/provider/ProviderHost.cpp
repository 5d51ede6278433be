#include "cimserver/provider/ProviderHost.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/common/CrashReport.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/common/Workers.hpp"
#include "cimserver/provider/CallOrigin.hpp"
#include "cimserver/provider/CallWatch.hpp"
#include "cimserver/provider/Environment.hpp"
#include "cimserver/provider/Gate.hpp"
#include "cimserver/provider/Module.hpp"
#include "cimserver/provider/Registrations.hpp"

#include <algorithm>
#include <atomic>
#include <mutex>

namespace cimserver::provider {

using namespace OpenWBEM;
namespace fs = std::filesystem;

namespace {

void logUnusable(const std::string& id, const ModuleError& error) {
    log::write(log::Level::Error, "provider",
               "Provider " + id + " cannot be used: " + error.what() + ": " + error.details());
}

[[noreturn]] void invalid(const std::string& id, const ModuleError& error) {
    logUnusable(id, error);
    throw CimError(Status::Failed, "Invalid provider: " + id + " (" + error.what() + ")");
}

} // namespace

/// One provider: its gates, and the module and object that they guard.
class ProviderHost::Slot {
  public:
    Slot(std::string id, Sharing sharing, const GateLimits& limits, Factory builtIn)
        : component(("provider." + id).c_str()), starting(Sharing::None, limits), gate(sharing, limits),
          id_(std::move(id)), builtIn_(std::move(builtIn)) {}

    bool ready() const { return ready_; }
    CppProviderBaseIFC& provider() const { return *provider_; }

    /// Makes and initializes the object; the caller is inside `starting`.
    void start(const std::vector<fs::path>& folders, const ProviderEnvironmentIFCRef& env);
    void stop() { provider_ = IntrusiveReference<CppProviderBaseIFC>(); }
    bool loaded() const { return builtIn_ || module_; }
    void adopt(std::unique_ptr<Module> module) { module_ = std::move(module); }

    const String component; ///< in the log
    Gate starting;
    Gate gate;

  private:
    IntrusiveReference<CppProviderBaseIFC> make(const std::vector<fs::path>& folders);

    const std::string id_;
    const Factory builtIn_;
    std::unique_ptr<Module> module_; // outlives the object
    IntrusiveReference<CppProviderBaseIFC> provider_;
    bool starting_ = false;
    std::atomic<bool> ready_{false}; // never reset
};

IntrusiveReference<CppProviderBaseIFC> ProviderHost::Slot::make(const std::vector<fs::path>& folders) {
    if (builtIn_) {
        return IntrusiveReference<CppProviderBaseIFC>(builtIn_());
    }
    try {
        if (!module_) {
            const fs::path file = findModule(folders, id_);
            if (file.empty()) {
                throw ModuleError("its file was not found", "no lib" + id_ + ".so or " + id_ + ".so in its folders");
            }
            module_ = std::make_unique<Module>(file, id_);
        }
        return IntrusiveReference<CppProviderBaseIFC>(module_->create());
    } catch (const ModuleError& error) {
        invalid(id_, error);
    }
}

void ProviderHost::Slot::start(const std::vector<fs::path>& folders, const ProviderEnvironmentIFCRef& env) {
    if (ready_) {
        return;
    }
    if (starting_) {
        throw CimError(Status::Failed, "Provider " + id_ + " is called while it is being initialized");
    }
    struct Mark {
        bool& flag;
        explicit Mark(bool& f) : flag(f) { flag = true; }
        ~Mark() { flag = false; }
    } const mark(starting_);
    // Held here until it is initialized, so that a failure destroys it.
    const IntrusiveReference<CppProviderBaseIFC> made = asCimError([&] { return make(folders); });
    asCimError([&] { made->initialize(env); });
    provider_ = made;
    ready_ = true;
    log::write(log::Level::Info, "provider", "Provider " + id_ + " is initialized");
}

struct ProviderHost::Impl {
    explicit Impl(HostSettings given)
        : settings(std::move(given)), config(std::make_shared<const ConfigItems>(settings.configItems)),
          watch(settings.slowLimit) {}

    HostSettings settings;
    std::shared_ptr<const ConfigItems> config;
    CallWatch watch;
    std::map<std::string, Factory> builtIns;
    Registrations registrations;
    std::mutex mutex; ///< guards the members below
    std::map<std::string, Slot*> slotsById;
    std::vector<std::unique_ptr<Slot>> slots; ///< the oldest first

    Slot& slot(const std::string& id);
    Sharing sharingOf(const std::string& id) const;
    Gate::Pass admit(const std::string& id, Gate& gate, Access access) const;
    void scan(const fs::path& file);
};

ProviderHost::Slot& ProviderHost::Impl::slot(const std::string& id) {
    const std::lock_guard<std::mutex> lock(mutex);
    Slot*& found = slotsById[id];
    if (found == nullptr) {
        const auto builtIn = builtIns.find(id);
        slots.push_back(std::make_unique<Slot>(id, sharingOf(id), settings.gate,
                                               builtIn == builtIns.end() ? Factory() : builtIn->second));
        found = slots.back().get();
    }
    return *found;
}

Sharing ProviderHost::Impl::sharingOf(const std::string& id) const {
    if (settings.concurrentProviders.count(id) != 0) {
        return Sharing::All;
    }
    return settings.concurrentReads.count(id) != 0 ? Sharing::Reads : Sharing::None;
}

Gate::Pass ProviderHost::Impl::admit(const std::string& id, Gate& gate, Access access) const {
    auto pass = admitTo(gate, access, settings.busyLimit);
    if (!pass) {
        throw CimError(Status::Failed, "Provider " + id + " is busy");
    }
    return std::move(*pass);
}

ProviderHost::ProviderHost(HostSettings settings) : impl_(std::make_unique<Impl>(std::move(settings))) {}

ProviderHost::~ProviderHost() {
    // All objects are destroyed, the last first, before any module is closed: one may use another's code.
    const crash::Task task{"the end of the providers"};
    for (auto slot = impl_->slots.rbegin(); slot != impl_->slots.rend(); ++slot) {
        (*slot)->stop();
    }
    while (!impl_->slots.empty()) {
        impl_->slots.pop_back();
    }
}

void ProviderHost::addBuiltIn(const std::string& id, Factory factory) {
    impl_->builtIns[id] = std::move(factory);
}

void ProviderHost::Impl::scan(const fs::path& file) {
    std::string id = file.stem().string();
    if (id.compare(0, 3, "lib") == 0) {
        id.erase(0, 3);
    }
    if (!isProviderId(id) || slotsById.count(id) != 0) {
        return;
    }
    const crash::Task task{"the scan, module ", file.native()};
    try {
        auto module = std::make_unique<Module>(file, id);
        {
            const IntrusiveReference<CppProviderBaseIFC> provider(module->create());
            registrations.add(id, *provider);
        }
        slot(id).adopt(std::move(module));
    } catch (const NoProviderModule& error) {
        log::write(log::Level::Debug, "provider", "Passed over: " + error.details());
    } catch (const ModuleError& error) {
        logUnusable(id, error);
    }
}

void ProviderHost::scan() {
    for (const fs::path& folder : impl_->settings.folders) {
        std::error_code error;
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(folder, error)) {
            std::error_code dangling; // a link whose file is gone is no module
            if (entry.path().extension() == ".so" && entry.is_regular_file(dangling)) {
                files.push_back(entry.path());
            }
        }
        if (error) {
            log::write(log::Level::Error, "provider", folder.string() + ": " + error.message());
        }
        std::sort(files.begin(), files.end());
        for (const fs::path& file : files) {
            try {
                asCimError([&] { impl_->scan(file); });
            } catch (const CIMException& thrown) {
                log::write(log::Level::Error, "provider", file.string() + ": " + thrown.getMessage());
            }
        }
    }
}

std::string ProviderHost::instanceProvider(const String& ns, const CIMClass& cimClass) const {
    std::string reported = impl_->registrations.instanceProvider(ns, cimClass.getName());
    return reported.empty() ? idOfQualifier(cimClass) : reported;
}

std::string ProviderHost::associatorProvider(const String& ns, const CIMClass& cimClass) const {
    std::string reported = impl_->registrations.associatorProvider(ns, cimClass.getName());
    return reported.empty() ? idOfQualifier(cimClass) : reported;
}

std::string ProviderHost::methodProvider(const String& ns, const CIMClass& cimClass, const CIMMethod& method) const {
    std::string found = impl_->registrations.methodProvider(ns, cimClass.getName(), method.getName());
    found = found.empty() ? idOfQualifier(method) : found;
    return found.empty() ? idOfQualifier(cimClass) : found;
}

std::vector<std::string> ProviderHost::secondaryProviders(const String& ns, const CIMClass& cimClass) const {
    return impl_->registrations.secondaryProviders(ns, cimClass.getName());
}

bool ProviderHost::has(const std::string& id) const {
    return impl_->builtIns.count(id) != 0 || (isProviderId(id) && !findModule(impl_->settings.folders, id).empty());
}

bool ProviderHost::isLoaded(const std::string& id) const {
    return impl_->slot(id).loaded();
}

bool ProviderHost::isInitialized(const std::string& id) const {
    return impl_->slot(id).ready();
}

ProviderCall ProviderHost::enter(const std::string& id, Access access, const CallOrigin& origin) {
    Slot& slot = impl_->slot(id);
    const IntrusiveReference<Environment> env(new Environment(origin, slot.component, impl_->config));
    if (!slot.ready()) {
        const Gate::Pass alone = impl_->admit(id, slot.starting, Access::Write);
        const Workers::Aside aside;
        const CallWatch::Ticket watched(impl_->watch, env, "initialization by ");
        slot.start(impl_->settings.folders, env);
    }
    auto pass = impl_->admit(id, slot.gate, access);
    return ProviderCall(std::move(pass), CallWatch::Ticket(impl_->watch, env), slot.provider(), env);
}

void ProviderHost::run(const std::shared_ptr<Job>& job) {
    runJob(job, impl_->settings.busyLimit);
}

void ProviderHost::inspect(Gate::Clock::time_point now) {
    impl_->watch.inspect(now);
    std::vector<Slot*> slots;
    {
        const std::lock_guard<std::mutex> lock(impl_->mutex);
        std::transform(impl_->slots.begin(), impl_->slots.end(), std::back_inserter(slots),
                       [](const auto& slot) { return slot.get(); });
    }
    for (Slot* const slot : slots) {
        slot->starting.tidy(now);
        slot->gate.tidy(now);
    }
}

unsigned ProviderHost::slowCalls() const {
    return impl_->watch.slow();
}

} // namespace cimserver::provider
