#include "Owner.hpp"

#include "Files.hpp"
#include "Privileges.hpp"
#include "Settings.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace zpo {
namespace {

void require(bool done, const std::string& what) {
    if (!done) {
        throw std::runtime_error(what + ": " + std::strerror(errno));
    }
}

// Only below a directory of root: elsewhere somebody else could put another directory in its place meanwhile.
void makeFor(const std::string& directory, const struct stat& owner) {
    struct stat parent {};
    if (owner.st_uid == 0 || stat(directoryOf(directory).c_str(), &parent) != 0 || parent.st_uid != 0 ||
        (parent.st_mode & (S_IWGRP | S_IWOTH)) != 0 || mkdir(directory.c_str(), 0750) != 0) {
        return;
    }
    const UniqueFd fd = openFile(directory, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    require(fd && fchown(fd.get(), owner.st_uid, owner.st_gid) == 0, directory);
}

} // namespace

void actAsOwnerOfState() {
    const Settings& given = settings();
    struct stat state {};
    struct stat log {};
    if (geteuid() != 0 || getuid() != 0 || !given.stateDirectory) {
        return;
    }
    if (stat(given.stateDirectory->c_str(), &state) != 0) {
        if (errno != ENOENT || !given.logDirectory || stat(given.logDirectory->c_str(), &log) != 0) {
            return;
        }
        makeFor(*given.stateDirectory, log);
    }
    if (const int error = becomeOwnerOf(*given.stateDirectory, RootRights::Kept)) {
        throw std::runtime_error("cannot act as the owner of " + *given.stateDirectory + ": " + std::strerror(error));
    }
}

AsCaller::AsCaller() : acting_(geteuid()) {
    require(seteuid(getuid()) == 0, "cannot act as the caller");
}

AsCaller::~AsCaller() {
    // Going on as the caller would be wrong, and cannot happen: the saved user is the caller's.
    if (seteuid(acting_) != 0) {
        _exit(1);
    }
}

} // namespace zpo
