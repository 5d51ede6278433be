#include "Records.hpp"

#include "Failure.hpp"
#include "Text.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace transfer {
namespace {

constexpr std::size_t kMaxName = 200; // leaves room for the ending of an unfinished file at the far end
constexpr std::int64_t kNanoseconds = 1000000000;

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool endsWith(const std::string& name, const std::string& suffix) {
    return name.size() > suffix.size() && name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0;
}

bool isSendable(const std::string& name, const std::string& suffix) {
    return name.size() <= kMaxName && name.front() != '.' && endsWith(name, suffix) && !holdsControl(name);
}

void describe(const struct stat& status, LocalFile& file) {
    file.size = static_cast<std::uint64_t>(status.st_size);
    file.modified = std::int64_t{status.st_mtim.tv_sec} * kNanoseconds + status.st_mtim.tv_nsec;
}

} // namespace

bool LocalFile::isUnchanged() const {
    struct stat status {};
    LocalFile present = *this;
    if (lstat(path().c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return false;
    }
    describe(status, present);
    return present == *this;
}

zpo::UniqueFd LocalFile::open() const {
    zpo::UniqueFd fd = zpo::openFile(path(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    if (!fd) {
        throw Failure(Scope::File, std::string("it cannot be opened: ") + std::strerror(errno));
    }
    struct stat status {};
    LocalFile present = *this;
    if (fstat(fd.get(), &status) == 0) {
        describe(status, present);
    }
    if (!(present == *this)) {
        throw Failure(Scope::File, "it is being changed; the next run sends it");
    }
    return fd;
}

std::vector<LocalFile> finishedFiles(const std::string& folder, const std::string& suffix) {
    const std::unique_ptr<DIR, FolderCloser> open(opendir(folder.c_str()));
    if (!open) {
        throw Failure(Scope::Run, "the record folder " + folder + " cannot be read: " + std::strerror(errno));
    }
    std::vector<LocalFile> files;
    while (const dirent* const entry = readdir(open.get())) {
        LocalFile file{folder, entry->d_name};
        struct stat status {};
        if (isSendable(file.name, suffix) && lstat(file.path().c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
            describe(status, file);
            files.push_back(std::move(file));
        }
    }
    std::sort(files.begin(), files.end(), [](const LocalFile& a, const LocalFile& b) { return a.name < b.name; });
    return files;
}

SentFiles::SentFiles(const StateFolder& state) : path_(state / "sent") {
    std::istringstream lines(loadFile(path_));
    for (std::string line; std::getline(lines, line) && !lines.eof();) { // a line without its end was not written whole
        std::istringstream words(line);
        Entry entry{};
        std::string name;
        if (words >> entry.size >> entry.modified >> entry.time && words.get() == ' ' && std::getline(words, name)) {
            entries_[name] = entry;
        }
    }
}

std::string SentFiles::lineOf(const std::string& name, const Entry& entry) {
    return fmt::format("{} {} {} {}\n", entry.size, entry.modified, entry.time, name);
}

bool SentFiles::holds(const LocalFile& file) const {
    const auto found = entries_.find(file.name);
    return found != entries_.end() && found->second.size == file.size && found->second.modified == file.modified;
}

void SentFiles::add(const LocalFile& file, std::time_t time) {
    const Entry entry{file.size, file.modified, time};
    const zpo::UniqueFd fd = zpo::openFile(path_, O_WRONLY | O_APPEND | O_CREAT, 0640);
    const int error = fd ? zpo::writeAll(fd.get(), lineOf(file.name, entry)) : errno;
    if (error != 0 || fsync(fd.get()) != 0) {
        throw Failure(Scope::Run, path_ + ": " + std::strerror(error != 0 ? error : errno));
    }
    entries_[file.name] = entry;
}

void SentFiles::keepOnly(const std::vector<LocalFile>& files) {
    std::map<std::string, Entry> kept;
    std::string content;
    for (const LocalFile& file : files) {
        if (holds(file)) {
            const Entry& entry = kept[file.name] = entries_[file.name];
            content += lineOf(file.name, entry);
        }
    }
    saveFile(path_, content);
    entries_ = std::move(kept);
}

CurrentUpload CurrentUpload::load(const StateFolder& state) {
    std::istringstream lines(loadFile(state / "current"));
    CurrentUpload current;
    const bool whole = static_cast<bool>(lines >> current.file.size >> current.file.modified) && lines.get() == '\n' &&
                       std::getline(lines, current.file.name) && std::getline(lines, current.partPath) &&
                       std::getline(lines, current.finalPath) && std::getline(lines, current.target) && !lines.eof();
    return whole ? current : CurrentUpload();
}

void CurrentUpload::save(const StateFolder& state) const {
    saveFile(state / "current",
             fmt::format("{} {}\n{}\n{}\n{}\n{}\n", file.size, file.modified, file.name, partPath, finalPath, target));
}

void CurrentUpload::clear(const StateFolder& state) {
    unlink((state / "current").c_str());
}

} // namespace transfer
