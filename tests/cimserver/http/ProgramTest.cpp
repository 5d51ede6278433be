// The programs as a person or an init system runs them: exit codes, messages, signals, files.
#include "Client.hpp"
#include "Support.hpp"
#include "cimserver/Process.hpp"
#include "cimserver/ProcessMemory.hpp"
#include "cimserver/http/UserFile.hpp"

#include <fcntl.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <fstream>

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class ProgramTest : public ::testing::Test {
  protected:
    ProgramTest() {
        support::writeFile(dir_ / "empty.mof", "// nothing\n");
        support::writeFile(dir_ / "bad.mof", "class {\n");
    }
    ~ProgramTest() override {
        if (server_ > 0) {
            stop(SIGKILL);
        }
    }

    std::string inFolder(const std::string& command) const { return "cd '" + dir_.path() + "' && " + command; }
    /// Runs a shell command in the folder, without a terminal to ask at.
    support::Result run(const std::string& command) const {
        return support::run({"setsid", "-w", "sh", "-c", inFolder(command)});
    }
    support::Result serverWith(const std::string& options) const { return run(CIMSERVERD " " + options); }
    support::Result passwd(const std::string& rest) const { return run(CIMSERVER_PASSWD " users " + rest); }

    /// Asks for a password at a terminal and types a line at each prompt; gives what the terminal shows.
    std::string typed(const std::string& rest, const std::vector<std::string>& lines) const {
        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            _exit(support::become({"sh", "-c", inFolder("exec " CIMSERVER_PASSWD " users " + rest)}));
        }
        std::string shown;
        std::size_t typedLines = 0;
        char more[512];
        for (ssize_t got = 0; (got = ::read(terminal, more, sizeof more)) > 0;) {
            shown.append(more, static_cast<std::size_t>(got));
            if (shown.size() > 2 && shown.compare(shown.size() - 2, 2, ": ") == 0 && typedLines < lines.size()) {
                const std::string line = lines[typedLines++] + "\n";
                EXPECT_EQ(::write(terminal, line.data(), line.size()), static_cast<ssize_t>(line.size()));
            }
        }
        ::close(terminal);
        support::waitForChild(child);
        return shown;
    }

    /// Starts the server and waits until it is ready; gives its port.
    std::uint16_t serve(const std::string& options) {
        const auto command = inFolder("exec " CIMSERVERD " --mof empty.mof --listen 127.0.0.1:0 --port-file port " +
                                      options + " >out 2>err");
        std::filesystem::remove(dir_ / "out");
        server_ = support::startChild([&] { return support::become({"sh", "-c", command}); });
        awaitText("out", "listening");
        return static_cast<std::uint16_t>(std::stoul(support::contentOf(dir_ / "port")));
    }
    int stop(int signal) {
        ::kill(server_, signal);
        return support::waitForChild(std::exchange(server_, -1));
    }
    void awaitText(const std::string& name, const std::string& text) const {
        support::waitUntil([&] { return support::contentOf(dir_ / name).find(text) != std::string::npos; },
                           std::chrono::seconds(10));
        EXPECT_THAT(support::contentOf(dir_ / name), HasSubstr(text));
    }

    /// A request that calls the test provider's method to fail in that way.
    static std::string fail(const std::string& how) {
        return http_testing::postCall(
            "Fail", ":ACME_Thing",
            "<METHODCALL NAME='Fail'><LOCALCLASSPATH><LOCALNAMESPACEPATH><NAMESPACE NAME='root'/><NAMESPACE "
            "NAME='cimv2'/></LOCALNAMESPACEPATH><CLASSNAME NAME='ACME_Thing'/></LOCALCLASSPATH><PARAMVALUE "
            "NAME='How'><VALUE>" +
                how + "</VALUE></PARAMVALUE></METHODCALL>");
    }

    support::TempDir dir_;
    pid_t server_ = -1;
};

