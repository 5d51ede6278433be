#include "Privileges.hpp"

#include <cerrno>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zpo {

int becomeOwnerOf(const std::string& directory, RootRights rights) {
    struct stat status {};
    if (geteuid() != 0 || stat(directory.c_str(), &status) != 0 || status.st_uid == 0) {
        return 0;
    }
    const passwd* const owner = getpwuid(status.st_uid);
    const gid_t group = owner != nullptr ? owner->pw_gid : status.st_gid;
    const bool groups = owner != nullptr ? initgroups(owner->pw_name, group) == 0 : setgroups(0, nullptr) == 0;
    const bool kept = rights == RootRights::Kept;
    const bool done = groups && (kept ? setegid(group) : setgid(group)) == 0 &&
                      (kept ? seteuid(status.st_uid) : setuid(status.st_uid)) == 0;
    return done ? 0 : errno;
}

} // namespace zpo
