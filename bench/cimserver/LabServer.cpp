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

LabServer::LabServer(const std::vector<std::string>& command, const std::vector<std::string>& options) {
    ::waitpid(spawn({ZPOREG, "load", DEFAULTS}), nullptr, 0);
    std::vector<std::string> arguments = command;
    arguments.insert(arguments.end(), {CIMSERVERD, "--mof", SCHEMA, "--provider-dir", MODULES, "--concurrent-provider",
                                       "CDRProvider", "--listen", "127.0.0.1:0", "--port-file", folder() + "/port",
                                       "--log-file", folder() + "/log", "--provider-stdout", "/dev/null"});
    arguments.insert(arguments.end(), options.begin(), options.end());
    child_ = spawn(arguments);
}

LabServer::~LabServer() {
    stop();
}

int LabServer::port() const {
    int port = 0;
    for (int i = 0; i < 6000 && !(std::ifstream(folder() + "/port") >> port); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return port;
}

std::size_t LabServer::memory(const std::string& field) const {
    std::ifstream status("/proc/" + std::to_string(child_) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind(field + ":", 0) == 0) {
            return std::stoul(line.substr(field.size() + 1));
        }
    }
    return 0;
}

void LabServer::stop() {
    if (child_ > 0) {
        ::kill(child_, SIGTERM);
        ::waitpid(child_, nullptr, 0);
        child_ = -1;
    }
}

} // namespace bench
