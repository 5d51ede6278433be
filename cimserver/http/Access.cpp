#include "cimserver/http/Access.hpp"

#include "cimserver/common/Log.hpp"
#include "cimserver/common/Text.hpp"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

namespace cimserver::http {
namespace {

constexpr std::size_t kMaxPeers = 16384; // more than can fail within the time that failures are remembered
constexpr std::size_t kMaxTrusted = 256;
constexpr std::size_t kMaxCached = 256;
constexpr unsigned kMaxDoublings = 16;
constexpr int kMaxQueuedDelays = 3; // times the longest delay

bool isBase64(std::string_view text) {
    constexpr const char* kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto end = std::min(text.find_first_not_of(kLetters), text.size());
    const auto padding = text.substr(end);
    return !text.empty() && text.size() % 4 == 0 && (padding.empty() || padding == "=" || padding == "==");
}

std::string decodeBase64(std::string_view text) {
    std::string bytes(text.size() / 4 * 3, '\0');
    EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()), reinterpret_cast<const unsigned char*>(text.data()),
                    static_cast<int>(text.size()));
    // EVP_DecodeBlock counts the padding as zero bytes.
    bytes.resize(bytes.size() - static_cast<std::size_t>(std::count(text.begin(), text.end(), '=')));
    return bytes;
}

void logRefusal(log::Level level, const std::string& peer, const std::string& why) {
    log::write(level, "access", "refused " + peer + ": " + why);
}

} // namespace

std::optional<Credentials> parseBasic(std::string_view field, std::string& why) {
    field = trimmed(field);
    const auto blank = std::min(field.find(' '), field.size());
    if (!equalsIgnoringCase(field.substr(0, blank), "Basic")) {
        why = "the authentication scheme is not Basic";
        return std::nullopt;
    }
    const auto encoded = trimmed(field.substr(blank));
    auto text = isBase64(encoded) ? decodeBase64(encoded) : std::string();
    const auto colon = text.find(':');
    if (colon == std::string::npos || colon == 0) {
        why = "malformed Authorization header";
        return std::nullopt;
    }
    Credentials credentials{text.substr(0, colon), text.substr(colon + 1)};
    OPENSSL_cleanse(text.data(), text.size());
    return credentials;
}

/// A sixteenth at a time, so that a flood does not pay for each peer.
void LoginThrottle::makeRoom(Clock::time_point now) {
    using Entry = decltype(peers_)::iterator;
    std::vector<Entry> all;
    for (auto one = peers_.begin(); one != peers_.end(); ++one) {
        all.push_back(one);
    }
    const auto weight = [&](const Entry& one) {
        const Peer& peer = one->second;
        const bool expired = peer.underWay == 0 && now - peer.last > settings_.forgetAfter;
        return std::make_pair(expired ? 0U : peer.failures + peer.underWay, peer.last);
    };
    const auto end = all.begin() + kMaxPeers / 16;
    std::nth_element(all.begin(), end, all.end(),
                     [&](const Entry& a, const Entry& b) { return weight(a) < weight(b); });
    std::for_each(all.begin(), end, [this](const Entry& one) { peers_.erase(one); });
}

LoginThrottle::Peer& LoginThrottle::entryOf(const std::string& peer, Clock::time_point now) {
    if (peers_.size() >= kMaxPeers && peers_.count(peer) == 0) {
        makeRoom(now);
    }
    auto& entry = peers_[peer];
    if (entry.underWay == 0 && now - entry.last > settings_.forgetAfter) {
        entry = Peer();
    }
    entry.last = now;
    return entry;
}

std::optional<LoginThrottle::Turn> LoginThrottle::begin(const std::string& peer, Clock::time_point now) {
    auto& entry = entryOf(peer, now);
    if (entry.nextStart - now > kMaxQueuedDelays * settings_.maxDelay) {
        return std::nullopt;
    }
    const auto attempts = entry.failures + entry.underWay++;
    const unsigned rank = attempts + (trusted_.count(peer) == 0 ? 1 : 0);
    if (attempts < settings_.freeFailures) {
        return Turn{Clock::duration(), rank};
    }
    const auto doublings = std::min(attempts - settings_.freeFailures, kMaxDoublings);
    const auto delay = std::min<Clock::duration>(settings_.delay * (1U << doublings), settings_.maxDelay);
    entry.nextStart = std::max(now, entry.nextStart) + delay;
    return Turn{entry.nextStart - now, rank};
}

void LoginThrottle::end(const std::string& peer, bool success, Clock::time_point now) {
    auto& entry = entryOf(peer, now);
    entry.underWay -= std::min(entry.underWay, 1U);
    entry.failures += success ? 0 : 1;
    if (entry.failures + entry.underWay == 0) {
        peers_.erase(peer);
    }
    if (success) {
        trust(peer, now);
    }
}

