// cimserverd: connects the parts and serves until a signal stops it.
#include "cimserver/Options.hpp"
#include "cimserver/Process.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/DeclaredProvider.hpp"
#include "cimserver/cimom/Interop.hpp"
#include "cimserver/cimxml/Dispatcher.hpp"
#include "cimserver/cimxml/HttpRules.hpp"
#include "cimserver/cimxml/Masking.hpp"
#include "cimserver/common/AuditLog.hpp"
#include "cimserver/common/CrashReport.hpp"
#include "cimserver/common/Descriptor.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/http/Message.hpp"
#include "cimserver/http/Server.hpp"
#include "cimserver/provider/Attempt.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include <malloc.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>

namespace {

using namespace cimserver;

/// Exit statuses.
enum Exit { Stopped = 0, BadOptions = 2, BadFile = 3, CannotListen = 4, StateIsInUse = 5, RequestsLeft = 6 };

constexpr const char* kComponent = "cimserverd";
constexpr std::chrono::milliseconds kInspectionInterval{1000};

/// A request of the transport as a job of the provider host.
class CimRequest : public provider::Job {
  public:
    CimRequest(cimxml::Dispatcher& dispatcher, std::shared_ptr<http::Exchange> exchange)
        : dispatcher_(dispatcher), exchange_(std::move(exchange)) {}

    void run() override { exchange_->answer(dispatcher_.handle(exchange_->request())); }
    bool abandoned() const override { return exchange_->abandoned(); }
    void drop() override {
        log::write(log::Level::Info, kComponent, exchange_->request().peer + ": has left before its turn");
        exchange_->answer({503, {}, {}});
    }
    void post(std::function<void()> task) override { exchange_->post(std::move(task)); }

  private:
    cimxml::Dispatcher& dispatcher_;
    std::shared_ptr<http::Exchange> exchange_;
};

/// The CIM side: schema, providers, operations, CIM-XML. Each member needs those before it.
class CimSide {
  public:
    explicit CimSide(const Options& options)
        : host_(hostSettings(options)), cimom_(repository(options), host_, {options.forwardUnchanged}),
          dispatcher_(cimom_, dispatcherSettings(options)) {}

    /// Serves as long as this object lives.
    http::Application application() {
        return {[this](const auto& exchange) { host_.run(std::make_shared<CimRequest>(dispatcher_, exchange)); },
                cimxml::optionsResponse(), audit::problem,
                [limits = dispatcher_.settings().xml](const auto& request, const auto& response) {
                    return cimxml::maskedBodies(request, response, limits);
                },
                [this] { return notices(); }};
    }
    /// To be called every second or so.
    void inspect() { host_.inspect(std::chrono::steady_clock::now()); }
    /// A failure is only logged: the provider is tried again at each request for its classes.
    void preload(const std::vector<std::string>& ids) {
        for (const auto& id : ids) {
            try {
                cimom_.preload(id);
            } catch (const std::exception& error) {
                log::write(log::Level::Error, kComponent, "--preload " + id + ": " + error.what());
            }
        }
    }
    /// Operations that were answered with a CIM error, HTTP status 200.
    std::uint64_t errors() const { return dispatcher_.errors(); }

  private:
    std::string notices() const {
        const auto slow = host_.slowCalls();
        return slow == 0 ? "" : "degraded: slow provider calls under way: " + std::to_string(slow);
    }
    static provider::HostSettings hostSettings(const Options& options) {
        provider::HostSettings settings;
        settings.folders = {options.providerDirs.begin(), options.providerDirs.end()};
        settings.concurrentReads = options.concurrentReads;
        settings.concurrentProviders = options.concurrentProviders;
        settings.configItems = options.providerConfig;
        settings.busyLimit = options.providerTimeout;
        settings.slowLimit = options.slowCall;
        settings.gate = {options.providerThreads, options.providerQueue};
        return settings;
    }
    static cimxml::DispatcherSettings dispatcherSettings(const Options& options) {
        cimxml::DispatcherSettings settings;
        settings.xml.elements = options.xmlElements;
        settings.xml.depth = options.xmlDepth;
        settings.enumerations.perUser = options.userEnumerations;
        settings.enumerations.count = options.enumerations;
        settings.enumerations.bytes = options.http.limits.memory / 4;
        return settings;
    }
    /// Throws OptionsError when the option names a provider that does not exist.
    template <class Ids>
    void requireProviders(const char* option, const Ids& ids) const {
        for (const std::string& id : ids) {
            if (!host_.has(id)) {
                throw OptionsError(std::string(option) + ": there is no provider " + id + " in a --provider-dir");
            }
        }
    }
    const schema::Repository& repository(const Options& options) {
        cimom::addInterop(repository_, host_);
        for (const auto& file : options.mofFiles) {
            repository_.compileFile(file, options.ns);
        }
        host_.scan();
        cimom::warnOfHiddenInstances(repository_, host_);
        requireProviders("--preload", options.preload);
        requireProviders("--concurrent-reads", options.concurrentReads);
        requireProviders("--concurrent-provider", options.concurrentProviders);
        return repository_;
    }

