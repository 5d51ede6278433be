// Enumerations that clients opened and have not pulled to the end.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace cimserver::cimxml {

/// Who opened an enumeration and what it yields; a pull must match all of it.
struct EnumerationOwner {
    std::string user;
    std::string nameSpace;
    std::string element; ///< name of the elements, "INSTANCEPATH"
    bool operator==(const EnumerationOwner& other) const {
        return user == other.user && nameSpace == other.nameSpace && element == other.element;
    }
};

/// All members may be called from any thread. An enumeration that is not pulled from within its lifetime is dropped.
class Enumerations {
  public:
    using Clock = std::chrono::steady_clock;
    struct Limits {
        std::size_t perUser = 64;                          ///< open enumerations of one user
        std::size_t count = 256;                           ///< open enumerations of all users
        std::size_t bytes = std::size_t{32} * 1024 * 1024; ///< of all their elements; one user has at most half of it
    };

    /// Tests replace `now`.
    explicit Enumerations(Limits limits, std::function<Clock::time_point()> now = Clock::now)
        : limits_(limits), now_(std::move(now)) {}

    /// Keeps the elements (whole XML elements) and returns an id that cannot be guessed. Throws CimError
    /// ServerLimitsExceeded.
    std::string open(EnumerationOwner owner, std::vector<std::string> elements, std::chrono::seconds lifetime);

    /// Appends up to `count` elements to `text`. Returns true after the last one; the id is unknown then. Throws
    /// CimError InvalidEnumerationContext for an id that is unknown, expired or another owner's.
    bool pull(const std::string& id, const EnumerationOwner& owner, std::size_t count, std::string& text);

    /// Drops the enumeration, whatever its elements are. Throws like pull.
    void close(const std::string& id, const std::string& user, const std::string& nameSpace);

  private:
    struct Entry {
        EnumerationOwner owner;
        std::vector<std::string> elements;
        std::size_t next = 0;
        std::size_t bytes = 0;
        std::chrono::seconds lifetime{};
        Clock::time_point expires;
    };
    using Entries = std::map<std::string, Entry>;

    void dropExpired();
    void drop(Entries::iterator entry);

    const Limits limits_;
    const std::function<Clock::time_point()> now_;
    std::mutex mutex_;
    Entries entries_;
    std::size_t bytes_ = 0;
};

} // namespace cimserver::cimxml
