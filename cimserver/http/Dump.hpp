// The dump: what goes over the wire, with secrets removed, appended to a file for troubleshooting.
#pragma once

#include "cimserver/http/Message.hpp"

#include <mutex>
#include <string>

namespace cimserver::http {

class Dump {
  public:
    /// Opens the file for appending, readable by its owner only. Throws std::runtime_error.
    explicit Dump(const std::string& file);
    ~Dump();
    Dump(const Dump&) = delete;
    Dump& operator=(const Dump&) = delete;

    /// Appends a request and its answer as one piece, with the bodies that `mask` shows; from any thread.
    void write(const Request& request, const Response& response, const Mask& mask) noexcept;

  private:
    int fd_;
    std::mutex mutex_;
    bool failed_ = false;
};

} // namespace cimserver::http
