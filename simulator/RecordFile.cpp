#include "RecordFile.hpp"

#include "RecordFormat.hpp"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace cdrsim {
namespace {

constexpr std::uint64_t kSizeUnit = 102'400;
constexpr std::uint64_t kDiskUnit = 1'048'576;
constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

std::uint64_t diskLimit(const ServiceSettings& settings) {
    return settings.diskSpaceLimitMb == 0 ? kNoLimit : settings.diskSpaceLimitMb * kDiskUnit;
}

/// Half of the disk limit at most, so that finished files have room beside the current one.
std::uint64_t sizeLimit(const ServiceSettings& settings) {
    const std::uint64_t set = settings.clipFileSize100K == 0 ? kNoLimit : settings.clipFileSize100K * kSizeUnit;
    return std::min(set, diskLimit(settings) / 2);
}

} // namespace

void RecordFile::begin(const std::string& head, std::time_t now) {
    fd_ = zpo::openFile(folder_.currentFile(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND, 0640);
    if (!fd_) {
        throwSystemError(folder_.currentFile(), errno);
    }
    size_ = records_ = 0;
    begun_ = now;
    if (const int error = zpo::writeAll(fd_.get(), head)) {
        fd_.reset();
        unlink(folder_.currentFile().c_str());
        throwSystemError(folder_.currentFile(), error);
    }
    size_ = head.size();
}

void RecordFile::add(const std::string& record, const ServiceSettings& settings, std::time_t now) {
    forgetWhenRemoved();
    if (size_ + record.size() > sizeLimit(settings)) {
        clip(now);
    }
    if (!isOpen()) {
        begin(headOf(settings, now), now);
    }
    makeRoom(settings, record.size());
    if (const int error = zpo::writeAll(fd_.get(), record)) {
        static_cast<void>(!ftruncate(fd_.get(), static_cast<off_t>(size_))); // no half line stays
        throwSystemError(folder_.currentFile(), error);
    }
    size_ += record.size();
    ++records_;
}

void RecordFile::makeRoom(const ServiceSettings& settings, std::uint64_t size) {
    const std::uint64_t all = diskLimit(settings);
    const std::uint64_t limit = all - std::min(all, size_ + size);
    if (folder_.finishedBytes() > limit) {
        for (const std::string& name : folder_.shrinkTo(limit)) {
            news_.push_back("removed " + name + ": the disk limit is reached");
        }
    }
}

void RecordFile::forgetWhenRemoved() {
    struct stat own {};
    struct stat named {};
    if (isOpen() && (fstat(fd_.get(), &own) != 0 || lstat(folder_.currentFile().c_str(), &named) != 0 ||
                     own.st_ino != named.st_ino)) {
        news_.push_back("the current file was removed by someone else, with " + std::to_string(records_) + " records");
        fd_.reset();
        size_ = records_ = 0;
    }
}

void RecordFile::clip(std::time_t now) {
    forgetWhenRemoved();
    if (records_ == 0) {
        return;
    }
    if (fsync(fd_.get()) != 0) {
        throwSystemError(folder_.currentFile(), errno);
    }
    const std::string name = folder_.finishCurrent(now);
    fd_.reset();
    news_.push_back("finished " + name + ", " + std::to_string(records_) + " records");
    size_ = records_ = 0;
}

void RecordFile::clipWhenDue(std::uint32_t schedule, std::time_t now) {
    if (records_ > 0 && clipPeriod(schedule, begun_) != clipPeriod(schedule, now)) {
        clip(now);
    }
}

} // namespace cdrsim