    schema::Repository repository_;
    provider::ProviderHost host_;
    cimom::Cimom cimom_;
    cimxml::Dispatcher dispatcher_;
};

/// One line on the original standard output, kept from providers.
void announce(const Descriptor& output, const std::string& text) {
    const auto line = "cimserverd: " + text + "\n";
    // The server goes on when the reader is gone.
    [[maybe_unused]] const auto written = ::write(output.get(), line.data(), line.size());
}

void checkFolders(const Options& options) {
    for (const auto& folder : options.providerDirs) {
        if (!std::filesystem::is_directory(folder)) {
            throw OptionsError("--provider-dir: " + folder + " is not a directory");
        }
    }
    for (const auto& file : options.mofFiles) {
        if (!std::filesystem::is_regular_file(file)) {
            throw OptionsError("--mof: there is no file " + file);
        }
    }
}

void listen(http::Server& server, const Options& options, const Descriptor& output) {
    std::string ports;
    const auto listeners = server.start();
    for (const auto& listener : listeners) {
        ports += std::to_string(listener.port) + "\n";
    }
    if (!options.portFile.empty()) {
        writeFile(options.portFile, ports);
    }
    for (const auto& listener : listeners) {
        log::write(log::Level::Info, kComponent, "listening on " + listener.url());
        announce(output, "listening on " + listener.url());
    }
}

void logCounters(const http::Server& server, const CimSide& cim) {
    log::write(log::Level::Info, kComponent, server.statistics() + " cim-errors=" + std::to_string(cim.errors()));
}

/// Returns when the server is to stop.
void followSignals(Signals& signals, http::Server& server, CimSide& cim) {
    for (;;) {
        switch (const int number = signals.next(kInspectionInterval)) {
        case 0:
            cim.inspect();
            break;
        case SIGHUP:
            log::reopen();
            server.reload();
            break;
        case SIGUSR1:
            logCounters(server, cim);
            break;
        default:
            log::write(log::Level::Info, kComponent, number == SIGTERM ? "stopping on SIGTERM" : "stopping on SIGINT");
            return;
        }
    }
}

/// Gives large texts back to the system as soon as they are freed, instead of keeping room for them in the heap.
void boundHeap() {
#ifdef __GLIBC__
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    ::mallopt(M_ARENA_MAX, 2);
#endif
}

/// Gives back what only the start needed, such as the schema's text.
void trimHeap() {
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

int serve(const Options& options) {
    Signals signals;
    const auto output = redirectStandardOutput(options.providerStdout);
    for (const auto& warning : checkAccess(options)) {
        log::write(log::Level::Warning, kComponent, warning + " (--allow-insecure)");
    }
    const auto lock = options.stateDir.empty() || options.check ? Descriptor() : lockStateDirectory(options.stateDir);
    CimSide cim(options);
    http::Server server(options.http, cim.application());
    if (options.check) {
        announce(output, "the configuration is in order");
        return Stopped;
    }
    audit::configure(options.audit);
    cim.preload(options.preload);
    trimHeap();
    listen(server, options, output);
    followSignals(signals, server, cim);
    const bool finished = server.stop(options.stopTimeout);
    logCounters(server, cim);
    if (!finished) {
        log::write(log::Level::Error, kComponent, "stopped with requests still under way");
        ::_exit(RequestsLeft); // providers are still working: nothing they use may be destroyed
    }
    log::write(log::Level::Info, kComponent, "stopped");
    return Stopped;
}

/// Prints one line for whoever started the server, and logs it too if the log is elsewhere.
int fail(Exit status, const char* text, bool logFile) {
    std::cerr << "cimserverd: " << text << "\n";
    if (logFile) {
        log::write(log::Level::Fatal, kComponent, text);
    }
    return status;
}

} // namespace

int main(int argc, char** argv) {
    bool logFile = false;
    boundHeap();
    try {
        const auto options = parseOptions(argc, argv);
        if (!options) {
            return Stopped;
        }
        checkFolders(*options);
        checkAccess(*options);
        log::configure(options->log);
        crash::install(options->log.file);
        logFile = !options->log.file.empty();
        return serve(*options);
    } catch (const OptionsError& error) {
        return fail(BadOptions, error.what(), logFile);
    } catch (const http::ListenError& error) {
        return fail(CannotListen, error.what(), logFile);
    } catch (const StateInUse& error) {
        return fail(StateIsInUse, error.what(), logFile);
    } catch (const std::exception& error) {
        return fail(BadFile, error.what(), logFile);
    }
}