void LoginThrottle::trust(const std::string& peer, Clock::time_point now) {
    if (trusted_.size() >= kMaxTrusted && trusted_.count(peer) == 0) {
        trusted_.erase(std::min_element(trusted_.begin(), trusted_.end(),
                                        [](const auto& a, const auto& b) { return a.second < b.second; }));
    }
    trusted_[peer] = now;
}

LoginCache::LoginCache(Clock::duration life) : life_(life) {
    // From the system: OpenSSL takes long to start when it is not needed.
    if (::getentropy(secret_.data(), secret_.size()) != 0) {
        throw std::runtime_error("no random numbers from the system");
    }
}

LoginCache::Key LoginCache::keyOf(const Credentials& credentials) const {
    auto text = credentials.user + ':' + credentials.password; // a user name holds no colon
    Key key{};
    unsigned length = 0;
    HMAC(EVP_sha256(), secret_.data(), static_cast<int>(secret_.size()),
         reinterpret_cast<const unsigned char*>(text.data()), text.size(), key.data(), &length);
    OPENSSL_cleanse(text.data(), text.size());
    return key;
}

const Identity* LoginCache::find(const Credentials& credentials, Clock::time_point now) {
    const auto found = entries_.find(keyOf(credentials));
    if (found == entries_.end() || found->second.until <= now) {
        return nullptr;
    }
    return &found->second.identity;
}

void LoginCache::add(const Credentials& credentials, const Identity& identity, Clock::time_point now) {
    if (entries_.size() >= kMaxCached) {
        entries_.erase(std::min_element(entries_.begin(), entries_.end(),
                                        [](const auto& a, const auto& b) { return a.second.until < b.second.until; }));
    }
    entries_[keyOf(credentials)] = {identity, now + life_};
}

Access::Access(const LoginSettings& settings) : settings_(settings), throttle_(settings), cache_(settings.cache) {
    if (enabled()) {
        users_ = std::make_shared<const UserFile>(UserFile::load(settings_.userFile));
    }
}

std::shared_ptr<const UserFile> Access::users() const {
    const std::lock_guard lock(mutex_);
    return users_;
}

std::optional<Identity> Access::identityOf(const std::string& certificateUser) const {
    const auto all = users();
    const auto* user = certificateUser.empty() ? nullptr : all->find(certificateUser);
    return user == nullptr ? std::nullopt : std::optional(Identity{user->name, user->mayWrite});
}

Access::Decision Access::decide(const std::optional<std::string>& authorization, const std::string& peer,
                                const std::string& certificateUser, Clock::time_point now) {
    if (!enabled()) {
        return {Identity(), std::nullopt, {}, generation_};
    }
    if (!authorization) {
        auto identity = identityOf(certificateUser);
        if (!identity) {
            logRefusal(log::Level::Info, peer, "no Authorization header");
        }
        return {std::move(identity), std::nullopt, {}, generation_};
    }
    std::string why;
    auto credentials = parseBasic(*authorization, why);
    if (!credentials) {
        logRefusal(log::Level::Warning, peer, why);
        return {};
    }
    if (const auto* known = cache_.find(*credentials, now)) {
        return {*known, std::nullopt, {}, generation_};
    }
    auto turn = throttle_.begin(peer, now);
    if (!turn) {
        logRefusal(log::Level::Warning, peer, "too many failed logins under way");
        return {};
    }
    turn->rank = cache_.knows(*credentials) ? 0 : turn->rank;
    return {std::nullopt, std::move(credentials), *turn, generation_};
}

std::optional<Identity> Access::verify(const Credentials& credentials) const {
    const auto all = users(); // kept alive while hashing, whatever is reloaded meanwhile
    const auto* user = all->verify(credentials.user, credentials.password);
    return user == nullptr ? std::nullopt : std::optional(Identity{user->name, user->mayWrite});
}

void Access::conclude(const Decision& decision, const std::optional<Identity>& identity, const std::string& peer,
                      Clock::time_point now) {
    throttle_.end(peer, identity.has_value(), now);
    if (!identity) {
        logRefusal(log::Level::Warning, peer, "unknown user or wrong password for '" + decision.check->user + "'");
    } else if (decision.generation == generation_) {
        // A login that an older user file confirmed must not be remembered.
        cache_.add(*decision.check, *identity, now);
    }
}

void Access::reload() {
    if (!enabled()) {
        return;
    }
    auto fresh = std::make_shared<const UserFile>(UserFile::load(settings_.userFile));
    const std::lock_guard lock(mutex_);
    users_ = std::move(fresh);
    ++generation_;
    cache_.clear();
}

} // namespace cimserver::http
