// A cimserverd with the module, the schema and the factory settings in a temporary folder of its own.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// Starts the program, without its standard output, and returns its process id.
pid_t spawn(std::vector<std::string> arguments);

/// A folder below the temporary one in which the platform libraries of this process and its children keep their state.
class LabFolder {
  public:
    LabFolder();
    ~LabFolder();
    LabFolder(const LabFolder&) = delete;
    LabFolder& operator=(const LabFolder&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

class LabServer {
  public:
    /// `command` comes before the program, such as valgrind; `options` after the server's own.
    explicit LabServer(const std::vector<std::string>& command = {}, const std::vector<std::string>& options = {});
    /// Waits until the server has ended.
    ~LabServer();
    LabServer(const LabServer&) = delete;
    LabServer& operator=(const LabServer&) = delete;

    /// Waits until it listens. 0 if it does not.
    int port() const;
    const std::string& folder() const { return folder_.path(); }
    /// A line of /proc/PID/status in KiB, such as VmRSS.
    std::size_t memory(const std::string& field) const;
    /// Asks it to end and waits for it.
    void stop();

  private:
    LabFolder folder_;
    pid_t child_;
};

} // namespace bench
