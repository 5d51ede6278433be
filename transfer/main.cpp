// CDRTransfer: sends the finished call detail record files to the server that the push settings name.

#include "Failure.hpp"
#include "Files.hpp"
#include "HostKeys.hpp"
#include "Log.hpp"
#include "Process.hpp"
#include "Run.hpp"
#include "Status.hpp"
#include "Text.hpp"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>

namespace {

using namespace transfer;

enum Exit { Done = 0, Failed = 1, BadUsage = 2 };

struct Options {
    bool wait = false;
    bool dryRun = false;
    bool verbose = false;
    bool status = false;
    bool json = false;
    std::optional<std::string> trust;
    std::string records = "/var/lib/cdr/records";
    unsigned retryDelay = 5;

    /// The record folder by its absolute path, because a run in the background leaves the working folder.
    RunOptions run() const {
        std::error_code error;
        return {std::filesystem::absolute(records, error).string(), std::chrono::seconds(retryDelay)};
    }
};

void addOptions(CLI::App& app, Options& options) {
    app.set_version_flag("--version", CDR_VERSION);
    app.add_flag("--wait", options.wait, "Stay until the run has ended; exit status 1 when not everything was sent");
    app.add_flag("--verbose", options.verbose, "Tell each step; implies --wait");
    app.add_flag("--dry-run", options.dryRun, "Tell what would be sent, and where, without connecting");
    auto* const status = app.add_flag("--status", options.status,
                                      "Tell the settings, the schedule and what the last run did and why it failed");
    app.add_flag("--json", options.json, "With --status: one JSON object")->needs(status);
    app.add_option("--trust", options.trust,
                   "Show the host key of the SFTP server HOST[:PORT], ask, and trust it from then on");
    app.add_option("--records", options.records, "Folder of the record files (/var/lib/cdr/records)")
        ->envname("CDR_RECORD_DIR");
    app.add_option("--retry-delay", options.retryDelay,
                   "Seconds before the first further try (5), doubled for each one after it, up to 5 minutes")
        ->envname("CDR_TRANSFER_RETRY_DELAY")
        ->check(CLI::Range(0, 3600));
}

int trust(const StateFolder& state, const std::string& host) {
    const Address address = parseAddress(host);
    if (address.protocol != Protocol::Sftp) {
        throw Failure(Scope::Run, "only SFTP servers have host keys; an FTPS server's certificate is checked against " +
                                      state / "ca.pem" + ", if there is one, else against the system's");
    }
    const HostKey key = FarEnd::hostKeyOf(address);
    const std::string knownHosts = state / "known_hosts";
    std::printf("%s shows the host key\n  %s %s\n", address.knownHostsName().c_str(), key.kind().c_str(),
                key.fingerprint().c_str());
    if (isKnownHost(knownHosts, address)) {
        std::printf("A key of this host is trusted already; it will be replaced.\n");
    }
    std::printf("Compare the fingerprint with the one that the server's administrator tells. Trust it? (yes/no) ");
    std::fflush(stdout);
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "yes") {
        std::printf("Nothing was changed.\n");
        return Failed;
    }
    trustHostKey(knownHosts, address, key);
    std::printf("Trusted.\n");
    return Done;
}

int push(const StateFolder& state, const Options& options) {
    const bool waited = options.wait || options.verbose;
    if (!waited && requestService()) {
        return Done; // it runs there, outside the limits of whoever asks
    }
    zpo::FileLock lock;
    if (const int error = lock.acquire(state / "lock", std::chrono::milliseconds(0))) {
        if (error != ETIMEDOUT) {
            throw Failure(Scope::Run, state / "lock" + ": " + std::strerror(error));
        }
        std::fprintf(stderr, "CDRTransfer: a run is under way; this one ends\n");
        return Done;
    }
    const RunOptions run = options.run();
    const bool background = !waited && continueInBackground();
    Console console(!background, options.verbose);
    return runPush(state, run, console).state == RunReport::State::Succeeded ? Done : Failed;
}

int work(const Options& options) {
    const StateFolder state;
    state.becomeOwner();
    if (options.status) {
        const std::string text = options.json ? statusJson(state, options.records) : statusText(state, options.records);
        std::fputs(text.c_str(), stdout);
        return Done;
    }
    if (options.dryRun) {
        printPlan(state, options.run());
        return Done;
    }
    state.create();
    return options.trust ? trust(state, *options.trust) : push(state, options);
}

} // namespace

int main(int argc, char** argv) {
    closeInherited();
    (void)std::signal(SIGPIPE, SIG_IGN);
    Options options;
    CLI::App app("Sends the finished call detail record files to the server that the push settings name. Without an "
                 "option it works in the background.",
                 "CDRTransfer");
    addOptions(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? Done : BadUsage;
    }
    try {
        return work(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "CDRTransfer: %s\n", printable(error.what()).c_str());
        log::failure(std::string("push failed: ") + error.what());
        return Failed;
    }
}
