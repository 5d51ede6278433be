#include "StateFolder.hpp"

#include "Failure.hpp"
#include "Files.hpp"
#include "Privileges.hpp"
#include "Settings.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace transfer {
namespace {

constexpr std::size_t kMaxFile = std::size_t{64} << 20U;

[[noreturn]] void refuse(const std::string& path, int error) {
    throw Failure(Scope::Run, path + ": " + std::strerror(error));
}

void makeFolder(const std::string& path, mode_t mode) {
    if (mkdir(path.c_str(), mode) != 0 && errno != EEXIST) {
        refuse(path, errno);
    }
}

} // namespace

StateFolder::StateFolder() {
    const auto& directory = zpo::settings().stateDirectory;
    if (!directory) {
        throw Failure(Scope::Run, "ZPO_STATE_DIR is unusable");
    }
    stateDirectory_ = *directory;
    path_ = *directory + "/transfer";
}

void StateFolder::create() const {
    makeFolder(stateDirectory_, 0755);
    makeFolder(path_, 0750);
    makeFolder(*this / "spool", 0750);
    makeFolder(*this / "outbox", 0750);
}

void StateFolder::becomeOwner() const {
    if (const int error = zpo::becomeOwnerOf(stateDirectory_, zpo::RootRights::Dropped)) {
        refuse("becoming the owner of " + stateDirectory_, error);
    }
}

bool StateFolder::isLocked() const {
    const zpo::UniqueFd fd = zpo::openFile(*this / "lock", O_RDWR);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return fd && fcntl(fd.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

std::string StateFolder::deviceId() const {
    constexpr std::size_t kDigits = 16;
    std::string id = loadFile(*this / "device");
    if (id.size() != kDigits || id.find_first_not_of("0123456789abcdef") != std::string::npos) {
        std::random_device random;
        id = fmt::format("{:08x}{:08x}", random(), random());
        saveFile(*this / "device", id);
    }
    return id;
}

void saveFile(const std::string& path, const std::string& content) {
    if (const int error = zpo::replaceFile(path, content, 0640)) {
        refuse(path, error);
    }
}

std::string loadFile(const std::string& path) {
    std::string content;
    return zpo::readFile(path, kMaxFile, content) == 0 ? content : "";
}

void emptyFolder(const std::string& path) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(path, ignored)) {
        std::filesystem::remove(entry.path(), ignored);
    }
}

} // namespace transfer
