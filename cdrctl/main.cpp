// cdrctl: the call detail recording feature on the command line, for people who know nothing of CIM.
#include "cdrctl/Client.hpp"
#include "cdrctl/Commands.hpp"
#include "cdrctl/Device.hpp"
#include "cdrctl/Errors.hpp"
#include "cdrctl/Http.hpp"
#include "cdrctl/Text.hpp"
#include "cimserver/common/Prompt.hpp"

#include <CLI/CLI.hpp>

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <functional>
#include <iostream>

namespace {

using namespace cdrctl;

struct Arguments {
    std::string server = "http://127.0.0.1:5988";
    std::string nameSpace = "root/cimv2";
    std::string passwordFile;
    Access access;
    double timeout = 30;
    bool json = false;
    std::string className;
    bool describe = false;
    std::vector<std::string> assignments;
    std::string binKind;
    unsigned binNumber = 0;
    std::string digits;
    std::string suppress;
    bool remote = false;
    bool local = false;
    Watch watch;
    double interval = 2;
    std::string code;
};

std::string passwordFrom(const std::string& file) {
    std::ifstream input(file);
    struct stat status {};
    if (!input || ::stat(file.c_str(), &status) != 0) {
        throw UsageError("cannot read the password file " + file);
    }
    if (S_ISREG(status.st_mode) && (status.st_mode & S_IROTH) != 0) {
        std::cerr << "cdrctl: warning: every user of this machine can read " << file << "\n";
    }
    return cimserver::readPassword(input);
}

std::string askForSecret(const std::string& what) {
    return ::isatty(STDIN_FILENO) == 0 ? cimserver::readPassword(std::cin)
                                       : cimserver::promptPassword((what + ": ").c_str());
}

/// Refuses what would show a password to the network, and is loud about what cannot be trusted.
void checkAccess(const Address& address, const Access& access) {
    if (access.insecure && address.tls) {
        std::cerr << "cdrctl: WARNING: --insecure: the server's certificate is not checked; whoever is in between can "
                     "read and change everything\n";
    }
    if (address.tls || address.isLoopback() || access.user.empty()) {
        return;
    }
    if (!access.insecure) {
        throw UsageError("the password would cross the network in the clear: use https:// (or --insecure)");
    }
    std::cerr << "cdrctl: WARNING: --insecure: the password crosses the network in the clear\n";
}

Client connect(Arguments& arguments) {
    Address address;
    try {
        address = Address::parse(arguments.server);
    } catch (const std::invalid_argument& error) {
        throw UsageError(std::string("--server: ") + error.what());
    }
    Access& access = arguments.access;
    access.timeout = std::chrono::milliseconds(static_cast<std::int64_t>(arguments.timeout * 1000));
    checkAccess(address, access);
    if (!access.user.empty()) {
        access.password = arguments.passwordFile.empty() ? askForSecret("Password of " + access.user)
                                                         : passwordFrom(arguments.passwordFile);
    }
    return Client(address, access, arguments.nameSpace);
}

std::vector<Assignment> assignmentsOf(const Arguments& arguments) {
    std::vector<Assignment> all;
    for (const std::string& text : arguments.assignments) {
        all.push_back(Assignment::parse(text));
        if (all.back().value == "-" && cimserver::containsIgnoringCase(all.back().name, "password")) {
            all.back().value = askForSecret(all.back().name);
        }
    }
    return all;
}

class Program {
  public:
    Program() {
        app_.require_subcommand(1);
        app_.fallthrough();
        app_.set_version_flag("--version", "cdrctl " CDRCTL_VERSION);
        app_.footer(
            "Exit codes: 0 done, 1 refused or failed, 2 wrong usage, 3 no connection, 4 no login, 5 the push does "
            "not run.");
        addConnection();
        addSettings();
        addPush();
        addOthers();
    }

    int run(int argc, char** argv) {
        try {
            app_.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            const int code = app_.exit(error, std::cout, std::cerr);
            return code == 0 ? Done : WrongUsage;
        }
        return work_();
    }

  private:
    using Work = std::function<int(const Context&)>;

    /// A command that talks to the server.
    CLI::App* command(CLI::App& parent, const char* name, const char* help, Work work) {
        CLI::App* const added = parent.add_subcommand(name, help);
        added->callback([this, work = std::move(work)] {
            if (!work_) { // not already a subcommand's
                work_ = [this, work] {
                    const Client client = connect(arguments_);
                    return work({client, arguments_.json, std::cout});
                };
            }
        });
        return added;
    }