TEST_F(ProgramTest, EveryFailingStartIsOneClearLine) {
    const auto address = "127.0.0.1:" + std::to_string(serve("--state-dir state"));
    const auto holder = std::to_string(server_);
    const std::string mof = "--mof empty.mof ";
    const std::string certify = "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=x";
    EXPECT_EQ(run(certify + " -out cert.pem -keyout key.pem && " + certify + " -keyout other.key").exitCode, 0);
    const std::tuple<int, std::string, std::string> cases[] = {
        {2, "--mof is required", ""},
        {2, "--tls-ciphers: 'ECDHE+ACM' is no cipher", mof + "--tls-ciphers ECDHE+AESGCM:ECDHE+ACM"},
        {2, "--tls-ciphers: '!ALL' is no cipher or leaves none", mof + "--tls-ciphers AESGCM:!ALL"},
        {2, "--preload: there is no provider Nobody in", mof + "--preload Nobody"},
        {2, "--concurrent-provider: there is no provider ../x in", mof + "--concurrent-provider ../x"},
        {3, "bad.mof:1:7: ", "--mof bad.mof --check"},
        {3, "cannot read the user file", mof + "--user-file absent"},
        {3, "cannot use the TLS certificate empty.mof", mof + "--tls-certificate empty.mof --tls-key empty.mof"},
        {3, "cannot use the TLS key other.key", mof + "--tls-certificate cert.pem --tls-key other.key"},
        {3, "cannot write the dump file", mof + "--dump /proc/absent/dump"},
        {3, "cannot write the audit record /proc/absent/audit", mof + "--audit-log /proc/absent/audit"},
        {3, "cannot write the log file", mof + "--log-file /proc/absent/log"},
        {3, "cannot write the providers' output", mof + "--provider-stdout /proc/absent/out"},
        {4, "cannot listen on http://" + address + ": Address already in use", mof + "--listen " + address},
        {5, "is in use by another server, process " + holder, mof + "--state-dir state"}};
    for (const auto& [exit, message, options] : cases) {
        const auto result = serverWith(options);
        EXPECT_EQ(result.exitCode, exit) << message;
        EXPECT_THAT(result.output,
                    ::testing::AllOf(::testing::MatchesRegex("cimserverd: [^\n]*\n"), HasSubstr(message)));
    }
    EXPECT_EQ(stop(SIGTERM), 0);
    support::writeFile(dir_ / "conf", "mof = empty.mof\nlisten = \"127.0.0.1:1\"\nstate-dir = state\n");
    const auto checked = serverWith("--config conf --check"); // the lock has ended with its holder
    EXPECT_EQ(checked.output + std::to_string(checked.exitCode), "cimserverd: the configuration is in order\n0");
    EXPECT_EQ(serverWith("--config conf --check --state-dir new/folder").exitCode, 0);
}

TEST_F(ProgramTest, FollowsSignals) {
    const auto port = serve("--log-file log");
    EXPECT_EQ(http_testing::Client(port).ask("GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n").status, 200U);
    EXPECT_EQ(http_testing::Client(port).ask(http_testing::post("not XML")).status, 400U);
    EXPECT_EQ(run("mv log log.old").exitCode, 0);
    ::kill(server_, SIGHUP);
    EXPECT_TRUE(support::waitUntil([this] { return std::filesystem::exists(dir_ / "log"); }));
    for (const int signal : {SIGPIPE, SIGUSR1}) {
        ::kill(server_, signal);
    }
    awaitText("log", "requests=2 client-errors=1");
    EXPECT_EQ(stop(SIGINT), 0);
    EXPECT_THAT(support::contentOf(dir_ / "log"),
                ::testing::ContainsRegex("SIGINT\n[^\n]* cim-errors=0\n[^\n]*stopped"));
    EXPECT_EQ(support::contentOf(dir_ / "err"), "");
}

