#include "cimserver/cimxml/Enumerations.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/common/Text.hpp"

#include <sys/random.h>

#include <algorithm>
#include <array>

namespace cimserver::cimxml {
namespace {

std::string newId() {
    std::array<unsigned char, 16> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        throw CimError(Status::Failed, "no random numbers for an enumeration context");
    }
    constexpr char kDigits[] = "0123456789abcdef";
    std::string id;
    for (const unsigned char byte : bytes) {
        id += kDigits[byte >> 4U];
        id += kDigits[byte & 0xFU];
    }
    return id;
}

[[noreturn]] void refuseId(const std::string& id) {
    throw CimError(Status::InvalidEnumerationContext, quote(id));
}

} // namespace

void Enumerations::drop(Entries::iterator entry) {
    bytes_ -= entry->second.bytes;
    entries_.erase(entry);
}

void Enumerations::dropExpired() {
    const Clock::time_point now = now_();
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const auto next = std::next(entry);
        if (entry->second.expires <= now) {
            drop(entry);
        }
        entry = next;
    }
}

std::string Enumerations::open(EnumerationOwner owner, std::vector<std::string> elements,
                               std::chrono::seconds lifetime) {
    Entry entry{std::move(owner), std::move(elements), 0, 0, lifetime, {}};
    for (const std::string& element : entry.elements) {
        entry.bytes += element.size();
    }
    std::string id = newId();
    const std::lock_guard<std::mutex> lock(mutex_);
    dropExpired();
    std::size_t count = 0;
    std::size_t bytes = 0;
    for (const auto& [other, open] : entries_) {
        const bool own = open.owner.user == entry.owner.user;
        count += own ? 1U : 0U;
        bytes += own ? open.bytes : 0;
    }
    const bool userIsFull = count >= limits_.perUser || entry.bytes > limits_.bytes / 2 - bytes;
    if (userIsFull || entries_.size() >= limits_.count || entry.bytes > limits_.bytes - bytes_) {
        throw CimError(Status::ServerLimitsExceeded, userIsFull
                                                         ? std::to_string(count) + " enumerations of this user are open"
                                                         : std::to_string(entries_.size()) + " enumerations are open");
    }
    entry.expires = now_() + lifetime;
    bytes_ += entry.bytes;
    entries_.emplace(id, std::move(entry));
    return id;
}

bool Enumerations::pull(const std::string& id, const EnumerationOwner& owner, std::size_t count, std::string& text) {
    const std::lock_guard<std::mutex> lock(mutex_);
    dropExpired();
    const auto found = entries_.find(id);
    if (found == entries_.end() || !(found->second.owner == owner)) {
        refuseId(id);
    }
    Entry& entry = found->second;
    const std::size_t end = entry.next + std::min(count, entry.elements.size() - entry.next);
    for (; entry.next < end; ++entry.next) {
        text += entry.elements[entry.next];
    }
    entry.expires = now_() + entry.lifetime;
    const bool last = entry.next == entry.elements.size();
    if (last) {
        drop(found);
    }
    return last;
}

void Enumerations::close(const std::string& id, const std::string& user, const std::string& nameSpace) {
    const std::lock_guard<std::mutex> lock(mutex_);
    dropExpired();
    const auto found = entries_.find(id);
    if (found == entries_.end() || found->second.owner.user != user || found->second.owner.nameSpace != nameSpace) {
        refuseId(id);
    }
    drop(found);
}

} // namespace cimserver::cimxml
