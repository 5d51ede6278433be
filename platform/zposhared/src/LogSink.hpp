#pragma once

#include "Files.hpp"

#include <cstdint>
#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>
#include <string>

namespace zpo {

/// A log file that several processes append to and rotate together: NAME.log, older ones NAME.1.log, NAME.2.log. A line
/// is one write at the file's end, so lines never mix. The process that finds the file full renames the files under a
/// lock; the others notice and open the new one. Not thread-safe: the owner locks. Failures throw spdlog_ex.
class LogSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
  public:
    LogSink(std::string path, std::uint64_t maxBytes);

  protected:
    void sink_it_(const spdlog::details::log_msg& message) override;
    void flush_() override {}

  private:
    void open();
    bool isCurrent() const;
    void rotate(std::size_t lineLength);
    void append(const spdlog::memory_buf_t& line);

    const std::string path_;
    const std::uint64_t maxBytes_;
    UniqueFd fd_;
    bool lineIsOpen_ = false; ///< a failed write may have left a line without its line feed
};

} // namespace zpo
