// The server that files are sent to, over SFTP, FTPS or FTP.
#pragma once

#include "Failure.hpp"
#include "HostKeys.hpp"
#include "PushSettings.hpp"

#include <cstdint>
#include <curl/curl.h>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace transfer {

/// An open file to be sent.
struct Upload {
    int fd = -1;
    std::uint64_t size = 0;
    /// Called now and then with the bytes that the server has got.
    std::function<void(std::uint64_t)> progress;
};

/// libcurl's URL of a path of the server, escaped by libcurl. Throws Failure, scope Run, when the settings make none.
std::string urlOf(const PushSettings& settings, const std::string& path);

/// Connects when it is first used and stays connected. All paths are of the server. Every function throws Failure:
/// scope Run where a further try is useless (authentication, host key, certificate, missing folder), File where the
/// local file is at fault, else Try. No text of a failure holds the password.
class FarEnd {
  public:
    FarEnd(const PushSettings& settings, std::string knownHosts, const std::string& authorities);
    ~FarEnd();
    FarEnd(const FarEnd&) = delete;
    FarEnd& operator=(const FarEnd&) = delete;

    /// Sends what the server does not have of the file yet, beginning where an earlier upload to the path broke off.
    void upload(const std::string& path, const Upload& upload);
    /// Renames a file that has been uploaded, when its size is the upload's; otherwise nothing is renamed. Never
    /// replaces a file: Failure of scope File when there is one of the final name.
    void confirm(const std::string& path, const std::string& finalPath, const Upload& upload);
    /// The size of a file; empty when there is none, or none that may be read.
    std::optional<std::uint64_t> sizeOf(const std::string& path);
    /// Removes a file; a missing one is not an error.
    void remove(const std::string& path);

    /// The key that the SFTP server at the address shows. Nothing else is done there.
    static HostKey hostKeyOf(const Address& address);

  private:
    struct Transfer;

    void prepare();
    void setPath(const std::string& path);
    void setUpload(Transfer& transfer);
    [[noreturn]] void refuseExisting(const std::string& path);
    /// Runs commands of the protocol; one that begins with '*' may fail.
    void command(const std::vector<std::string>& lines);
    void discardOutput();
    CURLcode perform();
    [[noreturn]] void fail(CURLcode code, const Transfer& transfer);
    CURLcode meaningOf(CURLcode code) const;
    static Scope scopeOf(CURLcode code);
    std::string reasonOf(CURLcode code) const;
    bool isSftp() const { return settings_.address.protocol == Protocol::Sftp; }

    static int checkHostKey(CURL* handle, const curl_khkey* known, const curl_khkey* found, curl_khmatch match,
                            void* farEnd);

    const PushSettings settings_;
    const std::string knownHosts_;
    const std::string authorities_;
    CURL* handle_;
    char error_[CURL_ERROR_SIZE] = "";
    std::string hostKeyProblem_;
};

} // namespace transfer
