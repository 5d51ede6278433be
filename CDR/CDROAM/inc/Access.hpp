// A property's registry entry as its accessors use it: what settings, push settings and statistics have in common.
#pragma once

#include "DiagnosticLog.hpp"
#include "ManagedObject.hpp"
#include "Registry.hpp"

#include <string>

namespace cdroam {

/// The entry of one property and its content when last read or written. `Kind` is how the entry stores the value
/// (Registry.hpp).
template <class Kind>
class Access {
  public:
    using Literal = typename Kind::Literal;

    /// The log calls the accessors "get" or "set" followed by `property`. A warning about control characters calls the
    /// entry `labelPrefix` followed by its key.
    Access(const char* property, Entry entry, const char* labelPrefix = "")
        : property_(property), entry_(entry), labelPrefix_(labelPrefix) {}

    /// What was last read or written.
    const typename Kind::Cache& cached() const { return cache_; }

    /// Reads the entry and nothing else. Returns the platform's status.
    std::uint32_t load() const { return Kind::load(entry_, cache_); }

  protected:
    /// Sets `value` from what was read. Content that must not be shown is replaced first, with a warning in the log.
    template <class Value>
    void decodeOrReplace(Literal replacement, Value& value) const {
        if (!Kind::isDisplayable(cache_)) {
            logControlCharacters((std::string(labelPrefix_) + entry_.key).c_str());
            Kind::setLiteral(cache_, replacement);
        }
        Kind::decode(cache_, value);
    }

    /// Sets `value` from a literal; the entry and the cache stay unchanged.
    template <class Value>
    static void decodeLiteral(Literal literal, Value& value) {
        typename Kind::Cache content{};
        Kind::setLiteral(content, literal);
        Kind::decode(content, value);
    }

    /// Caches the literal; the entry stays unchanged.
    void cacheLiteral(Literal literal) const { Kind::setLiteral(cache_, literal); }

    /// Caches the literal and writes it to the entry; a failure is ignored.
    void store(Literal literal) const {
        typename Kind::Cache content{};
        Kind::setLiteral(content, literal);
        (void)storeAndCache<Kind>(entry_, cache_, content);
    }

    /// Writes a property's value. Returns the platform's status.
    template <class Value>
    std::uint32_t write(const Value& value) {
        return Kind::write(entry_, cache_, value);
    }

    void logFailedRead(std::uint32_t status) const { log(LogError, "get", status); }
    void logFailedWrite(std::uint32_t status, LogLevel level = LogError) const { log(level, "set", status); }

  private:
    void log(LogLevel level, const char* verb, std::uint32_t status) const {
        (void)logFailure(level, (std::string(verb) + property_).c_str(), status);
    }

    const char* property_;
    Entry entry_;
    const char* labelPrefix_;
    mutable typename Kind::Cache cache_{};
};

} // namespace cdroam
