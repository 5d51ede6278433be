#include "CrontabBackend.hpp"

#include "Files.hpp"
#include "ZpoShared.h"

#include <cerrno>
#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace zpo {
namespace {

std::string userName() {
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
    const std::string name = found == nullptr ? "" : found->pw_name;
    // BusyBox skips files with a dot in the name; a slash would leave the directory.
    return name.find_first_of("./") == std::string::npos ? name : "";
}

class CrontabDirectory final : public CrontabBackend {
  public:
    explicit CrontabDirectory(std::string directory) : directory_(std::move(directory)), user_(userName()) {}

    std::uint32_t read(std::string& table) override {
        if (user_.empty()) {
            return ZPO_SCHED_NO_USER;
        }
        switch (readFile(path(), kMaxCrontabBytes, table)) {
        case 0:
        case ENOENT:
            return ZPO_OK;
        case EFBIG:
            return ZPO_SCHED_TABLE_TOO_LARGE;
        case EMFILE:
        case ENFILE:
        case ENOMEM:
            return ZPO_SCHED_NO_RESOURCES;
        default:
            return ZPO_SCHED_NOT_READABLE;
        }
    }

    std::uint32_t write(const std::string& table) override {
        if (table.size() > kMaxCrontabBytes) {
            return ZPO_SCHED_TABLE_TOO_LARGE;
        }
        return replaceFile(path(), table, 0600) == 0 && tellDaemon() ? ZPO_OK : ZPO_SCHED_NOT_WRITABLE;
    }

  private:
    std::string path() const { return directory_ + "/" + user_; }

    // crond reads the tables of the users named in this file, then removes it.
    bool tellDaemon() const {
        const UniqueFd fd = openFile(directory_ + "/cron.update", O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK, 0600);
        return fd && writeAll(fd.get(), user_ + "\n") == 0;
    }

    const std::string directory_;
    const std::string user_;
};

} // namespace

std::unique_ptr<CrontabBackend> makeCrontabDirectory(const std::string& directory) {
    return std::make_unique<CrontabDirectory>(directory);
}

} // namespace zpo