TEST_F(ProgramTest, UsersOfTheToolLogInAfterAReload) {
    support::writeFile(dir_ / "users", "");
    const auto port = serve("--user-file users");
    const auto status = [port] {
        return http_testing::Client(port)
            .ask("OPTIONS / HTTP/1.1\r\nHost: localhost\r\nAuthorization: Basic "
                 "YW5uOmZpcnN0IHNlY3JldA==\r\n\r\n") // ann:first secret
            .status;
    };
    EXPECT_EQ(run("echo first secret | " CIMSERVER_PASSWD " users ann --role write --stdin").exitCode, 0);
    EXPECT_EQ(status(), 401U) << "not reloaded yet";
    ::kill(server_, SIGHUP);
    awaitText("err", "reloaded users");
    EXPECT_EQ(status(), 200U);
    EXPECT_EQ(run("echo second secret | " CIMSERVER_PASSWD " users ann --stdin").exitCode, 0);
    const auto users = cimserver::http::UserFile::load(dir_ / "users");
    EXPECT_TRUE(users.find("ann")->mayWrite) << "a new password keeps the role";
    EXPECT_NE(users.verify("ann", "second secret"), nullptr);
    EXPECT_EQ(passwd("ann --certificate-only < /dev/null").exitCode, 0);
    EXPECT_EQ(support::contentOf(dir_ / "users"), "ann:*:write\n");
    EXPECT_EQ(passwd("ann --delete").exitCode, 0);
    EXPECT_EQ(support::contentOf(dir_ / "users"), "");
    EXPECT_EQ(passwd("ann --delete").output, "cimserver-passwd: users has no user 'ann'\n");
    for (const char* refused :
         {"ann --delete", "a:b --stdin < bad.mof", "ann < /dev/null", "ann --stdin < /dev/null"}) {
        EXPECT_EQ(passwd(refused).exitCode, 1) << refused;
    }
    EXPECT_THAT(typed("ann", {"a long secret", "another secret"}), HasSubstr("the two differ"));
    EXPECT_EQ(passwd("ann --delete").exitCode, 1) << "nothing was written";
    EXPECT_THAT(typed("ann --role read", {"a long secret", "a long secret"}), Not(HasSubstr("secret")));
    EXPECT_NE(cimserver::http::UserFile::load(dir_ / "users").verify("ann", "a long secret"), nullptr);
    for (const char* misused : {"", "ann --role admin", "ann --rle read", "ann bob"}) {
        EXPECT_EQ(passwd(misused).exitCode, 2) << misused;
    }
}

TEST_F(ProgramTest, TheToolKeepsWhatOthersWriteAndTheLink) {
    support::writeFile(dir_ / "real", "");
    std::filesystem::permissions(dir_ / "real", std::filesystem::perms(0604));
    std::filesystem::create_symlink("real", dir_ / "users");
    const auto result =
        run("for i in 1 2 3 4 5 6 7 8; do echo x | " CIMSERVER_PASSWD " users u$i --stdin & done; wait");
    EXPECT_EQ(support::countOf("\n", support::contentOf(dir_ / "real")), 8U) << "changes at the same time";
    EXPECT_TRUE(std::filesystem::is_symlink(dir_ / "users"));
    EXPECT_EQ(support::countOf("warning: other users of this machine can read", result.output), 8U);
    const auto longest = [this](int length) {
        return run("head -c " + std::to_string(length) +
                   " /dev/zero | tr '\\0' x | " CIMSERVER_PASSWD " users u --stdin");
    };
    EXPECT_EQ(longest(511).exitCode, 0);
    EXPECT_EQ(longest(512).output, "cimserver-passwd: the password is too long: at most 511 bytes\n");
}

TEST_F(ProgramTest, TheCertificateIsForNamesAndAddressesAsTheyAreWritten) {
    EXPECT_EQ(
        run("touch a.example; " CIMSERVER_CERT " --directory . node1.rack2.room3.site4 '*.example' 192.0.2.7 ::2 7")
            .output,
        "./server.pem: valid for DNS:node1.rack2.room3.site4,DNS:*.example,IP:192.0.2.7,IP:::2,DNS:7,"
        "DNS:localhost,IP:127.0.0.1,IP:::1\n");
    EXPECT_EQ(run(CIMSERVER_CERT " --force --directory . " + std::string(60, 'n') + ".example").exitCode, 0)
        << "too long for a common name";
}

