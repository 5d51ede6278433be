// The server's options: one declaration for the command line and the configuration file.
#pragma once

#include "cimserver/common/AuditLog.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/http/Settings.hpp"

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace cimserver {

struct Options {
    http::Settings http;
    log::Settings log;
    audit::Settings audit;
    std::vector<std::string> mofFiles;
    std::string ns = "root/cimv2";
    std::vector<std::string> providerDirs;
    std::set<std::string> concurrentReads;
    std::set<std::string> concurrentProviders;
    std::vector<std::string> preload;
    std::map<std::string, std::string> providerConfig;
    std::map<std::string, std::string> errorHints; ///< what to tell clients after a provider's text that is this number
    std::chrono::milliseconds providerTimeout{60'000};
    std::chrono::milliseconds slowCall{30'000};
    std::size_t providerThreads = 8;
    std::size_t providerQueue = 128;
    std::string providerStdout = "null"; ///< a file, "null" or "inherit"
    std::string stateDir;
    std::string portFile;
    std::chrono::milliseconds stopTimeout{10'000};
    std::size_t xmlDepth = 64;
    std::size_t xmlElements = 50'000;
    std::size_t userEnumerations = 64;
    std::size_t enumerations = 256;
    bool forwardUnchanged = false;
    bool allowInsecure = false;
    std::chrono::milliseconds listenTimeout{0}; ///< how long an address that is in use is tried again
    std::string readyCommand;                   ///< must succeed for the server to be ready; empty: none
    bool hideSecrets = false;                   ///< values that are secrets are masked for users with the role "read"
    bool respawn = false;                       ///< after a crash
    bool check = false;
    std::string checkUser;  ///< check as this user
    std::string configFile; ///< empty: none was given
};

/// An unusable option; what() names it.
class OptionsError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads the command line and the configuration file it names. Returns nothing after printing the help or the version.
/// Throws OptionsError.
std::optional<Options> parseOptions(int argc, const char* const* argv);

/// Returns a warning for each address that is open beyond this host without TLS and a user file. Throws OptionsError
/// with the first of them unless `allowInsecure`, and when the TLS options do not fit together.
std::vector<std::string> checkAccess(const Options& options);

/// "250ms", "10s", "5m", "1h"; a plain number counts seconds. From 1 ms to 24 hours. Throws std::invalid_argument.
std::chrono::milliseconds parseDuration(const std::string& text);

/// "4096", "16K", "1M", "1G". From 1 byte to 1 GiB. Throws std::invalid_argument.
std::size_t parseSize(const std::string& text);

} // namespace cimserver
