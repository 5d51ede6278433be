// cimserverd: connects the parts and serves until a signal stops it.
#include "cimserver/Check.hpp"
#include "cimserver/Options.hpp"
#include "cimserver/Process.hpp"
#include "cimserver/ProcessMemory.hpp"
#include "cimserver/Readiness.hpp"
#include "cimserver/ServiceManager.hpp"
#include "cimserver/Supervisor.hpp"
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
#include "cimserver/common/Program.hpp"
#include "cimserver/http/Message.hpp"
#include "cimserver/http/Server.hpp"
#include "cimserver/http/Settings.hpp"
#include "cimserver/provider/Attempt.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>

namespace {

using namespace cimserver;

/// Exit statuses.
enum Exit { Stopped = 0, BadOptions = 2, BadFile = 3, CannotListen = 4, StateIsInUse = 5, RequestsLeft = 6 };

constexpr const char* kComponent = "cimserverd";
constexpr std::chrono::milliseconds kInspectionInterval{1000};
constexpr std::chrono::milliseconds kListenPause{250};

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
        : preload_(options.preload), host_(hostSettings(options)),
          cimom_(repository(options), host_, {options.forwardUnchanged}),
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
    /// Why not everything can be done that the server is there for, a line each.
    std::string problems() const {
        std::string lines = audit::problem();
        for (const auto& id : preload_) {
            lines += host_.isInitialized(id) ? "" : "\nprovider " + id + " is not initialized";
        }
        lines += host_.slowCalls() == 0 ? "" : "\n" + notices();
        return lines.substr(lines.empty() || lines[0] != '\n' ? 0 : 1);
    }
    /// To be called every second or so.
    void inspect() { host_.inspect(std::chrono::steady_clock::now()); }
    /// A failure is only logged: the provider is tried again at each request for its classes.
    void preload() {
        for (const auto& id : preload_) {
            try {
                cimom_.preload(id);
            } catch (const std::exception& error) {
                log::write(log::Level::Error, kComponent, "--preload " + id + ": " + error.what());
            }
        }
    }
    /// Those of `--preload` that cannot be loaded, a line each.
    std::vector<std::string> preloadProblems() const {
        std::vector<std::string> lines;
        for (const auto& id : preload_) {
            if (!host_.isLoaded(id)) {
                lines.push_back("--preload: the provider " + id + " cannot be loaded: see the log");
            }
        }
        return lines;
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
        settings.errorHints = options.errorHints;
        settings.hideSecrets = options.hideSecrets;
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

    const std::vector<std::string> preload_;
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

/// A path that may not be looked at passes: whoever reads it says why it cannot.
void checkPaths(const Options& options) {
    using std::filesystem::file_type;
    const auto isNot = [](file_type wanted, const std::string& path) {
        std::error_code hidden;
        const auto type = std::filesystem::status(path, hidden).type();
        return type != wanted && type != file_type::none;
    };
    for (const auto& folder : options.providerDirs) {
        if (isNot(file_type::directory, folder)) {
            throw OptionsError("--provider-dir: " + folder + " is not a directory");
        }
    }
    for (const auto& file : options.mofFiles) {
        if (isNot(file_type::regular, file)) {
            throw OptionsError("--mof: there is no file " + file);
        }
    }
}

/// Tries again for a while when an address is in use. Nothing when a signal ends the wait.
std::optional<std::vector<http::Listener>> startListening(http::Server& server, const Options& options,
                                                          Signals& signals) {
    const auto end = std::chrono::steady_clock::now() + options.listenTimeout;
    for (bool told = false;; told = true) {
        try {
            return server.start();
        } catch (const http::ListenError& error) {
            if (!error.mayPass() || std::chrono::steady_clock::now() >= end) {
                throw;
            }
            if (!told) {
                log::write(log::Level::Warning, kComponent, std::string(error.what()) + "; trying again");
            }
        }
        service::alive();
        const int number = signals.next(kListenPause);
        if (number == SIGTERM || number == SIGINT) {
            return std::nullopt;
        }
    }
}

/// False when a signal ended the wait for an address.
bool listen(http::Server& server, const Options& options, const Descriptor& output, Signals& signals) {
    const auto listeners = startListening(server, options, signals);
    if (!listeners) {
        return false;
    }
    std::string ports;
    std::string urls;
    for (const auto& listener : *listeners) {
        ports += std::to_string(listener.port) + "\n";
        urls += " " + listener.url();
    }
    if (!options.portFile.empty()) {
        writeFile(options.portFile, ports);
    }
    crash::startIsOver();
    service::ready("listening on" + urls);
    for (const auto& listener : *listeners) {
        log::write(log::Level::Info, kComponent, "listening on " + listener.url());
        announce(output, "listening on " + listener.url());
        if (!options.http.consoleFolder.empty()) {
            announce(output, "console at " + listener.url() + "/console/");
        }
    }
    return true;
}

void logCounters(const http::Server& server, const CimSide& cim) {
    log::write(log::Level::Info, kComponent, server.statistics() + " cim-errors=" + std::to_string(cim.errors()));
}

/// What is to be done every second or so.
void inspect(http::Server& server, CimSide& cim, StateLock& lock) {
    cim.inspect();
    lock.follow();
    log::follow();
    audit::sumUp(std::chrono::steady_clock::now());
    if (server.responds()) {
        service::alive();
    }
}

/// Returns when the server is to stop.
void followSignals(Signals& signals, http::Server& server, CimSide& cim, StateLock& lock) {
    const auto interval = service::interval(kInspectionInterval);
    for (;;) {
        switch (const int number = signals.next(interval)) {
        case 0:
            inspect(server, cim, lock);
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

/// The configuration with all files it names, as they are at a start; nothing is written.
int check(Options options) {
    const auto output = redirectStandardOutput("null");
    auto problems = fileProblems(options);
    options.http.dumpFile.clear(); // the server would create it
    if (problems.empty()) {
        CimSide cim(options);
        const http::Server server(options.http, cim.application());
        problems = cim.preloadProblems();
        const auto ready = options.readyCommand.empty() ? ProgramResult{true, ""}
                                                        : runProgram(options.readyCommand, kLongestReadyCommand);
        if (!ready.succeeded) {
            problems.push_back("--ready-command: " + ready.text);
        }
    }
    for (const auto& problem : problems) {
        std::cerr << "cimserverd: " << problem << "\n";
    }
    if (problems.empty()) {
        announce(output, "the configuration is in order");
    }
    return problems.empty() ? Stopped : BadFile;
}

int finish(http::Server& server, const CimSide& cim, Readiness& readiness, const Options& options) {
    service::stopping();
    const bool finished = server.stop(options.stopTimeout);
    readiness.stop(); // before the server, which its answers use
    logCounters(server, cim);
    if (!finished) {
        log::write(log::Level::Error, kComponent, "stopped with requests still under way");
        ::_exit(RequestsLeft); // providers are still working: nothing they use may be destroyed
    }
    log::write(log::Level::Info, kComponent, "stopped");
    return Stopped;
}

int serve(const Options& options) {
    Signals signals;
    const auto output = redirectStandardOutput(options.providerStdout);
    for (const auto& warning : checkAccess(options)) {
        log::write(log::Level::Warning, kComponent, warning + " (--allow-insecure)");
    }
    if (const auto warning = foreignState(options.stateDir); !warning.empty()) {
        log::write(log::Level::Warning, kComponent, warning);
    }
    StateLock lock(options.stateDir);
    CimSide cim(options);
    auto application = cim.application();
    Readiness readiness(options.readyCommand, [&cim] { return cim.problems(); });
    application.ready = [&readiness](auto answer) { readiness.ask(std::move(answer)); };
    http::Server server(options.http, std::move(application));
    audit::configure(options.audit);
    cim.preload();
    giveBackStart();
    if (listen(server, options, output, signals)) {
        followSignals(signals, server, cim, lock);
    }
    return finish(server, cim, readiness, options);
}

/// Prints one line for whoever started the server, and logs it too if the log is elsewhere.
int fail(Exit status, const char* text, bool logFile) {
    std::cerr << (log::isJournal() ? "<2>" : "") << "cimserverd: " << text << "\n";
    if (logFile) {
        log::write(log::Level::Fatal, kComponent, text);
    }
    return status;
}

} // namespace

int main(int argc, char** argv) {
    bool logFile = false;
    boundHeap();
    std::signal(SIGCHLD, SIG_DFL); // inherited as ignored, no child could be waited for
    try {
        const auto options = parseOptions(argc, argv);
        if (!options) {
            return Stopped;
        }
        if (!options->checkUser.empty()) {
            becomeUser(options->checkUser);
        }
        checkPaths(*options);
        checkAccess(*options);
        if (options->check) {
            log::configure({"", options->log.level});
            return check(*options);
        }
        const auto work = [&options, &logFile] {
            log::configure(options->log);
            crash::install(options->log.file);
            logFile = !options->log.file.empty();
            return serve(*options);
        };
        return options->respawn ? supervise(work) : work();
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