TEST_F(ProgramTest, AChangeThatCannotBeRecordedIsRefusedAndHealthTells) {
    support::run({"cp", TEST_PROVIDER_MOF, dir_ / "thing.mof"});
    const std::string common = "--mof thing.mof --provider-dir " TEST_PROVIDER_FOLDER " --audit-log ";
    const char* const health = "GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n";
    http_testing::Client refused(serve(common + "/dev/full"));
    EXPECT_EQ(refused.ask(health).body, "ok\n");
    EXPECT_THAT(refused.ask(fail("cim")).body, HasSubstr("audit record cannot be written"));
    EXPECT_EQ(refused.ask(health).status, 503U);
    stop(SIGTERM);
    http_testing::Client recorded(serve(common + "audit"));
    EXPECT_THAT(recorded.ask(fail("cim")).body, HasSubstr("keep &lt;out"));
    EXPECT_THAT(
        support::contentOf(dir_ / "audit"),
        ::testing::ContainsRegex("How=\"cim\" -> begun\n.* How=\"cim\" -> error 2 \"[^\n]*keep <out.x3e.\"\n$"));
}

TEST_F(ProgramTest, ACrashNamesWhatWasUnderWay) {
    support::run({"cp", TEST_PROVIDER_MOF, dir_ / "thing.mof"});
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
        {"crash", SIGSEGV, "SIGSEGV at 0x10 in", " in a request\n"},
        {"overflow", SIGSEGV, "SIGSEGV at 0x", " in a request\n"},
        {"abort", SIGABRT, "SIGABRT sent by", " in a request\n"},
        {"crash in a thread", SIGSEGV, "SIGSEGV at 0x10", " outside of the requests\n"}};
    char today[11];
    const std::time_t now = std::time(nullptr);
    (void)std::strftime(today, sizeof today, "%Y-%m-%d", std::gmtime(&now));
    const auto names =
        http_testing::postCall("EnumerateInstanceNames", "",
                               "<IMETHODCALL NAME='EnumerateInstanceNames'><LOCALNAMESPACEPATH><NAMESPACE "
                               "NAME='root'/><NAMESPACE NAME='cimv2'/>"
                               "</LOCALNAMESPACEPATH><IPARAMVALUE NAME='ClassName'><CLASSNAME "
                               "NAME='ACME_Thing'/></IPARAMVALUE></IMETHODCALL>");
    const auto* const task = " under way: Fail of ACME_Thing, provider ACMEThing, user -\n";
    for (const auto& [how, signal, line, where] : cases) {
        http_testing::Client client(serve("--mof thing.mof --log-file log --provider-dir " TEST_PROVIDER_FOLDER));
        for (int i = 0; i <= 128; ++i) { // more than can be named at a time
            ASSERT_EQ(client.ask(names).status, 200U);
        }
        client.ask(fail(how));
        EXPECT_EQ(support::waitForChild(std::exchange(server_, -1)), -signal) << how;
        for (const char* file : {"log", "err"}) {
            EXPECT_THAT(
                support::contentOf(dir_ / file),
                ::testing::AllOf(HasSubstr(line), HasSubstr(where), HasSubstr(task), HasSubstr("libACMEThing.so+0x"),
                                 ::testing::ContainsRegex(std::string(today) + "T[0-9:.]+.00:00 fatal crash: ")));
            std::filesystem::remove(dir_ / file);
        }
    }
}

