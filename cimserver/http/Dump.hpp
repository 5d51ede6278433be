// The dump: what goes over the wire, with secrets removed, appended to a file for troubleshooting.
#pragma once

#include "cimserver/common/Descriptor.hpp"
#include "cimserver/http/Message.hpp"

#include <mutex>
#include <string>

namespace cimserver::http {

class Dump {
  public:
    /// Opens the file for appending; a new one is readable by its owner only. Throws std::runtime_error.
    explicit Dump(const std::string& file);

    /// Opens the file anew, for it may have been moved away. When that fails, the old one stays in use.
    void reopen();

    /// Appends a request and its answer as one piece, with the bodies that `mask` shows; from any thread.
    void write(const Request& request, const Response& response, const Mask& mask) noexcept;

  private:
    const std::string path_;
    std::mutex mutex_; ///< guards the members below
    Descriptor fd_;
    bool failed_ = false;
};

} // namespace cimserver::http
