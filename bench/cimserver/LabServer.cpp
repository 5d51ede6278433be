#include "LabServer.hpp"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace bench {

pid_t spawn(std::vector<std::string> arguments) {
    const pid_t child = ::fork();
    if (child != 0) {
        return child;
    }
    std::vector<char*> texts;
    texts.reserve(arguments.size() + 1);
    for (auto& argument : arguments) {
        texts.push_back(argument.data());
    }
    texts.push_back(nullptr);
    ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    ::execvp(texts[0], texts.data());
    ::_exit(127);
}

LabFolder::LabFolder() : path_(std::filesystem::temp_directory_path() / "bench-cimserver-XXXXXX") {
    if (::mkdtemp(path_.data()) == nullptr) {
        throw std::runtime_error("cannot make a folder like " + path_);
    }
    for (const char* variable : {"ZPO_STATE_DIR", "ZPO_LOG_DIR", "ZPO_CRONTAB_DIR"}) {
        ::setenv(variable, path_.c_str(), 1);
    }
}

LabFolder::~LabFolder() {
    std::filesystem::remove_all(path_);
}

PortProcess::PortProcess(const std::vector<std::string>& command, std::string portFile)
    : portFile_(std::move(portFile)), started_(Clock::now()), child_(spawn(command)) {}

PortProcess::~PortProcess() {
    stop();
}

int PortProcess::port() const {
    constexpr std::chrono::microseconds kStep{100};
    int port = 0;
    for (int i = 0; i < 600'000 && !(std::ifstream(portFile_) >> port); ++i) {
        std::this_thread::sleep_for(kStep);
    }
    return port;
}

std::size_t PortProcess::memory(const std::string& field) const {
    std::ifstream status("/proc/" + std::to_string(child_) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind(field + ":", 0) == 0) {
            return std::stoul(line.substr(field.size() + 1));
        }
    }
    return 0;
}

void PortProcess::stop() {
    if (child_ > 0) {
        ::kill(child_, SIGTERM);
        ::waitpid(child_, nullptr, 0);
        child_ = -1;
    }
}

void loadDefaults() {
    ::waitpid(spawn({ZPOREG, "load", DEFAULTS}), nullptr, 0);
}

namespace {

std::vector<std::string> serverCommand(std::vector<std::string> command, const std::string& folder,
                                       const std::vector<std::string>& options) {
    loadDefaults();
    command.insert(command.end(), {CIMSERVERD, "--mof", SCHEMA, "--provider-dir", MODULES, "--concurrent-provider",
                                   "CDRProvider", "--listen", "127.0.0.1:0", "--port-file", folder + "/port",
                                   "--log-file", folder + "/log", "--provider-stdout", "/dev/null"});
    command.insert(command.end(), options.begin(), options.end());
    return command;
}

} // namespace

LabServer::LabServer(const std::vector<std::string>& command, const std::vector<std::string>& options)
    : PortProcess(serverCommand(command, path(), options), path() + "/port") {}

FloorServer::FloorServer() : PortProcess({FLOOR_SERVER, path() + "/port"}, path() + "/port") {}

std::vector<std::string> benchProvider() {
    return {"--mof", BENCH_MOF, "--provider-dir", BENCH_MODULES};
}

} // namespace bench