// As root the files of somebody else are readable, too.
TEST_F(ProgramTest, ACheckSeesWhatTheServicesUserSees) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    const auto check = [this](const std::string& more) {
        const auto result =
            run("env --ignore-signal=CHLD " CIMSERVERD " --mof empty.mof --check --user nobody " + more);
        return std::to_string(result.exitCode) + " " + result.output;
    };
    EXPECT_EQ(run("chmod 755 . && mkdir -m 700 hidden && install -d -m 750 -g nogroup shared && "
                  "echo x | " CIMSERVER_PASSWD " hidden/users ann --stdin && "
                  "echo x | " CIMSERVER_PASSWD " shared/users ann --stdin && touch shared/old && chmod 600 shared/old")
                  .output,
              "");
    EXPECT_EQ(check("--user-file shared/users"), "0 cimserverd: the configuration is in order\n")
        << "made for its group";
    EXPECT_THAT(run("echo x | " CIMSERVER_PASSWD " shared/old ann --stdin").output,
                HasSubstr("warning: the group of its folder cannot read shared/old"));
    EXPECT_EQ(check("--mof hidden/mof --state-dir hidden/state "
                    "--user-file shared/old --audit-log shared/audit --log-file hidden/log"),
              "3 cimserverd: --mof: cannot read hidden/mof: Permission denied\n"
              "cimserverd: --user-file: cannot read shared/old: Permission denied\n"
              "cimserverd: --log-file: cannot create hidden/log: Permission denied\n"
              "cimserverd: --audit-log: cannot create shared/audit: Permission denied\n"
              "cimserverd: --state-dir: cannot write in hidden/state: Permission denied\n");
    EXPECT_EQ(check("--ready-command 'sh -c false'"),
              "3 cimserverd: --ready-command: sh -c false: has failed with status 1\n");
    EXPECT_THAT(check("--ready-command ./bad.mof"),
                HasSubstr("--ready-command: cannot run ./bad.mof: Permission denied"));
    support::writeFile(dir_ / "libX.so", "no module");
    EXPECT_THAT(check("--provider-dir . --preload X"), HasSubstr("--preload: the provider X cannot be loaded"));
    EXPECT_EQ(check("--state-dir state --dump dump"),
              "3 cimserverd: --dump: cannot create dump: Permission denied\n"
              "cimserverd: --state-dir: cannot create state: Permission denied\n");
    EXPECT_FALSE(std::filesystem::exists(dir_ / "state") || std::filesystem::exists(dir_ / "hidden/log"));
    EXPECT_EQ(serverWith("--mof empty.mof --check --user nobody2").output,
              "cimserverd: --user: there is no user nobody2\n");
}

TEST_F(ProgramTest, IsReadyWhileItsWorkCanBeDone) {
    http_testing::Client client(serve("--ready-command 'cat flag'"));
    const auto ready = [&client] { return client.ask("GET /ready HTTP/1.1\r\nHost: localhost\r\n\r\n"); };
    const auto before = ready();
    EXPECT_EQ(std::to_string(before.status) + before.body, "503cat: flag: No such file or directory\n");
    support::writeFile(dir_ / "flag", "");
    EXPECT_TRUE(support::waitUntil([&] { return ready().status == 200; }));
    EXPECT_EQ(ready().body, "ok\n");
    EXPECT_EQ(client.ask("POST /ready HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n\r\n").status, 405U);
}

TEST_F(ProgramTest, TellsTheServiceManager) {
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{AF_UNIX, {}};
    (dir_ / "notify").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    const timeval limit{10, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    const auto next = [socket] {
        char text[256];
        const auto size = ::recv(socket, text, sizeof text, 0);
        return std::string(text, size > 0 ? static_cast<std::size_t>(size) : 0);
    };
    for (const char* options : {"", "--respawn"}) {
        ::setenv("NOTIFY_SOCKET", address.sun_path, 1);
        ::setenv("WATCHDOG_USEC", "100000", 1);
        if (*options != '\0') {
            ::setenv("WATCHDOG_PID", "1", 1); // of the parent, which lets its child take that over
        }
        const auto port = serve(options);
        for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) {
            ::unsetenv(name);
        }
        EXPECT_EQ(next(), "READY=1\nSTATUS=listening on http://127.0.0.1:" + std::to_string(port));
        EXPECT_EQ(next(), "WATCHDOG=1");
        EXPECT_EQ(next(), "WATCHDOG=1");
        EXPECT_EQ(stop(SIGTERM), 0);
        std::string last = next();
        while (last == "WATCHDOG=1") {
            last = next();
        }
        EXPECT_EQ(last, "STOPPING=1");
    }
    ::close(socket);
}

