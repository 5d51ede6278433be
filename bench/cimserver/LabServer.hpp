// Servers in a temporary folder of their own: a cimserverd with the module, the schema and the factory settings, and
// the floor that it is compared with.
#pragma once

#include "Measure.hpp"

#include <sys/types.h>

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

/// A program that writes the port it listens on to a file.
class PortProcess {
  public:
    PortProcess(const std::vector<std::string>& command, std::string portFile);
    /// Stops it.
    ~PortProcess();
    PortProcess(const PortProcess&) = delete;
    PortProcess& operator=(const PortProcess&) = delete;

    /// Waits until it listens. 0 if it does not.
    int port() const;
    /// A line of /proc/PID/status in KiB, such as VmRSS.
    std::size_t memory(const std::string& field) const;
    /// Asks it to end and waits for it.
    void stop();
    Clock::time_point started() const { return started_; }

  private:
    const std::string portFile_;
    const Clock::time_point started_;
    pid_t child_;
};

class LabServer : private LabFolder, public PortProcess {
  public:
    /// `command` comes before the program, such as valgrind; `options` after the server's own.
    explicit LabServer(const std::vector<std::string>& command = {}, const std::vector<std::string>& options = {});

    const std::string& folder() const { return path(); }
};

class FloorServer : private LabFolder, public PortProcess {
  public:
    FloorServer();
};

/// The options with which a LabServer knows the class BENCH_Thing and its provider.
std::vector<std::string> benchProvider();
/// Loads the factory settings into the registry of the LabFolder there is.
void loadDefaults();

} // namespace bench
