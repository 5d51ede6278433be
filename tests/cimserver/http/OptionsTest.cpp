// What the options mean, and which are refused.
#include "cimserver/Options.hpp"
#include "Support.hpp"

#include <regex>

using namespace cimserver;
using namespace std::chrono_literals;

namespace {

Options parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), {"cimserverd", "--mof", "a.mof"});
    return parseOptions(static_cast<int>(arguments.size()), arguments.data()).value();
}

std::string messageOf(const std::vector<const char*>& arguments) {
    try {
        checkAccess(parse(arguments));
        return "";
    } catch (const OptionsError& error) {
        return error.what();
    }
}

TEST(Options, DefaultsAreInTheHelp) {
    const std::array<const char*, 2> arguments{"cimserverd", "--help"};
    testing::internal::CaptureStdout();
    EXPECT_FALSE(parseOptions(arguments.size(), arguments.data()));
    const std::string help = testing::internal::GetCapturedStdout();
    const std::regex limited("--[a-z-]+ (N:INT in \\[[^\\]]*\\]|TIME|SIZE)(=\\w+)?");
    std::string limits;
    for (std::sregex_iterator found(help.begin(), help.end(), limited), end; found != end; ++found) {
        limits += found->str() + "\n";
    }
    support::expectGolden(LIMITS, limits);
}

TEST(Options, DurationsAndSizes) {
    for (const auto& [text, value] :
         {std::pair("1ms", 1ms), {"3", 3000ms}, {"10s", 10000ms}, {"2m", 120000ms}, {"24h", 86400000ms}}) {
        EXPECT_EQ(parseDuration(text), value) << text;
    }
    for (const char* text : {"", "0", "0s", "-1s", "1.5s", "25h", "1d", "s", "1 s", "99999999999999999999"}) {
        EXPECT_THROW(parseDuration(text), std::invalid_argument) << text;
    }
    for (const auto& [text, value] :
         {std::pair<const char*, std::size_t>("1", 1), {"16K", 16384}, {"1G", 1073741824}}) {
        EXPECT_EQ(parseSize(text), value) << text;
    }
    for (const char* text : {"", "0", "2G", "1T", "K", "18446744073709551615K"}) {
        EXPECT_THROW(parseSize(text), std::invalid_argument) << text;
    }
}

TEST(Options, OnlyThisHostIsOpenWithoutTlsAndUsers) {
    const std::vector<const char*> tls = {"--tls-certificate", "c", "--tls-key", "k"};
    const auto with = [&tls](std::vector<const char*> more) {
        return more.insert(more.end(), tls.begin(), tls.end()), more;
    };
    EXPECT_EQ(messageOf({}), "");
    EXPECT_EQ(messageOf({"--listen", "[::1]:1"}), "");
    EXPECT_EQ(messageOf(with({"--listen", "0.0.0.0:1", "--user-file", "u"})), "");
    const std::string needs = "; it needs TLS and a user file (or --allow-insecure)";
    EXPECT_EQ(messageOf({"--listen", "0.0.0.0:1"}), "http://0.0.0.0:1 is open beyond this host without TLS" + needs);
    EXPECT_EQ(messageOf(with({"--listen", "[::]:1"})),
              "https://[::]:1 is open beyond this host without --user-file" + needs);
    EXPECT_EQ(messageOf(with({"--listen", "127.0.0.1:1", "--listen", "http://[::]:1", "--user-file", "u"})),
              "http://[::]:1 is open beyond this host without TLS" + needs);
    EXPECT_EQ(messageOf({"--listen", "https://127.0.0.1:1"}),
              "https://127.0.0.1:1 needs --tls-certificate and --tls-key");
    EXPECT_EQ(messageOf({"--tls-key", "k"}), "--tls-certificate and --tls-key belong together");
    for (const char* option : {"--tls-client-certificates=required", "--tls-client-ca=ca"}) {
        EXPECT_EQ(messageOf(with({option})),
                  "--tls-client-ca and --tls-client-certificates optional or required belong together");
    }
    const auto open = parse({"--listen", "0.0.0.0:1", "--listen", "0.0.0.0:2", "--allow-insecure"});
    EXPECT_EQ(checkAccess(open).size(), 2U) << "a warning for each";
}

TEST(Options, ComeFromTheConfigurationFileAndTheCommandLineGoesFirst) {
    const support::TempDir dir;
    const auto name = dir / "conf";
    const auto write = [&name](const char* text) { support::writeFile(name, text); };
    write("# a comment\nlisten = [\"127.0.0.1:1\", \"127.0.0.1:2\"]\nidle-timeout = 250ms\nmax-body = 2M\n"
          "forward-unchanged = true\nrealm = \"two words\"\nlog-level = error\nprovider-config = [\"a.b=c=d\",\n  "
          "'e=f, g'\n]\n"
          "concurrent-provider = [\"A\", \"B\"]\n");
    const auto options = parse({"--config", name.c_str(), "--max-body", "1K", "--log-level", "debug"});
    EXPECT_EQ(options.http.listeners.size(), 2U);
    EXPECT_EQ(options.http.limits.idle, 250ms);
    EXPECT_EQ(options.http.limits.bodyBytes, 1024U);
    EXPECT_TRUE(options.forwardUnchanged);
    EXPECT_EQ(options.http.login.realm, "two words");
    EXPECT_EQ(options.log.level, log::Level::Debug);
    EXPECT_EQ(options.providerConfig.at("a.b") + options.providerConfig.at("e"), "c=df, g");
    EXPECT_EQ(options.concurrentProviders, (std::set<std::string>{"A", "B"}));
    const std::pair<const char*, const char*> bad[] = {
        {"idle-timout = 3s\n", "the configuration file has an unknown option: idle-timout"},
        {"check = true\n", "--check cannot stand in the configuration file"},
        {"idle-timeout = never\n", "--idle-timeout: 'never' is not a time from 1ms to 24h, such as 250ms, 10s or 5m"},
        {"listen = nowhere\n", "cannot listen on 'nowhere': expected ADDRESS:PORT"},
        {"workers = 0\n", "--workers: Value 0 not in range 1 to 64"},
        {"realm = 'a\"b'\n", "--realm: quotes, backslashes and line ends cannot stand in it"},
        {"provider-config = novalue\n", "--provider-config: 'novalue' is not KEY=VALUE"},
        {"listen = [\"127.0.0.1:1\",\n \"127.0.0.1:2\"\nrealm = x\n",
         "line 1 of the configuration file: the list has no end: ] is missing"},
        {"# [\nlisten = [\"127.0.0.1:1\" # ]\n", "line 2 of the configuration file: the list has no end: ] is missing"},
        {"realm = \"x\nmof = y\n", "line 1 of the configuration file: a quotation mark is missing"},
    };
    for (const auto& [text, message] : bad) {
        write(text);
        EXPECT_EQ(messageOf({"--config", name.c_str()}), message);
    }
    EXPECT_EQ(messageOf({"--config", "/absent"}), std::string("/absent") + " was not readable (missing?)");
}

} // namespace
