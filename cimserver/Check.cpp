#include "cimserver/Check.hpp"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace cimserver {

namespace {

namespace fs = std::filesystem;

std::string folderOf(const std::string& file) {
    const auto folder = fs::path(file).parent_path().string();
    return folder.empty() ? "." : folder;
}

bool isMissing(const std::string& path) {
    return ::access(path.c_str(), F_OK) != 0 && errno == ENOENT;
}

/// Gathers what is wrong.
class Findings {
  public:
    void readable(const char* option, const std::string& file, int how = R_OK) {
        if (!file.empty() && ::access(file.c_str(), how) != 0) {
            add(option, (how == X_OK ? "cannot run " : "cannot read ") + file);
        }
    }
    /// A file that the server writes, and creates when it is missing.
    void writable(const char* option, const std::string& file) {
        struct stat state {};
        if (file.empty()) {
            return;
        }
        if (::stat(file.c_str(), &state) == 0) {
            errno = S_ISDIR(state.st_mode) ? EISDIR : 0;
            if (errno != 0 || ::access(file.c_str(), W_OK) != 0) {
                add(option, "cannot write " + file);
            }
        } else if (errno != ENOENT || ::access(folderOf(file).c_str(), W_OK | X_OK) != 0) {
            add(option, "cannot create " + file);
        }
    }
    /// A folder that the server writes in, and creates with those above it when it is missing.
    void folder(const char* option, const std::string& path) {
        if (path.empty()) {
            return;
        }
        std::string present = path;
        for (std::string above; isMissing(present) && (above = folderOf(present)) != present;) {
            present = above;
        }
        if (::access(present.c_str(), W_OK | X_OK) != 0) {
            add(option, (present == path ? "cannot write in " : "cannot create ") + path);
        }
    }

    std::vector<std::string> all;

  private:
    void add(const char* option, const std::string& what) {
        all.push_back(std::string(option) + ": " + what + ": " + std::strerror(errno));
    }
};

} // namespace

std::vector<std::string> fileProblems(const Options& options) {
    Findings found;
    found.readable("--config", options.configFile);
    for (const auto& file : options.mofFiles) {
        found.readable("--mof", file);
    }
    for (const auto& folder : options.providerDirs) {
        found.readable("--provider-dir", folder, R_OK | X_OK);
    }
    found.readable("--console", options.http.consoleFolder, R_OK | X_OK);
    found.readable("--user-file", options.http.login.userFile);
    found.readable("--tls-certificate", options.http.tls.certificateFile);
    found.readable("--tls-key", options.http.tls.keyFile);
    found.readable("--tls-client-ca", options.http.tls.clientCaFile);
    const auto command = options.readyCommand.substr(0, options.readyCommand.find(' '));
    if (command.find('/') != std::string::npos) {
        found.readable("--ready-command", command, X_OK);
    }
    found.writable("--log-file", options.log.file);
    found.writable("--audit-log", options.audit.target == "syslog" ? "/dev/log" : options.audit.target);
    found.writable("--dump", options.http.dumpFile);
    found.writable("--port-file", options.portFile);
    if (options.providerStdout != "null" && options.providerStdout != "inherit") {
        found.writable("--provider-stdout", options.providerStdout);
    }
    found.folder("--state-dir", options.stateDir);
    if (std::error_code hidden; !options.stateDir.empty() && fs::exists(options.stateDir, hidden)) {
        found.writable("--state-dir", options.stateDir + "/cimserverd.lock");
    }
    return found.all;
}

std::string foreignState(const std::string& stateDir) {
    struct stat state {};
    if (stateDir.empty() || ::geteuid() != 0 || ::stat(stateDir.c_str(), &state) != 0 || state.st_uid == 0) {
        return "";
    }
    const passwd* const owner = ::getpwuid(state.st_uid);
    return "root runs the server, but " + stateDir + " belongs to " +
           (owner != nullptr ? owner->pw_name : std::to_string(state.st_uid)) +
           ", who will not be able to use what is created now";
}

void becomeUser(const std::string& name) {
    const passwd* const user = ::getpwnam(name.c_str());
    if (user == nullptr) {
        throw OptionsError("--user: there is no user " + name);
    }
    if (user->pw_uid == ::getuid()) {
        return;
    }
    if (::initgroups(name.c_str(), user->pw_gid) != 0 || ::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0) {
        throw OptionsError("--user: only root can check as " + name + ": " + std::strerror(errno));
    }
}

} // namespace cimserver
