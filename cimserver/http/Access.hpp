// Access control: Basic authentication against the user file, with a cache of recent logins and delays for peers whose
// logins fail. Has no sockets and no threads: the caller supplies both and the time.
#pragma once

#include "cimserver/http/Message.hpp"
#include "cimserver/http/Settings.hpp"
#include "cimserver/http/UserFile.hpp"

#include <array>
#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

namespace cimserver::http {

using Clock = std::chrono::steady_clock;

struct Credentials {
    std::string user;
    std::string password;
};

/// Reads the value of an Authorization field; nothing when it is not well-formed Basic. `why` then says what is wrong,
/// without quoting the field.
std::optional<Credentials> parseBasic(std::string_view field, std::string& why);

/// Slows down guessing: after a few failures each further attempt of a peer waits, longer every time. Concurrent
/// attempts wait one after the other. The table of peers is bounded: those with the fewest failures make room, so that
/// a peer gets rid of its failures only by as many failures of each of thousands of others. No peer waits for another's
/// failures.
class LoginThrottle {
  public:
    /// When an attempt is checked.
    struct Turn {
        Clock::duration wait{}; ///< the least time until then
        unsigned rank = 0;      ///< among those that wait no more, the lowest comes first
    };

    explicit LoginThrottle(const LoginSettings& settings) : settings_(settings) {}

    /// Announces an attempt. Nothing when too many of the peer's attempts are waiting already: the attempt is refused,
    /// and end() must not follow.
    std::optional<Turn> begin(const std::string& peer, Clock::time_point now);
    /// The attempt's outcome.
    void end(const std::string& peer, bool success, Clock::time_point now);

  private:
    struct Peer {
        unsigned failures = 0;
        unsigned underWay = 0;
        Clock::time_point nextStart{};
        Clock::time_point last{};
    };

    Peer& entryOf(const std::string& peer, Clock::time_point now);
    void makeRoom(Clock::time_point now);
    void trust(const std::string& peer, Clock::time_point now);

    LoginSettings settings_;
    std::unordered_map<std::string, Peer> peers_;
    std::unordered_map<std::string, Clock::time_point> trusted_; ///< peers with the time of their last successful login
};

/// Remembers for a short time which credentials were right, by a hash keyed with a secret of this process.
class LoginCache {
  public:
    explicit LoginCache(Clock::duration life);
    const Identity* find(const Credentials& credentials, Clock::time_point now);
    /// True for credentials that were right once, also when that is no longer enough.
    bool knows(const Credentials& credentials) const { return entries_.count(keyOf(credentials)) != 0; }
    void add(const Credentials& credentials, const Identity& identity, Clock::time_point now);
    void clear() { entries_.clear(); }

  private:
    using Key = std::array<unsigned char, 32>;
    struct Entry {
        Identity identity;
        Clock::time_point until;
    };

    Key keyOf(const Credentials& credentials) const;

    Clock::duration life_;
    Key secret_{};
    std::map<Key, Entry> entries_;
};

/// The user file, the throttle and the cache together. All functions but verify() are called from one thread; verify()
/// is slow and may run anywhere.
class Access {
  public:
    /// What a request's head leads to: an identity, a refusal, or a check of credentials after a wait.
    struct Decision {
        std::optional<Identity> identity;
        std::optional<Credentials> check;
        LoginThrottle::Turn turn{};
        unsigned generation = 0; ///< of the user file
    };

    /// Loads the user file, if one is set. Throws std::runtime_error.
    explicit Access(const LoginSettings& settings);

    bool enabled() const { return !settings_.userFile.empty(); }
    /// `peer` is the address without port, `certificateUser` the common name of a verified client certificate.
    /// Refusals are logged.
    Decision decide(const std::optional<std::string>& authorization, const std::string& peer,
                    const std::string& certificateUser, Clock::time_point now);
    /// The identity when the credentials are right.
    std::optional<Identity> verify(const Credentials& credentials) const;
    /// Must follow each decision with a check; logs a failure.
    void conclude(const Decision& decision, const std::optional<Identity>& identity, const std::string& peer,
                  Clock::time_point now);
    /// Loads the user file again. When that throws std::runtime_error, the old users stay.
    void reload();

  private:
    std::shared_ptr<const UserFile> users() const;
    std::optional<Identity> identityOf(const std::string& certificateUser) const;

    LoginSettings settings_;
    mutable std::mutex mutex_;
    std::shared_ptr<const UserFile> users_;
    unsigned generation_ = 0;
    LoginThrottle throttle_;
    LoginCache cache_;
};

} // namespace cimserver::http
