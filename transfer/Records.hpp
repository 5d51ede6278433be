// The files to be sent, and what is remembered of those that were.
#pragma once

#include "Files.hpp"
#include "StateFolder.hpp"

#include <cstdint>
#include <ctime>
#include <map>
#include <string>
#include <vector>

namespace transfer {

/// A finished file: another size or time means that it is another file.
struct LocalFile {
    std::string folder;
    std::string name;
    std::uint64_t size = 0;
    std::int64_t modified = 0; ///< nanoseconds since 1970

    std::string path() const { return folder + "/" + name; }
    /// Whether the file of this name is still this one.
    bool isUnchanged() const;
    /// Throws Failure, scope File, when it cannot be opened or is no longer this one.
    zpo::UniqueFd open() const;
    bool operator==(const LocalFile& other) const {
        return name == other.name && size == other.size && modified == other.modified;
    }
};

/// The regular files of the folder whose names end in `suffix`, by name, the oldest first. Hidden files and names with
/// control characters are not among them. Throws Failure, scope Run, when the folder cannot be read.
std::vector<LocalFile> finishedFiles(const std::string& folder, const std::string& suffix = ".csv");

/// Remembers which files of the record folder have arrived: one line a file in STATE/sent.
class SentFiles {
  public:
    explicit SentFiles(const StateFolder& state);

    bool holds(const LocalFile& file) const;
    /// On the disk when this returns. Throws Failure, scope Run.
    void add(const LocalFile& file, std::time_t time);
    /// Forgets all but these, so that the list does not grow for ever. Throws Failure, scope Run.
    void keepOnly(const std::vector<LocalFile>& files);

  private:
    struct Entry {
        std::uint64_t size;
        std::int64_t modified;
        std::time_t time;
    };
    static std::string lineOf(const std::string& name, const Entry& entry);

    std::string path_;
    std::map<std::string, Entry> entries_;
};

/// The upload under way, in STATE/current: what a run that was killed left at the far end.
struct CurrentUpload {
    LocalFile file;
    std::string partPath;
    std::string finalPath;
    std::string target;

    /// Empty partPath: there was none.
    static CurrentUpload load(const StateFolder& state);
    /// On the disk when this returns. Throws Failure, scope Run.
    void save(const StateFolder& state) const;
    static void clear(const StateFolder& state);
};

} // namespace transfer
