#pragma once

#include "Files.hpp"

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace cdrsim {

/// Throws what the errno says about the file.
[[noreturn]] void throwSystemError(const std::string& file, int error);

/// A finished record file.
struct FinishedFile {
    std::string name;
    std::uint64_t size = 0;
};

/// The folder of the record files:
///   current.part                        the file that is being written
///   CDR-YYYYMMDD-HHMMSS-NNN.csv         a finished one, named by the time when it was finished and a running number
///   CDR-YYYYMMDD-HHMMSS-NNN.csv.pulled  one that a client has fetched
/// Other files are neither counted nor touched. Programs may rename or remove finished files at any time.
class RecordFolder {
  public:
    /// Creates the folder when it is missing. Throws when that fails.
    explicit RecordFolder(std::string path);

    /// Keeps a second simulator out as long as this object lives. Throws when there is one.
    void lock();

    std::string currentFile() const { return path_ + "/current.part"; }

    /// The finished files that no client has fetched yet, oldest first. Throws when the folder cannot be read.
    std::vector<FinishedFile> finished() const { return list(false); }

    /// Gives the current file, which must be closed, its final name. Returns that; throws when it fails.
    std::string finishCurrent(std::time_t time);

    /// Marks a finished file as fetched. Throws when it fails.
    void markPulled(const FinishedFile& file) const;

    /// Removes finished files, oldest first, until they take at most `limit` bytes. Returns the names of those removed.
    std::vector<std::string> shrinkTo(std::uint64_t limit);

    /// What the finished files take, as far as this object knows: shrinkTo looks again.
    std::uint64_t finishedBytes() const { return finishedBytes_; }

    /// A file that a killed simulator left behind is finished, without a half line at its end; one without records is
    /// removed. Returns its new name, empty when there was none.
    std::string finishStale();

  private:
    std::vector<FinishedFile> list(bool withPulled) const;
    bool isTaken(const std::string& name) const;
    std::string freeName(std::time_t time);
    void rename(const std::string& from, const std::string& to) const;

    std::string path_;
    zpo::FileLock lock_;
    std::uint64_t finishedBytes_ = 0;
    unsigned number_ = 0;
};

} // namespace cdrsim