TEST_F(ProgramTest, WaitsForAnAddressAndFollowsMovedFiles) {
    const auto first = serve("");
    const pid_t holder = std::exchange(server_, -1);
    const auto address = "127.0.0.1:" + std::to_string(first);
    const auto second = inFolder("exec " CIMSERVERD " --mof empty.mof --state-dir state --dump dump --log-file log "
                                 "--listen-timeout 1m --listen " +
                                 address + " >out2 2>err");
    server_ = support::startChild([&] { return support::become({"sh", "-c", second}); });
    awaitText("log", "Address already in use; trying again");
    ::kill(holder, SIGTERM);
    support::waitForChild(holder);
    awaitText("log", "listening on http://" + address);
    EXPECT_EQ(run("mv log log.old && mv state state.old && mv dump dump.old").exitCode, 0);
    awaitText("log", "the log file was moved away; this one was begun");
    support::waitUntil([this] { return std::filesystem::exists(dir_ / "state/cimserverd.lock"); });
    EXPECT_EQ(serverWith("--mof empty.mof --state-dir state").exitCode, 5) << "the new directory is locked, too";
    EXPECT_EQ(std::filesystem::status(dir_ / "state/cimserverd.lock").permissions(), std::filesystem::perms(0640));
    ::kill(server_, SIGHUP);
    EXPECT_TRUE(support::waitUntil([this] { return std::filesystem::exists(dir_ / "dump"); }));
}

TEST_F(ProgramTest, TheJournalGetsPrioritiesAndNoTime) {
    const auto port = std::to_string(serve(""));
    run("touch journal; export JOURNAL_STREAM=$(stat -c %d:%i journal); exec " CIMSERVERD
        " --mof empty.mof --allow-insecure --listen 0.0.0.0:" +
        port + " 2>>journal");
    EXPECT_THAT(
        support::contentOf(dir_ / "journal"),
        ::testing::MatchesRegex("<4>cimserverd: http://0[^\n]* TLS [^\n]*\n<2>cimserverd: cannot listen [^\n]*\n"));
}

TEST_F(ProgramTest, UsersWhoMayOnlyReadDoNotSeeSecrets) {
    support::writeFile(dir_ / "s.mof",
                       "class S { [Key] string Name; string Password; [EmbeddedObject] string In[]; };\n"
                       "instance of S { Name = \"a\"; Password = \"sesame\"; In = {\"<P N='password'>sesame\"}; };\n");
    EXPECT_EQ(run("echo x | " CIMSERVER_PASSWD " users ann --stdin && "
                  "echo x | " CIMSERVER_PASSWD " users bob --role write --stdin")
                  .exitCode,
              0);
    const auto port = serve("--mof s.mof --user-file users --hide-secrets");
    const std::string ns = "<LOCALNAMESPACEPATH><NAMESPACE NAME='root'/><NAMESPACE NAME='cimv2'/></LOCALNAMESPACEPATH>";
    const std::string name = "<IPARAMVALUE NAME='InstanceName'><INSTANCENAME CLASSNAME='S'><KEYBINDING NAME='Name'>"
                             "<KEYVALUE>a</KEYVALUE></KEYBINDING></INSTANCENAME></IPARAMVALUE>";
    const std::string ofClass = "<IPARAMVALUE NAME='ClassName'><CLASSNAME NAME='S'/></IPARAMVALUE>";
    const std::pair<const char*, std::string> calls[] = {
        {"GetInstance", name},
        {"GetProperty", name + "<IPARAMVALUE NAME='PropertyName'><VALUE>password</VALUE></IPARAMVALUE>"},
        {"EnumerateInstances", ofClass},
        {"OpenEnumerateInstances", ofClass + "<IPARAMVALUE NAME='MaxObjectCount'><VALUE>9</VALUE></IPARAMVALUE>"}};
    for (const auto& [call, parameters] : calls) {
        std::string body = "<IMETHODCALL NAME='";
        body.append(call).append("'>").append(ns).append(parameters).append("</IMETHODCALL>");
        auto request = http_testing::postCall(call, "", body);
        request.insert(request.find("CIMOperation"), "Authorization: Basic YW5uOng=\r\n"); // ann:x
        const auto ann = http_testing::Client(port).ask(request).body;
        EXPECT_TRUE(ann.find("***") != std::string::npos && ann.find("sesame") == std::string::npos) << ann;
        request.replace(request.find("YW5uOng="), 8, "Ym9iOng="); // bob:x
        EXPECT_THAT(http_testing::Client(port).ask(request).body, HasSubstr("sesame"));
    }
}

