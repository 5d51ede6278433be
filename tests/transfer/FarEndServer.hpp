// A device with records to push and a real SFTP and FTPS server to push them to, on free ports of 127.0.0.1.
#pragma once

#include "Support.hpp"

namespace transfer_testing {

/// The folders and settings of the device; its server runs from start() to kill().
class PushLab {
  public:
    /// The one of the test program, with its server running and trusted.
    static PushLab& started();

    PushLab();
    ~PushLab();
    PushLab(const PushLab&) = delete;
    PushLab& operator=(const PushLab&) = delete;

    /// From now on the programs work on this device.
    void use() const;
    /// Starts the server and waits until it answers. `prefix`: a command line that runs the server's.
    void start(const std::vector<std::string>& prefix = {});
    /// Kills the server and all its sessions.
    void kill();
    /// Forgets what was sent and received; the settings are those of a daily push by SFTP.
    void reset();
    /// Sets an entry of the push settings.
    static void set(const std::string& key, const std::string& value);
    static void setByte(const std::string& key, int value);
    /// A finished file of the record folder.
    void record(const std::string& name, const std::string& content) const { support::writeFile(local(name), content); }

    /// The exit status is that of the command line, "CDRTransfer OPTIONS" for the program itself.
    static support::Result run(const std::string& command) { return support::run({"/bin/sh", "-c", command}); }
    std::string far(const std::string& name) const { return home_ / "far/files/" + name; }
    std::string local(const std::string& name) const { return home_ / "records/" + name; }
    std::string state(const std::string& name) const { return home_ / "state/transfer/" + name; }
    std::string sftp() const { return "127.0.0.1:" + std::to_string(sftpPort_); }
    std::string ftps() const { return "ftps://127.0.0.1:" + std::to_string(ftpsPort_); }
    std::string password() const;
    std::string log() const { return support::contentOf(home_ / "log/CdrOAM.log"); }

  private:
    support::TempDir home_;
    int sftpPort_;
    int ftpsPort_;
    pid_t server_ = -1;
};

} // namespace transfer_testing
