// The programs as a person or an init system runs them: exit codes, messages, signals, files.
#include "Client.hpp"
#include "cimserver/Process.hpp"
#include "cimserver/http/UserFile.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

using namespace std::chrono_literals;
using ::testing::HasSubstr;

namespace {

std::string contentOf(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

class ProgramTest : public ::testing::Test {
  protected:
    ProgramTest() {
        std::string folder = std::filesystem::temp_directory_path() / "cimserver-program-XXXXXX";
        folder_ = ::mkdtemp(folder.data());
        write("empty.mof", "// nothing\n");
        write("bad.mof", "class {\n");
    }
    ~ProgramTest() override {
        if (server_ > 0) {
            ::kill(server_, SIGKILL);
            ::waitpid(server_, nullptr, 0);
        }
        std::filesystem::remove_all(folder_);
    }

    std::string path(const std::string& name) const { return folder_ + "/" + name; }
    void write(const std::string& name, const std::string& text) const { std::ofstream(path(name)) << text; }

    /// Runs a program in the folder; its output goes to the files "out" and "err" with the suffix.
    pid_t spawn(const std::string& program, std::vector<std::string> arguments, const std::string& suffix,
                const std::string& input = "/dev/null") const {
        const pid_t child = ::fork();
        if (child != 0) {
            return child;
        }
        const auto open = [](const std::string& file, int flags, int fd) {
            ::dup2(::open(file.c_str(), flags, 0600), fd);
        };
        open(input, O_RDONLY, 0);
        open(path("out" + suffix), O_WRONLY | O_CREAT | O_TRUNC, 1);
        open(path("err" + suffix), O_WRONLY | O_CREAT | O_TRUNC, 2);
        arguments.insert(arguments.begin(), program);
        std::vector<char*> texts;
        for (auto& argument : arguments) {
            texts.push_back(argument.data());
        }
        texts.push_back(nullptr);
        [[maybe_unused]] const int changed = ::chdir(folder_.c_str());
        ::execv(program.c_str(), texts.data());
        ::_exit(127);
    }
    static int exitOf(pid_t child) {
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    int run(const std::string& program, std::vector<std::string> arguments,
            const std::string& input = "/dev/null") const {
        return exitOf(spawn(program, std::move(arguments), "", input));
    }

    /// Starts the server and waits until it is ready; gives its port.
    std::uint16_t serve(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--mof", "empty.mof", "--listen", "127.0.0.1:0", "--port-file", "port"});
        server_ = spawn(CIMSERVERD, arguments, ".server");
        for (int i = 0; i < 1000 && contentOf(path("out.server")).find("listening") == std::string::npos; ++i) {
            std::this_thread::sleep_for(10ms);
        }
        return static_cast<std::uint16_t>(std::stoul(contentOf(path("port"))));
    }
    int stop(int signal) {
        ::kill(server_, signal);
        return exitOf(std::exchange(server_, -1));
    }
    void awaitText(const std::string& name, const std::string& text) const {
        for (int i = 0; i < 1000 && contentOf(path(name)).find(text) == std::string::npos; ++i) {
            std::this_thread::sleep_for(10ms);
        }
        EXPECT_THAT(contentOf(path(name)), HasSubstr(text));
    }

    std::string folder_;
    pid_t server_ = -1;
};

TEST_F(ProgramTest, EveryFailingStartIsOneClearLine) {
    const auto port = std::to_string(serve({"--state-dir", "state"}));
    const auto holder = std::to_string(server_);
    struct Case {
        int exit;
        std::string message;
        std::vector<std::string> arguments;
    };
    const Case cases[] = {
        {2, "--mof is required", {}},
        {2, "--mof: there is no file absent.mof", {"--mof", "absent.mof"}},
        {2, "--provider-dir: absent is not a directory", {"--mof", "empty.mof", "--provider-dir", "absent"}},
        {2, "http://0.0.0.0:0 is open beyond this host", {"--mof", "empty.mof", "--listen", "0.0.0.0:0"}},
        {3, "bad.mof:1:7: ", {"--mof", "bad.mof"}},
        {3, "cannot read the user file", {"--mof", "empty.mof", "--user-file", "absent"}},
        {3,
         "cannot use the TLS certificate empty.mof",
         {"--mof", "empty.mof", "--tls-certificate", "empty.mof", "--tls-key", "empty.mof"}},
        {3, "cannot write the dump file", {"--mof", "empty.mof", "--dump", "/proc/absent/dump"}},
        {3, "cannot write the log file", {"--mof", "empty.mof", "--log-file", "/proc/absent/log"}},
        {3, "cannot write the providers' output", {"--mof", "empty.mof", "--provider-stdout", "/proc/absent/out"}},
        {4,
         "cannot listen on http://127.0.0.1:" + port + ": Address already in use",
         {"--mof", "empty.mof", "--listen", "127.0.0.1:" + port}},
        {5, "is in use by another server, process " + holder, {"--mof", "empty.mof", "--state-dir", "state"}},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(run(CIMSERVERD, one.arguments), one.exit) << one.message;
        const auto text = contentOf(path("err"));
        EXPECT_THAT(text, ::testing::StartsWith("cimserverd: "));
        EXPECT_THAT(text, HasSubstr(one.message));
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    }
    EXPECT_EQ(stop(SIGTERM), 0);
    EXPECT_EQ(run(CIMSERVERD, {"--mof", "empty.mof", "--state-dir", "state", "--check"}), 0)
        << "the lock ends with its holder";
}

TEST_F(ProgramTest, ChecksWithoutServing) {
    write("conf", "mof = empty.mof\nlisten = \"127.0.0.1:1\"\n");
    EXPECT_EQ(run(CIMSERVERD, {"--config", "conf", "--check"}), 0);
    EXPECT_EQ(contentOf(path("out")), "cimserverd: the configuration is in order\n");
    write("conf", "mof = bad.mof\n");
    EXPECT_EQ(run(CIMSERVERD, {"--config", "conf", "--check"}), 3);
}

TEST_F(ProgramTest, FollowsSignals) {
    const auto port = serve({"--log-file", "log"});
    EXPECT_EQ(contentOf(path("out.server")),
              "cimserverd: listening on http://127.0.0.1:" + std::to_string(port) + "\n");
    EXPECT_EQ(http_testing::Client(port).ask("GET /health HTTP/1.1\r\n\r\n").status, 200U);
    EXPECT_EQ(http_testing::Client(port).ask(http_testing::post("not XML")).status, 400U);
    ::kill(server_, SIGPIPE);
    ::kill(server_, SIGHUP);
    ::kill(server_, SIGUSR1);
    awaitText("log", "requests=2 client-errors=1");
    EXPECT_EQ(stop(SIGINT), 0);
    EXPECT_THAT(contentOf(path("log")), HasSubstr("stopped"));
    EXPECT_EQ(contentOf(path("err.server")), "");
}

TEST_F(ProgramTest, UsersOfTheToolLogInAfterAReload) {
    write("users", "");
    write("one", "first secret\n");
    write("two", "second secret\n");
    const auto port = serve({"--user-file", "users"});
    const auto status = [port](const char* encoded) {
        return http_testing::Client(port)
            .ask("OPTIONS / HTTP/1.1\r\nAuthorization: Basic " + std::string(encoded) + "\r\n\r\n")
            .status;
    };
    const char* const first = "YW5uOmZpcnN0IHNlY3JldA==";  // ann:first secret
    const char* const second = "YW5uOnNlY29uZCBzZWNyZXQ="; // ann:second secret
    EXPECT_EQ(status(first), 401U);
    EXPECT_EQ(run(CIMSERVER_PASSWD, {"users", "ann", "--role", "write", "--stdin"}, path("one")), 0);
    ::kill(server_, SIGHUP);
    awaitText("err.server", "reloaded users");
    EXPECT_EQ(status(first), 200U);
    EXPECT_EQ(run(CIMSERVER_PASSWD, {"users", "ann", "--stdin"}, path("two")), 0);
    const auto users = cimserver::http::UserFile::load(path("users"));
    EXPECT_TRUE(users.find("ann")->mayWrite) << "a new password keeps the role";
    EXPECT_NE(users.verify("ann", "second secret"), nullptr);
    EXPECT_EQ(status(second), 401U) << "not reloaded yet";
    EXPECT_EQ(run(CIMSERVER_PASSWD, {"users", "ann", "--delete"}), 0);
    EXPECT_EQ(contentOf(path("users")), "");
    EXPECT_EQ(run(CIMSERVER_PASSWD, {"users", "ann", "--delete"}), 1);
    EXPECT_EQ(contentOf(path("err")), "cimserver-passwd: users has no user 'ann'\n");
    EXPECT_EQ(run(CIMSERVER_PASSWD, {"users", "a:b", "--stdin"}, path("one")), 1);
    EXPECT_EQ(run(CIMSERVER_PASSWD, {"users", "ann"}), 1) << "no terminal to ask at";
    EXPECT_EQ(run(CIMSERVER_PASSWD, {"users", "ann", "--stdin"}), 1) << "no password there";
}

TEST_F(ProgramTest, WhatProvidersPrintIsKeptApart) {
    const auto body = [this](const std::string& where) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(::open(path("own").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
            const auto own = cimserver::redirectStandardOutput(where);
            std::printf("printed by a provider\n");
            ::_exit(::write(own.get(), "ready\n", 6) == 6 ? 0 : 1);
        }
        EXPECT_EQ(exitOf(child), 0);
        return contentOf(path("own"));
    };
    EXPECT_EQ(body(path("provider")), "ready\n");
    EXPECT_EQ(contentOf(path("provider")), "printed by a provider\n");
    EXPECT_EQ(body("null"), "ready\n");
    EXPECT_THAT(body("inherit"), HasSubstr("ready\n"));
}

} // namespace
