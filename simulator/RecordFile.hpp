#pragma once

#include "Files.hpp"
#include "RecordFolder.hpp"
#include "ServiceSettings.hpp"

#include <cstdint>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

namespace cdrsim {

/// The record file that is being written; it begins with its first record. After each record it ends with a whole line,
/// also when the disk is full.
class RecordFile {
  public:
    explicit RecordFile(RecordFolder& folder) : folder_(folder) {}

    /// Adds a record. Before that, the file is clipped when the size would exceed what the settings allow, and the
    /// oldest finished files go when all would take more than the disk limit. Throws when the record cannot be written.
    void add(const std::string& record, const ServiceSettings& settings, std::time_t now);

    /// Finishes the file, unless there is none. Throws when it fails; the file then stays the current one.
    void clip(std::time_t now);

    /// Removes the oldest finished files when all files take more than the disk limit. Throws when it fails.
    void keepWithinDiskLimit(const ServiceSettings& settings) { makeRoom(settings, 0); }

    /// Clips the file when the schedule says so.
    void clipWhenDue(std::uint32_t schedule, std::time_t now);

    bool isEmpty() const { return records_ == 0; }

    /// What was finished and removed since the last call, one line each.
    std::vector<std::string> takeNews() { return std::exchange(news_, {}); }

  private:
    bool isOpen() const { return static_cast<bool>(fd_); }
    void begin(const std::string& head, std::time_t now);
    void makeRoom(const ServiceSettings& settings, std::uint64_t size);
    void forgetWhenRemoved();

    RecordFolder& folder_;
    zpo::UniqueFd fd_;
    std::uint64_t size_ = 0;
    std::uint64_t records_ = 0;
    std::time_t begun_ = 0;
    std::vector<std::string> news_;
};

} // namespace cdrsim