    void addConnection() {
        const auto group = [this](CLI::Option* option) { option->group("Connection"); };
        Access& access = arguments_.access;
        group(app_.add_option("-s,--server", arguments_.server, "HOST, HOST:PORT or URL of the server")
                  ->envname("CDRCTL_SERVER")
                  ->capture_default_str());
        group(app_.add_option("-u,--user", access.user, "log in as this user")->envname("CDRCTL_USER"));
        group(app_.add_option("--password-file", arguments_.passwordFile,
                              "the password is its first line; without it, it is asked for")
                  ->envname("CDRCTL_PASSWORD_FILE"));
        group(
            app_.add_option("--cacert", access.caFile, "PEM file of the authority that signed the server's certificate")
                ->envname("CDRCTL_CACERT"));
        group(app_.add_option("--cert", access.certificateFile, "PEM file with a certificate to log in with"));
        group(app_.add_option("--key", access.keyFile, "PEM file with its key, unless it is in the same file"));
        group(app_.add_flag("--insecure", access.insecure, "do not check the certificate; send passwords over http"));
        group(app_.add_option("--namespace", arguments_.nameSpace, "the namespace of the classes")
                  ->capture_default_str());
        group(app_.add_option("--timeout", arguments_.timeout, "seconds to wait for each step")
                  ->check(CLI::Range(0.1, 3600.0))
                  ->capture_default_str());
        app_.add_flag("--json", arguments_.json, "write JSON, for scripts");
    }

    void addSettings() {
        auto* show = command(app_, "show", "show settings and statistics", [this](const Context& context) {
            return cdrctl::show(context, arguments_.className, arguments_.describe);
        });
        show->add_option("class", arguments_.className,
                         "service, prefix, access, push, pushed, pull, or a class's own name; all when left out");
        show->add_flag("-d,--describe", arguments_.describe, "add what each property means");
        auto* set = command(app_, "set", "change settings, in one request", [this](const Context& context) {
            return cdrctl::set(context, arguments_.className, assignmentsOf(arguments_));
        });
        set->add_option("--class", arguments_.className, "the class they are of; otherwise found by the first name");
        set->add_option("assignments", arguments_.assignments,
                        "NAME=VALUE ...; a value may be a label such as weekly or yes, Password=- asks for it")
            ->required();
        auto* bins =
            command(app_, "bins", "show the digit bins", [](const Context& context) { return cdrctl::bins(context); });
        auto* setBin = command(*bins, "set", "change one bin", [this](const Context& context) {
            return cdrctl::setBin(context, arguments_.binKind, arguments_.binNumber, arguments_.digits,
                                  arguments_.suppress);
        });
        setBin->add_option("kind", arguments_.binKind, "prefix or access")
            ->required()
            ->check(CLI::IsMember({"prefix", "access"}));
        setBin->add_option("number", arguments_.binNumber, "which, from 0")->required();
        setBin->add_option("digits", arguments_.digits, "its digits; '' empties it")->required();
        setBin->add_option("--suppress", arguments_.suppress, "how many digits an access bin suppresses");
    }

    void addPush() {
        CLI::App* const push = app_.add_subcommand("push", "the push transfer");
        push->require_subcommand(1);
        command(*push, "now", "run the transfer now", [](const Context& context) { return pushNow(context); });
        auto* why = command(*push, "why", "tell why a push runs or does not", [this](const Context& context) {
            const DevicePlaces places = DevicePlaces::fromEnvironment();
            const bool here = arguments_.local || (!arguments_.remote && context.client.address().isLoopback());
            return pushWhy(context, here ? &places : nullptr);
        });
        auto* local =
            why->add_flag("--local", arguments_.local, "this machine is the device, whatever the server's name");
        why->add_flag("--remote", arguments_.remote, "look at nothing of this machine")->excludes(local);
    }

    void addOthers() {
        auto* numbers = command(app_, "statistics", "show what was transferred", [this](const Context& context) {
            arguments_.watch.interval =
                std::chrono::milliseconds(static_cast<std::int64_t>(arguments_.interval * 1000));
            arguments_.watch.terminal = ::isatty(STDOUT_FILENO) != 0;
            return statistics(context, arguments_.watch);
        });
        numbers->add_flag("-w,--watch", arguments_.watch.on, "again and again, until Ctrl-C");
        numbers->add_option("--interval", arguments_.interval, "seconds between two looks")
            ->check(CLI::Range(0.1, 3600.0))
            ->capture_default_str();
        numbers->add_option("--count", arguments_.watch.count, "end after so many looks");
        CLI::App* const status = app_.add_subcommand("status", "explain a status code or its name");
        status->add_option("code", arguments_.code, "such as 0x20000B, 2097163, 301 or OSA_QUEUE_FULL")->required();
        status->callback(
            [this] { work_ = [this] { return explainStatus(std::cout, arguments_.json, arguments_.code); }; });
    }

    Arguments arguments_;
    CLI::App app_{"Shows and changes the settings of call detail recording over CIM-XML.", "cdrctl"};
    std::function<int()> work_;
};

int fail(int code, const std::string& text) {
    std::cerr << "cdrctl: " << printable(text) << "\n";
    return code;
}

} // namespace

int main(int argc, char** argv) {
    try {
        Program program;
        const int code = program.run(argc, argv);
        return std::cout.flush() ? code : fail(Refused, "standard output cannot be written");
    } catch (const UsageError& error) {
        return fail(WrongUsage, error.what());
    } catch (const ConnectError& error) {
        return fail(NoConnection, error.what());
    } catch (const LoginError& error) {
        return fail(NoLogin, error.what());
    } catch (const CimFault& error) {
        return fail(Refused, std::string(error.what()) + " (CIM error " + std::to_string(error.code()) + ")");
    } catch (const std::exception& error) {
        return fail(Refused, error.what());
    }
}