TEST_F(ProgramTest, WhatProvidersPrintIsKeptApart) {
    const auto own = [this](const std::string& where) {
        EXPECT_EQ(0, support::inChild([&] {
                      ::dup2(::open((dir_ / "own").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
                      const auto output = cimserver::redirectStandardOutput(where);
                      std::printf("printed by a provider\n");
                      return ::write(output.get(), "ready\n", 6) == 6 && std::fflush(stdout) == 0 ? 0 : 1;
                  }));
        return support::contentOf(dir_ / "own");
    };
    EXPECT_EQ(own(dir_ / "provider"), "ready\n");
    EXPECT_EQ(std::filesystem::status(dir_ / "provider").permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(support::contentOf(dir_ / "provider"), "printed by a provider\n");
    EXPECT_EQ(own("null"), "ready\n");
    EXPECT_THAT(own("inherit"), HasSubstr("ready\n"));
}

// Not those of the heap, which the sanitizers fill.
std::size_t pagesOfFiles(int process) {
    std::size_t size = 0, resident = 0, ofFiles = 0;
    std::ifstream("/proc/" + std::to_string(process) + "/statm") >> size >> resident >> ofFiles;
    return ofFiles;
}

TEST_F(ProgramTest, StartsAgainWhatACrashEnded) {
    serve("--respawn");
    const auto child = [this] {
        const auto id = std::to_string(server_);
        return std::atoi(support::contentOf("/proc/" + id + "/task/" + id + "/children").c_str());
    };
    EXPECT_TRUE(support::waitUntil([&] { return 2 * pagesOfFiles(server_) < pagesOfFiles(child()); }))
        << "the parent gives back what it read at its start";
    for (const int signal : {SIGSEGV, SIGABRT, SIGKILL}) {
        const int crashing = child();
        ASSERT_GT(crashing, 0);
        std::filesystem::resize_file(dir_ / "out", 0);
        ::kill(crashing, signal);
        awaitText("err", "ended by signal " + std::to_string(signal) + ", and started again");
        awaitText("out", "listening");
        EXPECT_NE(child(), crashing);
    }
    EXPECT_EQ(http_testing::Client(static_cast<std::uint16_t>(std::stoul(support::contentOf(dir_ / "port"))))
                  .ask("GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n")
                  .status,
              200U);
    ::kill(server_, SIGUSR1);
    awaitText("err", "requests=1 ");
    const int serving = child();
    ASSERT_GT(serving, 0);
    EXPECT_EQ(stop(SIGTERM), 0);
    awaitText("err", "stopped");
    EXPECT_NE(::kill(serving, 0), 0);
    serve("--respawn"); // and killed while it stops: not again
    const int stuck = child();
    ::kill(stuck, SIGSTOP);
    ::kill(server_, SIGTERM);
    ::kill(stuck, SIGKILL);
    EXPECT_EQ(support::waitForChild(std::exchange(server_, -1)), -SIGKILL);
    EXPECT_EQ(serverWith("--mof bad.mof --respawn").exitCode, 3);

    serve("--respawn");
    const int orphan = child();
    ASSERT_GT(orphan, 0);
    EXPECT_EQ(stop(SIGKILL), -SIGKILL);
    EXPECT_TRUE(support::waitUntil([orphan] { return ::kill(orphan, 0) != 0; })) << "it ends with its parent";
}

TEST(ProcessMemory, GivesBackWhatIsInFilesButNoPageThatWasChanged) {
    constexpr std::size_t kPage = 65536; // a multiple of each system's
    alignas(kPage) static const std::array<char, 16 * kPage> kTable{'a', 'b'};
    const volatile char* const table = kTable.data();
    auto* const changed = const_cast<char*>(kTable.data()) + kPage;
    ASSERT_EQ(0, mprotect(changed, kPage, PROT_READ | PROT_WRITE));
    *static_cast<volatile char*>(changed) = 'c';
    for (std::size_t at = 2 * kPage; at < kTable.size(); at += 4096) {
        EXPECT_EQ(table[at], '\0');
    }
    const auto before = pagesOfFiles(::getpid());
    cimserver::giveBackStart();
    EXPECT_LT(pagesOfFiles(::getpid()) + 14 * kPage / static_cast<std::size_t>(sysconf(_SC_PAGESIZE)), before + 20);
    EXPECT_EQ(table[1], 'b');
    EXPECT_EQ(table[kPage], 'c');
}

} // namespace
