#include "FarEnd.hpp"

#include "Failure.hpp"
#include "Text.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace transfer {
namespace {

constexpr long kConnectSeconds = 30;
constexpr long kSilentSeconds = 60; // without a byte the connection counts as broken
constexpr long kUploadBuffer = 256L * 1024;
constexpr long kRefusedReply = 550; // of an FTP server; what is above it is as final, but for:
constexpr long kDiskFullReply = 552;

template <class Value>
void set(CURL* handle, CURLoption option, Value value) {
    if (curl_easy_setopt(handle, option, value) != CURLE_OK) {
        throw Failure(Scope::Run, "libcurl lacks the option " + std::to_string(option));
    }
}

struct ListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using List = std::unique_ptr<curl_slist, ListDeleter>;

List listOf(const std::vector<std::string>& lines) {
    List list;
    for (const std::string& line : lines) {
        curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
        if (longer == nullptr) {
            throw std::bad_alloc();
        }
        (void)list.release();
        list.reset(longer);
    }
    return list;
}

/// A path as an argument of libcurl's SFTP commands.
std::string quoted(const std::string& path) {
    std::string text = "\"";
    for (const char character : path) {
        text += character == '"' || character == '\\' ? "\\" : "";
        text += character;
    }
    return text + '"';
}

struct UrlDeleter {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
};

} // namespace

/// What one request of libcurl reads from and finds out.
struct FarEnd::Transfer {
    const Upload* upload = nullptr;
    bool mayRead = false; ///< false: nothing may be sent, the size at the far end is only compared
    std::uint64_t position = 0;
    int localError = 0; ///< an errno, or EIO when the file has become shorter
    bool sizeDiffers = false;
    bool hasData = false;

    static std::size_t read(char* buffer, std::size_t size, std::size_t count, void* object) {
        auto& self = *static_cast<Transfer*>(object);
        const std::uint64_t left = self.upload->size - self.position;
        if (left == 0) {
            return 0;
        }
        if (!self.mayRead) {
            self.sizeDiffers = true;
            return CURL_READFUNC_ABORT;
        }
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size * count, left));
        const ssize_t got = pread(self.upload->fd, buffer, wanted, static_cast<off_t>(self.position));
        if (got <= 0) {
            self.localError = got < 0 ? errno : EIO;
            return CURL_READFUNC_ABORT;
        }
        self.position += static_cast<std::uint64_t>(got);
        if (self.upload->progress) {
            self.upload->progress(self.position);
        }
        return static_cast<std::size_t>(got);
    }
    /// Called with the size at the far end when that is not 0.
    static int seek(void* object, curl_off_t offset, int /*origin*/) {
        auto& self = *static_cast<Transfer*>(object);
        const auto size = static_cast<std::uint64_t>(offset);
        self.sizeDiffers = size > self.upload->size || (!self.mayRead && size != self.upload->size);
        self.position = size;
        return self.sizeDiffers ? CURL_SEEKFUNC_FAIL : CURL_SEEKFUNC_OK;
    }
    /// Ends a download before its first byte: only the size is wanted.
    static std::size_t write(char* /*data*/, std::size_t /*size*/, std::size_t /*count*/, void* object) {
        static_cast<Transfer*>(object)->hasData = true;
        return 0;
    }
};

std::string urlOf(const PushSettings& settings, const std::string& path) {
    const Address& address = settings.address;
    const bool sftp = address.protocol == Protocol::Sftp;
    const bool absolute = !path.empty() && path.front() == '/';
    const std::string start = sftp ? (absolute ? "" : "/~/") : "/";
    const char* const scheme = sftp ? "sftp" : (address.isImplicitTls() ? "ftps" : "ftp");
    const std::string host = address.host.find(':') == std::string::npos ? address.host : "[" + address.host + "]";
    const std::unique_ptr<CURLU, UrlDeleter> url(curl_url());
    char* text = nullptr;
    if (!url || curl_url_set(url.get(), CURLUPART_SCHEME, scheme, 0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_HOST, host.c_str(), 0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_PORT, std::to_string(address.port).c_str(), 0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_PATH, (start + path).c_str(), CURLU_URLENCODE) != CURLUE_OK ||
        curl_url_get(url.get(), CURLUPART_URL, &text, 0) != CURLUE_OK) {
        throw Failure(Scope::Run, "IPAddress and DestFolder make no URL: " + settings.target());
    }
    const std::unique_ptr<char, void (*)(void*)> owned(text, &curl_free);
    return text;
}

