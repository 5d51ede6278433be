#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace zpo {

constexpr std::size_t kMaxCrontabBytes = std::size_t{1} << 20U;

/// Where the crontab of the process's user is kept. The caller holds a lock from a read to the write that follows.
class CrontabBackend {
  public:
    virtual ~CrontabBackend() = default;
    /// Reads the whole table; a missing table is empty, not an error. Returns a status of ZpoShared.h.
    virtual std::uint32_t read(std::string& table) = 0;
    /// Replaces the whole table at once or not at all. Returns a status of ZpoShared.h.
    virtual std::uint32_t write(const std::string& table) = 0;
};

/// A crontabs directory as BusyBox's crond reads it: one file per user, and `cron.update` with the names of those
/// changed.
std::unique_ptr<CrontabBackend> makeCrontabDirectory(const std::string& directory);

/// The system's crontab program: `crontab -l` and `crontab -`.
std::unique_ptr<CrontabBackend> makeCrontabProgram();

} // namespace zpo
