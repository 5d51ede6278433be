#include "cimserver/http/UserFile.hpp"

#include "cimserver/common/Descriptor.hpp"
#include "cimserver/common/Text.hpp"

#include <crypt.h>
#include <fcntl.h>
#include <openssl/crypto.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace cimserver::http {
namespace {

constexpr std::size_t kMaxFileBytes = std::size_t{1024} * 1024;
constexpr const char* kNewHashPrefix = "$y$";
constexpr int kMostLinks = 40;
constexpr auto kLockPatience = std::chrono::seconds(30);
constexpr auto kLockPause = std::chrono::milliseconds(10);

[[noreturn]] void fail(const std::string& where, const std::string& why) {
    throw std::runtime_error(where + ": " + why);
}

std::string errnoText() {
    return std::strerror(errno);
}

User parseLine(std::string_view line, const std::string& where) {
    const auto first = line.find(':');
    if (first == 0 || first == std::string_view::npos) {
        fail(where, "expected NAME:HASH or NAME:HASH:ROLE");
    }
    const auto second = line.find(':', first + 1);
    const auto role = second == std::string_view::npos ? "read" : line.substr(second + 1);
    if (role != "read" && role != "write") {
        fail(where, "the role is 'read' or 'write'");
    }
    User user{std::string(line.substr(0, first)), std::string(line.substr(first + 1, second - first - 1)),
              role == "write"};
    // Without '$' it is the old DES format, which is too weak.
    const bool known = user.hash[0] == '$' && crypt_checksalt(user.hash.c_str()) != CRYPT_SALT_INVALID;
    if (user.hash != "*" && !known) {
        fail(where, "the hash of user '" + user.name + "' is in no format this system knows");
    }
    return user;
}

/// The password's hash in the format, with the cost and the salt of `setting`; empty when the system cannot.
std::string hashLike(const std::string& password, const std::string& setting) {
    auto data = std::make_unique<crypt_data>();
    const char* hash = crypt_r(password.c_str(), setting.c_str(), data.get());
    std::string result = hash != nullptr && hash[0] != '*' ? hash : "";
    OPENSSL_cleanse(data.get(), sizeof *data);
    return result;
}

void writeWhole(int fd, const std::string& text, const std::string& file) {
    for (std::size_t done = 0; done < text.size();) {
        const auto written = ::write(fd, text.data() + done, text.size() - done);
        if (written < 0 && errno != EINTR) {
            fail(file, "cannot write: " + errnoText());
        }
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
}

/// The file that the symbolic links at the end of the path lead to; it need not exist.
std::filesystem::path targetOf(std::filesystem::path file) {
    for (int links = 0; std::filesystem::is_symlink(std::filesystem::symlink_status(file)); ++links) {
        if (links == kMostLinks) {
            fail(file.string(), "too many symbolic links");
        }
        file = file.parent_path() / std::filesystem::read_symlink(file); // an absolute one replaces the folder
    }
    return file;
}

int openFolder(const std::filesystem::path& file) {
    const auto folder = file.parent_path();
    return ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

/// A folder of root that its group may enter and others may not: what is in it is for a service of that group.
bool isForItsGroup(const struct stat& folder) {
    return folder.st_uid == 0 && folder.st_gid != 0 && (folder.st_mode & 0027U) == 0 && (folder.st_mode & S_IXGRP) != 0;
}

/// Gives the first file of root to those whom its folder is for: to the folder's owner, or to its group to read.
void shareWithFolder(int fd, const std::string& file) {
    struct stat folder {};
    if (::geteuid() != 0 || ::fstat(Descriptor(openFolder(file)).get(), &folder) != 0 ||
        (folder.st_uid == 0 && !isForItsGroup(folder))) {
        return;
    }
    const mode_t mode = folder.st_uid == 0 ? 0640 : 0600;
    if (::fchown(fd, folder.st_uid, folder.st_gid) != 0 || ::fchmod(fd, mode) != 0) {
        fail(file, "cannot set the owner and mode: " + errnoText());
    }
}

/// Gives the new file the owner and mode of the old one, if there is one.
void copyOwner(int fd, const std::string& file) {
    struct stat old {};
    if (::stat(file.c_str(), &old) != 0) {
        if (errno != ENOENT) {
            fail(file, "cannot read its owner and mode: " + errnoText());
        }
        return shareWithFolder(fd, file);
    }
    if (::fchown(fd, old.st_uid, old.st_gid) != 0 || ::fchmod(fd, old.st_mode & 0777U) != 0) {
        fail(file, "cannot keep the owner and mode: " + errnoText());
    }
}

} // namespace

UserFileLock::UserFileLock(const std::filesystem::path& file) : folder_(openFolder(targetOf(file))) {
    if (folder_.get() < 0) {
        fail(file.string(), "cannot open its folder: " + errnoText());
    }
    const auto end = std::chrono::steady_clock::now() + kLockPatience;
    while (::flock(folder_.get(), LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() > end) {
            fail(file.string(), "cannot lock its folder: " + errnoText());
        }
        std::this_thread::sleep_for(kLockPause);
    }
}

UserFile UserFile::load(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string text(kMaxFileBytes + 1, '\0');
    if (!in.is_open() || (in.read(text.data(), static_cast<std::streamsize>(text.size())), in.bad())) {
        fail(file.string(), "cannot read the user file: " + errnoText());
    }
    text.resize(static_cast<std::size_t>(in.gcount()));
    if (text.size() > kMaxFileBytes) {
        fail(file.string(), "the user file is larger than 1 MiB");
    }
    return parse(text, file.string());
}

UserFile UserFile::parse(std::string_view text, const std::string& name) {
    UserFile result;
    std::istringstream lines{std::string(text)};
    std::string line;
    for (unsigned number = 1; std::getline(lines, line); ++number) {
        const auto where = name + ":" + std::to_string(number);
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (trimmed(line).empty() || trimmed(line)[0] == '#') {
            continue;
        }
        if (line.find('\0') != std::string::npos) {
            fail(where, "a zero byte");
        }
        auto user = parseLine(trimmed(line), where);
        if (result.find(user.name) != nullptr) {
            fail(where, "the user '" + user.name + "' occurs twice");
        }
        result.users_.push_back(std::move(user));
    }
    return result;
}

const User* UserFile::find(std::string_view name) const {
    const auto found =
        std::find_if(users_.begin(), users_.end(), [name](const User& user) { return user.name == name; });
    return found == users_.end() ? nullptr : &*found;
}

/// Returns the same existing user each time for an unknown name, so that repeated attempts take the same time.
const User& UserFile::decoyFor(const std::string& name) const {
    static const User nobody{"", hashPassword("nobody's"), false};
    return users_.empty() ? nobody : users_[std::hash<std::string>()(name) % users_.size()];
}

const User* UserFile::verify(const std::string& name, const std::string& password) const {
    const User* user = find(name);
    const auto& hash = (user != nullptr ? *user : decoyFor(name)).hash;
    const auto given = hashLike(password, hash);
    const bool same = given.size() == hash.size() && CRYPTO_memcmp(given.data(), hash.data(), hash.size()) == 0;
    // A zero byte would end the password early for crypt.
    const bool whole = !password.empty() && password.find('\0') == std::string::npos;
    return user != nullptr && same && whole ? user : nullptr;
}

void UserFile::set(User user) {
    const bool control = std::any_of(user.name.begin(), user.name.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
    if (user.name.empty() || user.name.size() > 255 || control || user.name[0] == '#' ||
        user.name.find(':') != std::string::npos || trimmed(user.name) != user.name) {
        throw std::invalid_argument(
            "'" + user.name +
            "' cannot be a user name: it must not be empty or longer than 255 bytes, start with "
            "'#', hold ':' or control characters, or begin or end with a blank");
    }
    remove(user.name);
    users_.push_back(std::move(user));
}

bool UserFile::remove(std::string_view name) {
    const auto old = users_.size();
    users_.erase(std::remove_if(users_.begin(), users_.end(), [name](const User& user) { return user.name == name; }),
                 users_.end());
    return users_.size() != old;
}

void UserFile::save(const std::filesystem::path& path) const {
    const auto file = targetOf(path).string();
    std::string text;
    for (const auto& user : users_) {
        text += user.name + ":" + user.hash + ":" + (user.mayWrite ? "write" : "read") + "\n";
    }
    auto temporary = file + ".XXXXXX";
    const Descriptor fresh(::mkstemp(temporary.data()));
    if (fresh.get() < 0) {
        fail(file, "cannot create a file beside it: " + errnoText());
    }
    try {
        copyOwner(fresh.get(), file);
        writeWhole(fresh.get(), text, file);
        if (::fsync(fresh.get()) != 0 || ::rename(temporary.c_str(), file.c_str()) != 0) {
            fail(file, "cannot replace it: " + errnoText());
        }
    } catch (...) {
        ::unlink(temporary.c_str());
        throw;
    }
    ::fsync(Descriptor(openFolder(file)).get()); // so that the new name, too, outlives a power failure
}

bool isHiddenFromService(const std::filesystem::path& path) {
    const auto file = targetOf(path).string();
    struct stat folder {};
    struct stat state {};
    return ::fstat(Descriptor(openFolder(file)).get(), &folder) == 0 && isForItsGroup(folder) &&
           ::stat(file.c_str(), &state) == 0 && (state.st_mode & S_IROTH) == 0 &&
           (state.st_gid != folder.st_gid || (state.st_mode & S_IRGRP) == 0);
}

const std::size_t kLongestPassword = CRYPT_MAX_PASSPHRASE_SIZE - 1;

std::string hashPassword(const std::string& password) {
    if (password.size() > kLongestPassword) {
        throw std::invalid_argument("the password is too long: at most " + std::to_string(kLongestPassword) + " bytes");
    }
    if (password.empty() || password.find('\0') != std::string::npos) {
        throw std::invalid_argument("a password must not be empty or hold a zero byte");
    }
    char setting[CRYPT_GENSALT_OUTPUT_SIZE];
    if (crypt_gensalt_rn(kNewHashPrefix, 0, nullptr, 0, setting, sizeof setting) == nullptr) {
        throw std::runtime_error("cannot make a salt: " + errnoText());
    }
    auto hash = hashLike(password, setting);
    if (hash.empty()) {
        throw std::runtime_error("the system cannot hash with yescrypt");
    }
    return hash;
}

} // namespace cimserver::http
