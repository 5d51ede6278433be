#include "cimserver/Options.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/http/Tls.hpp"

#include <CLI/CLI.hpp>

#include <charconv>
#include <iterator>
#include <sstream>

namespace cimserver {

using std::chrono::milliseconds;

namespace {

constexpr const char* kVersion = "cimserverd " CIMSERVER_VERSION;

struct Unit {
    std::string_view name;
    std::uint64_t factor;
};

/// A whole number followed by one of the units, from 1 of it to `most` in all; `what` says what was expected.
std::uint64_t parseNumber(const std::string& text, std::initializer_list<Unit> units, std::uint64_t most,
                          const char* what) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view rest(end, static_cast<std::size_t>(text.data() + text.size() - end));
    for (const auto& unit : units) {
        if (error == std::errc() && rest == unit.name && number >= 1 && number <= most / unit.factor) {
            return number * unit.factor;
        }
    }
    throw std::invalid_argument("'" + text + "' is not " + what);
}

/// Empty for 0, a default that cannot be given.
std::string durationText(milliseconds time) {
    const auto count = time.count();
    return count == 0 ? "" : count % 1000 == 0 ? std::to_string(count / 1000) + "s" : std::to_string(count) + "ms";
}

std::string sizeText(std::size_t size) {
    return size % 1024 == 0 ? std::to_string(size / 1024) + "K" : std::to_string(size);
}

/// Declares options in the current help group; durations and sizes are parsed by this file's functions.
class Declaration {
  public:
    explicit Declaration(CLI::App& app) : app_(app) {}

    void group(const char* name) { group_ = name; }

    template <class Target>
    CLI::Option* add(const char* name, Target& target, const char* value, const char* help) {
        auto* option = app_.add_option(name, target, help)->type_name(value)->group(group_);
        return CLI::detail::to_string(target).empty() ? option : option->capture_default_str();
    }
    template <class Number>
    void number(const char* name, Number& target, int least, int most, const char* help) {
        add(name, target, "N", help)->check(CLI::Range(least, most));
    }
    CLI::Option* flag(const char* name, bool& target, const char* help) {
        return app_.add_flag(name, target, help)->group(group_);
    }
    void duration(const char* name, milliseconds& target, const char* help) {
        parsed(name, "TIME", durationText(target), help,
               [&target](const std::string& text) { target = parseDuration(text); });
    }
    void size(const char* name, std::size_t& target, const char* help) {
        parsed(name, "SIZE", sizeText(target), help, [&target](const std::string& text) { target = parseSize(text); });
    }

  private:
    template <class Parse>
    void parsed(const char* name, const char* value, const std::string& now, const char* help, Parse parse) {
        const auto take = [parse, name](const std::string& text) {
            try {
                parse(text);
            } catch (const std::invalid_argument& error) {
                throw CLI::ValidationError(name, error.what());
            }
        };
        app_.add_option_function<std::string>(name, take, help)->type_name(value)->default_str(now)->group(group_);
    }

