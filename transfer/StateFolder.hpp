// The folder in which the transfer keeps what it must remember; below the platform's state directory.
//
//   lock          locked while a run is under way
//   known_hosts   keys of the SFTP servers that are trusted, in OpenSSH's form
//   ca.pem        optional: the certificates to check FTPS servers against, in place of the system's
//   device        a random number that marks this device's unfinished uploads
//   sent          the files that have arrived and are still in the record folder
//   current       the upload under way
//   last-run      what the last run did
//   spool/        the compressed form of the file under way
//   outbox/       metrics files that have not arrived yet
#pragma once

#include <string>

namespace transfer {

class StateFolder {
  public:
    /// Below ZPO_STATE_DIR. Nothing is created. Throws Failure, scope Run, when that setting is unusable.
    StateFolder();

    const std::string& path() const { return path_; }
    std::string operator/(const char* name) const { return path_ + "/" + name; }

    /// Makes the folder and those in it. Throws Failure, scope Run.
    void create() const;
    /// When root runs the program and the platform's state belongs to another user, becomes that user: the same
    /// scheduler table is seen, and no file is left that the device's programs cannot use. Throws Failure, scope Run.
    void becomeOwner() const;
    /// Whether a run is under way.
    bool isLocked() const;
    /// The random number of this device, created when it is missing. Throws Failure, scope Run.
    std::string deviceId() const;

  private:
    std::string stateDirectory_;
    std::string path_;
};

/// Replaces a file of the state folder. Throws Failure, scope Run, with the file unchanged.
void saveFile(const std::string& path, const std::string& content);
/// The file's content; empty when it is missing, cannot be read or is larger than 64 MiB.
std::string loadFile(const std::string& path);
/// Removes every file of a folder of this program.
void emptyFolder(const std::string& path);

} // namespace transfer
