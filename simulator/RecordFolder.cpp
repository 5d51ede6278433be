#include "RecordFolder.hpp"

#include "RecordFormat.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cdrsim {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPulled = ".pulled";
constexpr const char* kPattern = "CDR-########-######-###.csv"; // '#' is a digit
constexpr unsigned kNumbers = 1000;

bool isFinishedName(const std::string& name) {
    const std::string pattern = kPattern;
    return name.size() == pattern.size() &&
           std::equal(name.begin(), name.end(), pattern.begin(),
                      [](char c, char wanted) { return wanted == '#' ? c >= '0' && c <= '9' : c == wanted; });
}

bool isPulledName(const std::string& name) {
    const auto end = name.rfind('.');
    return end != std::string::npos && name.substr(end) == kPulled && isFinishedName(name.substr(0, end));
}

/// The length of the file up to its last line feed, and whether it holds a record.
struct Content {
    std::uint64_t length = 0;
    bool records = false;
};

Content contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    Content content;
    for (std::string line; std::getline(file, line) && !file.eof();) { // at the end of the file the line is a half one
        content.length += line.size() + 1;
        content.records = content.records || !isHeadLine(line);
    }
    return content;
}

} // namespace

void throwSystemError(const std::string& file, int error) {
    throw std::system_error(error, std::generic_category(), file);
}

RecordFolder::RecordFolder(std::string path) : path_(std::move(path)) {
    std::error_code error;
    fs::create_directories(path_, error);
    if (error) {
        throwSystemError(path_, error.value());
    }
}

void RecordFolder::lock() {
    const int error = lock_.acquire(path_ + "/.cdrsim.lock", std::chrono::milliseconds(0));
    if (error == ETIMEDOUT) {
        throw std::runtime_error(path_ + ": another simulator writes there");
    }
    if (error != 0) {
        throwSystemError(path_, error);
    }
}

std::vector<FinishedFile> RecordFolder::list(bool withPulled) const {
    std::vector<FinishedFile> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
        const std::string name = entry.path().filename();
        std::error_code error; // a file may be gone by now
        if ((isFinishedName(name) || (withPulled && isPulledName(name))) && entry.is_regular_file(error)) {
            const std::uintmax_t size = entry.file_size(error);
            files.push_back({name, error ? 0 : size});
        }
    }
    std::sort(files.begin(), files.end(),
              [](const FinishedFile& one, const FinishedFile& other) { return one.name < other.name; });
    return files;
}

bool RecordFolder::isTaken(const std::string& name) const {
    std::error_code error;
    const std::string file = path_ + '/' + name;
    return fs::exists(fs::symlink_status(file, error)) || fs::exists(fs::symlink_status(file + kPulled, error));
}

std::string RecordFolder::freeName(std::time_t time) {
    const std::string start = "CDR-" + timeText(time, "%Y%m%d-%H%M%S");
    for (unsigned tries = 0; tries < kNumbers; ++tries) {
        number_ = (number_ + 1) % kNumbers;
        char end[16];
        std::snprintf(end, sizeof end, "-%03u.csv", number_);
        if (!isTaken(start + end)) {
            return start + end;
        }
    }
    throw std::runtime_error(path_ + ": " + start + " has been used " + std::to_string(kNumbers) + " times");
}

void RecordFolder::rename(const std::string& from, const std::string& to) const {
    if (std::rename((path_ + '/' + from).c_str(), (path_ + '/' + to).c_str()) != 0) {
        throwSystemError(path_ + '/' + from, errno);
    }
    zpo::syncDirectory(path_);
}

std::string RecordFolder::finishCurrent(std::time_t time) {
    std::string name = freeName(time);
    const std::uint64_t size = fs::file_size(currentFile());
    rename("current.part", name);
    finishedBytes_ += size;
    return name;
}

void RecordFolder::markPulled(const FinishedFile& file) const {
    rename(file.name, file.name + kPulled);
}

std::vector<std::string> RecordFolder::shrinkTo(std::uint64_t limit) {
    const std::vector<FinishedFile> files = list(true);
    std::vector<std::string> removed;
    finishedBytes_ = 0;
    for (const FinishedFile& file : files) {
        finishedBytes_ += file.size;
    }
    for (const FinishedFile& file : files) {
        if (finishedBytes_ <= limit) {
            break;
        }
        if (unlink((path_ + '/' + file.name).c_str()) != 0 && errno != ENOENT) {
            throwSystemError(path_ + '/' + file.name, errno);
        }
        finishedBytes_ -= file.size;
        removed.push_back(file.name);
    }
    return removed;
}

std::string RecordFolder::finishStale() {
    const std::string file = currentFile();
    struct stat found {};
    if (lstat(file.c_str(), &found) != 0) {
        return "";
    }
    const Content content = S_ISREG(found.st_mode) ? contentOf(file) : Content{};
    if (!content.records) {
        fs::remove(file);
        return "";
    }
    fs::resize_file(file, content.length);
    return finishCurrent(found.st_mtime);
}

} // namespace cdrsim