FarEnd::FarEnd(const PushSettings& settings, std::string knownHosts, const std::string& authorities)
    : settings_(settings), knownHosts_(std::move(knownHosts)),
      authorities_(access(authorities.c_str(), R_OK) == 0 ? authorities : ""), handle_(curl_easy_init()) {
    if (handle_ == nullptr) {
        throw std::bad_alloc();
    }
}

FarEnd::~FarEnd() {
    curl_easy_cleanup(handle_);
}

void FarEnd::prepare() {
    curl_easy_reset(handle_);
    error_[0] = '\0';
    hostKeyProblem_.clear();
    set(handle_, CURLOPT_ERRORBUFFER, &error_[0]);
    set(handle_, CURLOPT_NOSIGNAL, 1L);
    set(handle_, CURLOPT_PROXY, "");      // the environment's is not meant for the device
    set(handle_, CURLOPT_PATH_AS_IS, 1L); // the commands beside it name the same path
    set(handle_, CURLOPT_PROTOCOLS_STR, isSftp() ? "sftp" : "ftp,ftps");
    set(handle_, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
    set(handle_, CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(handle_, CURLOPT_LOW_SPEED_TIME, kSilentSeconds);
    set(handle_, CURLOPT_TCP_KEEPALIVE, 1L);
    set(handle_, CURLOPT_USERNAME, settings_.user.c_str());
    set(handle_, CURLOPT_PASSWORD, settings_.password.c_str());
    if (isSftp()) {
        set(handle_, CURLOPT_SSH_AUTH_TYPES, static_cast<long>(CURLSSH_AUTH_PASSWORD | CURLSSH_AUTH_KEYBOARD));
        set(handle_, CURLOPT_SSH_KNOWNHOSTS, knownHosts_.c_str());
        set(handle_, CURLOPT_SSH_KEYFUNCTION, &FarEnd::checkHostKey);
        set(handle_, CURLOPT_SSH_KEYDATA, this);
        return;
    }
    const bool tls = settings_.address.protocol == Protocol::Ftps;
    set(handle_, CURLOPT_USE_SSL, static_cast<long>(tls ? CURLUSESSL_ALL : CURLUSESSL_NONE));
    set(handle_, CURLOPT_SSL_VERIFYPEER, 1L);
    set(handle_, CURLOPT_SSL_VERIFYHOST, 2L);
    set(handle_, CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_NOCWD));
    if (!authorities_.empty()) {
        set(handle_, CURLOPT_CAINFO, authorities_.c_str());
        set(handle_, CURLOPT_CAPATH, nullptr);
    }
}

void FarEnd::setPath(const std::string& path) {
    set(handle_, CURLOPT_URL, urlOf(settings_, path).c_str());
}

void FarEnd::setUpload(Transfer& transfer) {
    set(handle_, CURLOPT_UPLOAD, 1L);
    set(handle_, CURLOPT_UPLOAD_BUFFERSIZE, kUploadBuffer);
    set(handle_, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(transfer.upload->size));
    // -1: libcurl asks for the size at the far end, and seeks there.
    set(handle_, CURLOPT_RESUME_FROM_LARGE, curl_off_t{-1});
    set(handle_, CURLOPT_READFUNCTION, &Transfer::read);
    set(handle_, CURLOPT_READDATA, &transfer);
    set(handle_, CURLOPT_SEEKFUNCTION, &Transfer::seek);
    set(handle_, CURLOPT_SEEKDATA, &transfer);
}

void FarEnd::upload(const std::string& path, const Upload& upload) {
    Transfer transfer{&upload, true};
    prepare();
    setPath(path);
    setUpload(transfer);
    // Servers want the TLS session of the control connection for the data, and libcurl forgets it with the first file.
    set(handle_, CURLOPT_FRESH_CONNECT, settings_.address.protocol == Protocol::Ftps ? 1L : 0L);
    const CURLcode code = perform();
    if (transfer.sizeDiffers) {
        remove(path);
        throw Failure(Scope::Try, "the unfinished file on the server was longer than the file itself; it is removed");
    }
    if (transfer.localError != 0) {
        remove(path); // of the file as it is now nothing could go on there
    }
    if (code != CURLE_OK) {
        fail(code, transfer);
    }
}

void FarEnd::confirm(const std::string& path, const std::string& finalPath, const Upload& upload) {
    static const char kDiffers[] = "the server has not got the whole file: its size differs";
    if (!isSftp()) { // an FTP server renames over an existing file, and tells sizes
        if (sizeOf(finalPath)) {
            refuseExisting(path);
        }
        if (sizeOf(path) != upload.size) {
            throw Failure(Scope::Try, kDiffers);
        }
        command({"RNFR " + path, "RNTO " + finalPath});
        return;
    }
    // An upload of nothing more: libcurl compares the sizes on its way, and renames only when that succeeded.
    Transfer transfer{&upload, false};
    prepare();
    setPath(path);
    setUpload(transfer);
    const List commands = listOf({"rename " + quoted(path) + " " + quoted(finalPath)});
    set(handle_, CURLOPT_POSTQUOTE, commands.get());
    const CURLcode code = perform();
    if (transfer.sizeDiffers) {
        throw Failure(Scope::Try, kDiffers);
    }
    if (code == CURLE_QUOTE_ERROR && sizeOf(finalPath)) {
        refuseExisting(path);
    }
    if (code != CURLE_OK) {
        fail(code, transfer);
    }
}

void FarEnd::refuseExisting(const std::string& path) {
    remove(path);
    throw Failure(Scope::File, "the server already has another file of this name");
}

std::optional<std::uint64_t> FarEnd::sizeOf(const std::string& path) {
    Transfer transfer;
    prepare();
    setPath(path);
    if (isSftp()) {
        set(handle_, CURLOPT_WRITEFUNCTION, &Transfer::write);
        set(handle_, CURLOPT_WRITEDATA, &transfer);
    } else {
        set(handle_, CURLOPT_NOBODY, 1L);
        discardOutput();
    }
    const CURLcode code = perform();
    // An account that may only write cannot ask over SFTP.
    if (code == CURLE_REMOTE_FILE_NOT_FOUND || (isSftp() && code == CURLE_REMOTE_ACCESS_DENIED)) {
        return std::nullopt;
    }
    if (code != CURLE_OK && !transfer.hasData) {
        fail(code, transfer);
    }
    curl_off_t size = -1;
    curl_easy_getinfo(handle_, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &size);
    return size < 0 ? std::nullopt : std::optional(static_cast<std::uint64_t>(size));
}

void FarEnd::remove(const std::string& path) {
    command({isSftp() ? "*rm " + quoted(path) : "*DELE " + path});
}

void FarEnd::command(const std::vector<std::string>& lines) {
    prepare();
    setPath("");
    set(handle_, CURLOPT_NOBODY, 1L);
    discardOutput();
    const List commands = listOf(lines);
    set(handle_, CURLOPT_QUOTE, commands.get());
    if (const CURLcode code = perform(); code != CURLE_OK) {
        fail(code, Transfer());
    }
}

HostKey FarEnd::hostKeyOf(const Address& address) {
    PushSettings settings;
    settings.address = address;
    FarEnd farEnd(settings, "/dev/null", "");
    HostKey key;
    farEnd.prepare();
    farEnd.setPath("");
    set(
        farEnd.handle_, CURLOPT_SSH_KEYFUNCTION,
        +[](CURL*, const curl_khkey*, const curl_khkey* found, curl_khmatch, void* blob) -> int {
            static_cast<std::string*>(blob)->assign(found->key, found->len);
            return CURLKHSTAT_REJECT;
        });
    set(farEnd.handle_, CURLOPT_SSH_KEYDATA, &key.blob);
    const CURLcode code = farEnd.perform();
    if (key.blob.empty()) {
        farEnd.fail(code, Transfer());
    }
    return key;
}

int FarEnd::checkHostKey(CURL* /*handle*/, const curl_khkey* /*known*/, const curl_khkey* found, curl_khmatch match,
                         void* farEnd) {
    if (match == CURLKHMATCH_OK) {
        return CURLKHSTAT_FINE;
    }
    auto& self = *static_cast<FarEnd*>(farEnd);
    const HostKey key{found->len == 0 ? "" : std::string(found->key, found->len)};
    const std::string host = self.settings_.address.url().substr(std::strlen("sftp://"));
    self.hostKeyProblem_ = (match == CURLKHMATCH_MISMATCH ? "the host key of " + host + " has CHANGED; it is now "
                                                          : "the host key of " + host + " is not known; it is ") +
                           key.kind() + " " + key.fingerprint() + "; to accept it: CDRTransfer --trust " + host;
    return CURLKHSTAT_REJECT;
}

/// Without it libcurl writes listings and headers to standard output.
void FarEnd::discardOutput() {
    const auto discard = +[](char*, std::size_t size, std::size_t count, void*) { return size * count; };
    set(handle_, CURLOPT_HEADERFUNCTION, discard);
    set(handle_, CURLOPT_WRITEFUNCTION, discard);
}

CURLcode FarEnd::perform() {
    return curl_easy_perform(handle_);
}

void FarEnd::fail(CURLcode code, const Transfer& transfer) {
    if (transfer.localError != 0) {
        throw Failure(Scope::File,
                      std::string("the file cannot be read to its end: ") + std::strerror(transfer.localError));
    }
    const CURLcode meant = meaningOf(code);
    throw Failure(scopeOf(meant), reasonOf(meant));
}

/// Tells what an FTP server means by refusing to store a file. Over TLS libcurl takes that for the answer to PASV.
CURLcode FarEnd::meaningOf(CURLcode code) const {
    if (code != CURLE_UPLOAD_FAILED && code != CURLE_FTP_WEIRD_PASV_REPLY) {
        return code;
    }
    long reply = 0;
    curl_easy_getinfo(handle_, CURLINFO_RESPONSE_CODE, &reply);
    return reply == kDiskFullReply  ? CURLE_REMOTE_DISK_FULL
           : reply >= kRefusedReply ? CURLE_REMOTE_ACCESS_DENIED
                                    : code;
}

Scope FarEnd::scopeOf(CURLcode code) {
    switch (code) {
    case CURLE_LOGIN_DENIED:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_USE_SSL_FAILED:
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_REMOTE_ACCESS_DENIED:
    case CURLE_REMOTE_FILE_NOT_FOUND:
        return Scope::Run;
    default:
        return Scope::Try;
    }
}

std::string FarEnd::reasonOf(CURLcode code) const {
    if (!hostKeyProblem_.empty()) {
        return hostKeyProblem_;
    }
    std::string text = printable(error_[0] == '\0' ? curl_easy_strerror(code) : &error_[0]);
    // A server may repeat what it was sent.
    const std::string& password = settings_.password;
    for (auto at = text.find(password); !password.empty() && at != std::string::npos; at = text.find(password, at)) {
        text.replace(at, password.size(), "***");
        at += 3;
    }
    switch (code) {
    case CURLE_LOGIN_DENIED:
        return "the server refuses UserName or Password (" + text + ")";
    case CURLE_REMOTE_DISK_FULL:
        return "the server's disk is full (" + text + ")";
    case CURLE_REMOTE_ACCESS_DENIED:
    case CURLE_REMOTE_FILE_NOT_FOUND:
        return "the server refuses to write in DestFolder \"" + printable(settings_.folder) + "\", or there is none (" +
               text + ")";
    case CURLE_PEER_FAILED_VERIFICATION:
        return "the server's certificate is not trusted (" + text + ")";
    default:
        return text;
    }
}

} // namespace transfer