    CLI::App& app_;
    std::string group_;
};

/// False when a quoted value has no end. A quote begins only where a value may begin.
bool endsItsQuotes(std::string_view line) {
    char quote = '\0';
    char before = '=';
    for (const char c : line) {
        const bool begins =
            quote == '\0' && (c == '"' || c == '\'') && std::string_view("=[,").find(before) != std::string_view::npos;
        const bool ends = quote != '\0' && c == quote;
        quote = begins ? c : ends ? '\0' : quote;
        before = c == ' ' || c == '\t' ? before : c;
    }
    return quote == '\0';
}

/// The parser takes the lines after an unfinished list for its elements.
void requireWholeValues(const std::string& text) {
    std::istringstream lines(text);
    std::string whole;
    unsigned list = 0; // the line that began it
    for (unsigned number = 1; std::getline(lines, whole); ++number) {
        const auto line = trimmed(std::string_view(whole).substr(0, whole.find('#')));
        if (line.empty() || line[0] == ';') {
            continue;
        }
        if (!endsItsQuotes(line)) {
            throw std::invalid_argument("line " + std::to_string(number) +
                                        " of the configuration file: a quotation mark is missing");
        }
        const auto equals = line.find('=');
        const bool assigns = equals < line.find_first_of("\"'");
        if (list != 0 && assigns) {
            break;
        }
        const auto value = assigns ? trimmed(line.substr(equals + 1)) : line;
        list = assigns && !value.empty() && value[0] == '[' ? number : list;
        list = !value.empty() && value.back() == ']' ? 0 : list;
    }
    if (list != 0) {
        throw std::invalid_argument("line " + std::to_string(list) +
                                    " of the configuration file: the list has no end: ] is missing");
    }
}

class ConfigurationFile : public CLI::ConfigBase {
  public:
    std::vector<CLI::ConfigItem> from_config(std::istream& input) const override {
        const std::string text(std::istreambuf_iterator<char>(input), {});
        requireWholeValues(text);
        std::istringstream again(text);
        return CLI::ConfigBase::from_config(again);
    }
};

/// Options that are interpreted once all are read.
struct Texts {
    std::vector<std::string> listen;
    std::vector<std::string> providerConfig;
    std::vector<std::string> errorHints;
    std::string logLevel = "info";
    std::string clientCertificates = "none";
};

void declareCim(Declaration& declare, Options& options, Texts& texts) {
    declare.group("Schema and providers");
    declare.add("--mof", options.mofFiles, "FILE", "compile this schema; repeatable, in order")->required();
    declare.add("--namespace", options.ns, "NS", "the namespace the schema goes into");
    declare.add("--provider-dir", options.providerDirs, "DIR", "look for provider modules here; repeatable");
    declare.add("--provider-config", texts.providerConfig, "KEY=VALUE",
                "an item of configuration that providers may ask for; repeatable");
    declare.add("--error-hint", texts.errorHints, "NUMBER=TEXT",
                "what clients are told besides when a provider's error text is only this number ('none': when it is "
                "missing); repeatable");
    declare.add("--preload", options.preload, "ID",
                "initialize this provider at start instead of at its first use; repeatable");
    declare.add("--concurrent-reads", options.concurrentReads, "ID",
                "let reads of this provider run side by side; repeatable");
    declare.add("--concurrent-provider", options.concurrentProviders, "ID",
                "let all requests into this provider at once, for it serialises them itself; repeatable");
    declare.duration("--provider-timeout", options.providerTimeout,
                     "how long a request waits for a provider that is busy");
    declare.number("--provider-threads", options.providerThreads, 1, 64,
                   "calls inside one concurrent provider at a time");
    declare.number("--provider-queue", options.providerQueue, 1, 10'000, "requests that wait for one provider");
    declare.duration("--slow-call", options.slowCall, "a call of a provider that takes longer is logged");
    declare.add("--provider-stdout", options.providerStdout, "WHERE",
                "what providers print: to a FILE, to 'null', or 'inherit' standard output");
    declare.flag("--forward-unchanged", options.forwardUnchanged,
                 "ModifyInstance passes unchanged properties to the provider, too");
}

void declareAccess(Declaration& declare, Options& options, Texts& texts) {
    auto& http = options.http;
    declare.group("Access");
    declare
        .add("--listen", texts.listen, "ADDR:PORT",
             "listen here; repeatable; http:// or https:// may stand before it; port 0: any free port")
        ->default_str("127.0.0.1:5988");
    declare.duration("--listen-timeout", options.listenTimeout, "how long to try while an address is in use");
    declare.add("--host-name", http.hostNames, "NAME",
                "a name of this host that clients may use without users; repeatable");
    declare.add("--port-file", options.portFile, "FILE", "write the ports that were bound, one a line");
    declare.add("--user-file", http.login.userFile, "FILE", "ask for a user of this file (see cimserver-passwd)");
    declare.add("--realm", http.login.realm, "TEXT", "the name clients show when they ask for a password");
    declare.add("--tls-certificate", http.tls.certificateFile, "FILE", "PEM: the server's certificate and chain");
    declare.add("--tls-key", http.tls.keyFile, "FILE", "PEM: its key");
    declare.add("--tls-client-ca", http.tls.clientCaFile, "FILE", "PEM: who may sign client certificates");
    declare.add("--tls-client-certificates", texts.clientCertificates, "WHICH", "none, optional or required")
        ->check(CLI::IsMember({"none", "optional", "required"}));
    declare.add("--tls-min-version", http.tls.minVersion, "VERSION", "1.2 or 1.3")
        ->check(CLI::IsMember({"1.2", "1.3"}));
    declare.add("--tls-ciphers", http.tls.ciphers, "LIST",
                "in OpenSSL's notation; names of TLS 1.3 (TLS_...) may be among them");
    declare.flag("--hide-secrets", options.hideSecrets,
                 "mask the values of properties that hold a password for users with the role read");
    declare.flag("--allow-insecure", options.allowInsecure,
                 "listen beyond this host without TLS or users all the same");
    declare.duration("--login-cache", http.login.cache, "how long a right password is remembered");
    declare.add("--login-free-failures", http.login.freeFailures, "N",
                "failed logins of one address that cost no delay");
    declare.duration("--login-delay", http.login.delay, "the delay after those; doubles with each further failure");
    declare.duration("--login-max-delay", http.login.maxDelay, "the longest such delay");
}

void declareLimits(Declaration& declare, Options& options) {
    auto& limits = options.http.limits;
    declare.group("Limits");
    declare.size("--max-head", limits.headBytes, "bytes of a request's head");
    declare.size("--max-body", limits.bodyBytes, "bytes of a request's body");
    declare.size("--max-memory", limits.memory, "bytes of all requests and of answers not yet taken");
    declare.number("--max-connections", limits.connections, 1, 100'000, "connections at a time");
    declare.number("--max-peer-connections", limits.peerConnections, 0, 100'000,
                   "of one address or IPv6 network; 0: a quarter of all");
    declare.number("--max-loopback-connections", limits.loopbackConnections, 0, 100'000,
                   "of one loopback address; 0: half of all");
    declare.number("--max-depth", options.xmlDepth, 8, 1000, "XML elements inside one another");
    declare.number("--max-elements", options.xmlElements, 8, 10'000'000, "XML elements of a request");
    declare.number("--max-user-enumerations", options.userEnumerations, 1, 10'000,
                   "enumerations of one user open at a time (pull operations)");
    declare.number("--max-enumerations", options.enumerations, 1, 10'000, "enumerations of all users open at a time");
    declare.duration("--first-byte-timeout", limits.firstByte,
                     "for the TLS handshake, and for the first request to begin");
    declare.duration("--head-timeout", limits.head, "for a request's head");
    declare.duration("--body-timeout", limits.body, "for a request's body");
    declare.duration("--idle-timeout", limits.idle, "between requests");
    declare.duration("--write-timeout", limits.write, "for the client to take an answer");
    declare.duration("--linger-timeout", limits.linger, "after a closing answer");
    declare.duration("--stop-timeout", options.stopTimeout, "for requests under way when the server is stopped");
    declare.number("--workers", options.http.workers, 1, 64,
                   "threads that serve requests, beside those inside providers");
}

void declareAdministration(Declaration& declare, Options& options, Texts& texts) {
    declare.group("Administration");
    declare.flag("--check", options.check, "only check the configuration and all files it names")->configurable(false);
    declare.add("--user", options.checkUser, "NAME", "check as this user sees the files; needs root")
        ->configurable(false);
    declare.add("--ready-command", options.readyCommand, "COMMAND",
                "must succeed for /ready: a program with arguments, run without a shell");
    declare.flag("--respawn", options.respawn, "serve in a child process, and start it again when it crashes");
    declare.add("--state-dir", options.stateDir, "DIR", "locked while running, so that no two servers share it");
    declare.add("--log-file", options.log.file, "FILE", "log here instead of to standard error");
    declare.add("--log-level", texts.logLevel, "LEVEL", "debug, info, warning, error or fatal")
        ->check(CLI::IsMember({"debug", "info", "warning", "error", "fatal"}));
    declare.size("--log-size", options.log.maxBytes, "the log file's size at which a new one is begun");
    declare.number("--log-keep", options.log.keep, 0, 1000, "old log files that are kept");
    declare.add("--audit-log", options.audit.target, "FILE|syslog",
                "record changes here instead of in the log; a change that cannot be recorded is refused");
    declare.flag("--allow-unaudited", options.audit.optional, "make changes that cannot be recorded all the same");
    declare.add("--console", options.http.consoleFolder, "DIR",
                "serve the files of this folder under /console/, a page for browsers");
    declare.add("--dump", options.http.dumpFile, "FILE",
                "append all requests and answers, secrets removed, to this file");
}

log::Level levelOf(const std::string& name) {
    static const std::map<std::string, log::Level> levels = {{"debug", log::Level::Debug},
                                                             {"info", log::Level::Info},
                                                             {"warning", log::Level::Warning},
                                                             {"error", log::Level::Error},
                                                             {"fatal", log::Level::Fatal}};
    return levels.at(name);
}

http::ClientCertificates clientCertificatesOf(const std::string& name) {
    return name == "required"   ? http::ClientCertificates::Required
           : name == "optional" ? http::ClientCertificates::Optional
                                : http::ClientCertificates::None;
}

std::map<std::string, std::string> pairsOf(const char* option, const std::vector<std::string>& items) {
    std::map<std::string, std::string> pairs;
    for (const auto& item : items) {
        const auto equals = item.find('=');
        if (equals == 0 || equals == std::string::npos) {
            throw std::invalid_argument(std::string(option) + ": '" + item + "' is not KEY=VALUE");
        }
        pairs[item.substr(0, equals)] = item.substr(equals + 1);
    }
    return pairs;
}

void interpret(const Texts& texts, Options& options) {
    const bool tls = !options.http.tls.certificateFile.empty();
    for (const auto& text : texts.listen.empty() ? std::vector<std::string>{"127.0.0.1:5988"} : texts.listen) {
        options.http.listeners.push_back(http::parseListener(text, tls));
    }
    options.providerConfig = pairsOf("--provider-config", texts.providerConfig);
    options.errorHints = pairsOf("--error-hint", texts.errorHints);
    if (!options.checkUser.empty() && !options.check) {
        throw std::invalid_argument("--user goes with --check");
    }
    options.log.level = levelOf(texts.logLevel);
    options.http.tls.clientCertificates = clientCertificatesOf(texts.clientCertificates);
    if (options.http.tls.ciphers != http::TlsSettings().ciphers) { // OpenSSL takes long to start when it is not needed
        http::checkCiphers(options.http.tls.ciphers);
    }
    if (options.http.login.realm.find_first_of("\"\\\r\n") != std::string::npos) {
        throw std::invalid_argument("--realm: quotes, backslashes and line ends cannot stand in it");
    }
}

} // namespace

milliseconds parseDuration(const std::string& text) {
    constexpr std::uint64_t kDay = 86'400'000;
    const auto count = parseNumber(text, {{"", 1000}, {"ms", 1}, {"s", 1000}, {"m", 60'000}, {"h", 3'600'000}}, kDay,
                                   "a time from 1ms to 24h, such as 250ms, 10s or 5m");
    return milliseconds(static_cast<milliseconds::rep>(count));
}

std::size_t parseSize(const std::string& text) {
    constexpr std::uint64_t kKilo = 1024;
    const auto size = parseNumber(text, {{"", 1}, {"K", kKilo}, {"M", kKilo * kKilo}, {"G", kKilo * kKilo * kKilo}},
                                  kKilo * kKilo * kKilo, "a size from 1 to 1G, such as 4096, 16K or 1M");
    return static_cast<std::size_t>(size);
}

std::optional<Options> parseOptions(int argc, const char* const* argv) {
    Options options;
    Texts texts;
    CLI::App app("Serves CIM classes to WBEM clients by CIM-XML over HTTP.", "cimserverd");
    app.set_version_flag("--version", kVersion);
    auto* const config =
        app.set_config("--config", "",
                       "read options from FILE: lines of NAME = VALUE or NAME = [\"A\", \"B\"], without dashes")
            ->type_name("FILE");
    app.config_formatter(std::make_shared<ConfigurationFile>());
    app.allow_config_extras(CLI::config_extras_mode::error);
    Declaration declare(app);
    declareCim(declare, options, texts);
    declareAccess(declare, options, texts);
    declareLimits(declare, options);
    declareAdministration(declare, options, texts);
    try {
        app.parse(argc, argv);
        options.configFile = config->count() == 0 ? "" : config->as<std::string>();
        interpret(texts, options);
    } catch (const CLI::Success& asked) {
        app.exit(asked);
        return std::nullopt;
    } catch (const CLI::ConfigError& error) {
        const std::string text = error.what();
        if (const auto end = text.find(": This option is not allowed"); end != std::string::npos) {
            throw OptionsError("--" + text.substr(0, end) + " cannot stand in the configuration file");
        }
        throw OptionsError("the configuration file has an unknown option: " + text.substr(text.rfind(' ') + 1));
    } catch (const CLI::ParseError& error) {
        throw OptionsError(error.what());
    } catch (const std::invalid_argument& error) {
        throw OptionsError(error.what());
    }
    return options;
}

std::vector<std::string> checkAccess(const Options& options) {
    const auto& tls = options.http.tls;
    std::vector<std::string> warnings;
    if (tls.certificateFile.empty() != tls.keyFile.empty()) {
        throw OptionsError("--tls-certificate and --tls-key belong together");
    }
    if ((tls.clientCertificates != http::ClientCertificates::None) == tls.clientCaFile.empty()) {
        throw OptionsError("--tls-client-ca and --tls-client-certificates optional or required belong together");
    }
    for (const auto& listener : options.http.listeners) {
        if (listener.tls && tls.certificateFile.empty()) {
            throw OptionsError(listener.url() + " needs --tls-certificate and --tls-key");
        }
        if (!listener.loopback() && (!listener.tls || options.http.login.userFile.empty())) {
            warnings.push_back(listener.url() + " is open beyond this host without " +
                               (listener.tls ? "--user-file" : "TLS"));
        }
    }
    if (!warnings.empty() && !options.allowInsecure) {
        throw OptionsError(warnings.front() + "; it needs TLS and a user file (or --allow-insecure)");
    }
    return warnings;
}

} // namespace cimserver
