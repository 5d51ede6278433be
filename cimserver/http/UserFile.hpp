// The users of the server: a text file with one line per user, NAME:HASH[:ROLE], written by cimserver-passwd. HASH is
// in a format of crypt(5) other than the old DES, or "*" for a user who only logs in with a client certificate. ROLE is
// "read" (the default) or "write". Empty lines and lines that start with '#' are skipped.
#pragma once

#include "cimserver/common/Descriptor.hpp"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace cimserver::http {

struct User {
    std::string name;
    std::string hash;
    bool mayWrite = false;
};

/// Makes changes of a user file follow one another: a second object for the same file waits, in any process, until the
/// first is destroyed. Locks the folder, so that no lock file stays behind.
class UserFileLock {
  public:
    /// Throws std::runtime_error when the folder cannot be locked within half a minute.
    explicit UserFileLock(const std::filesystem::path& file);

  private:
    Descriptor folder_;
};

class UserFile {
  public:
    /// Throws std::runtime_error "FILE:LINE: text" or "FILE: text"; sizes are bounded.
    static UserFile load(const std::filesystem::path& file);
    static UserFile parse(std::string_view text, const std::string& name);

    /// Null when there is none.
    const User* find(std::string_view name) const;
    bool empty() const { return users_.empty(); }

    /// The user when the password is right, else null. Slow by design. Hashes for an unknown name too, with the cost of
    /// an existing user's hash, so that the time does not reveal which names exist.
    const User* verify(const std::string& name, const std::string& password) const;

    /// Adds the user or replaces the one of that name. Throws std::invalid_argument for a name that the file cannot
    /// hold.
    void set(User user);
    /// False when there was none.
    bool remove(std::string_view name);
    /// Replaces the file atomically, keeping its owner and mode; a new one is readable by its owner alone, but root
    /// gives it to its folder's owner, or lets the group of the folder read it when that is closed to others. A
    /// symbolic link stays, and the file it names is replaced. Comments are lost. Throws std::runtime_error.
    void save(const std::filesystem::path& file) const;

  private:
    const User& decoyFor(const std::string& name) const;

    std::vector<User> users_;
};

/// True when a folder of root lets its group in, but that group may not read the file in it: a service of the group
/// could not.
bool isHiddenFromService(const std::filesystem::path& file);

/// The longest password in bytes that crypt(3) takes.
extern const std::size_t kLongestPassword;

/// Hashes a new password with yescrypt and a fresh salt. Throws std::invalid_argument, saying why, for a password that
/// nobody could log in with, and std::runtime_error when the system cannot hash.
std::string hashPassword(const std::string& password);

} // namespace cimserver::http
