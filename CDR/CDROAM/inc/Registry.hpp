// Access to the configuration registry: entries of component "CDR", and how an entry stores a value.
#pragma once

#include "ZpoShared.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// Returns -1 when the text holds a control character, is empty or null; else 0. That an empty text counts, and is
/// logged like the others, is deliberate.
int isControlCharacter(char* text);

namespace cdroam {

/// Sections of component "CDR".
constexpr const char* kServiceSection = "CDRService";
constexpr const char* kPushSection = "CDRPush";
constexpr const char* kPullSection = "CDRPull";

/// Address of an entry; the component is always "CDR".
struct Entry {
    const char* section;
    const char* key;
};

/// The kind of transfer, which decides what applies and what is scheduled.
constexpr Entry kTransferType{kPushSection, "TransferType"};
enum TransferType : unsigned char { Daily = 0, Weekly = 1, Monthly = 2, Pull = 3, NoTransfer = 4 };

/// Whether the push settings and statistics apply to this type of transfer; true also for unknown types.
constexpr bool isPushed(unsigned char type) {
    return type != Pull && type != NoTransfer;
}

/// The stored transfer type, or `unread` when it cannot be read.
unsigned char storedTransferType(unsigned char unread);

/// Capacity of a text entry, in bytes with its terminating NUL.
constexpr std::size_t kTextCapacity = 512;

/// A text of at most 511 bytes, always NUL-terminated.
class Text {
  public:
    char* data() { return bytes_.data(); }
    const char* c_str() const { return bytes_.data(); }
    /// Copies the text, truncated to fit.
    void assign(const char* text);

  private:
    std::array<char, kTextCapacity> bytes_{};
};

// These return the platform's status: 0 is success, ZPO_REG_ENTRY_NOT_FOUND a missing entry. In a change, other
// requests run while an entry is written, so what is written must not belong to a managed object.
std::uint32_t readBytes(const Entry& entry, void* buffer, std::uint32_t length);
std::uint32_t writeBytes(const Entry& entry, const void* buffer, std::uint32_t length);
std::uint32_t readInteger(const Entry& entry, std::uint32_t& value);
std::uint32_t writeInteger(const Entry& entry, std::uint32_t value);
/// Reads a text and converts it from ISO 8859-1 to UTF-8; after a failed read the text is empty.
std::uint32_t readText(const Entry& entry, Text& text);
std::uint32_t writeText(const Entry& entry, const char* text);

// How an entry stores a value. Each kind has
//   Cache, Literal   the types of the entry's content and of a default; value-initialised, they are the kind's zero
//   load, store      read the content from the registry and write it there; return the platform's status
//   write            writes a property's value to the registry and the cache; returns the platform's status
//   decode           converts content to the property's value
//   setLiteral       converts a literal to content
//   isDisplayable    whether the content may be shown

/// Writes content and then caches it, also when it could not be written. Not before: other requests may read meanwhile.
template <class Kind>
std::uint32_t storeAndCache(const Entry& entry, typename Kind::Cache& cache, const typename Kind::Cache& content) {
    const std::uint32_t status = Kind::store(entry, content);
    cache = content;
    return status;
}

/// One byte: an enumeration, a flag (0 is false, anything else true, true is stored as 1) or a number of which only the
/// low-order byte is kept.
struct Byte {
    using Cache = unsigned char;
    using Literal = unsigned char;
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readBytes(entry, &cache, 1); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) { return writeBytes(entry, &cache, 1); }
    template <class Value>
    static std::uint32_t write(const Entry& entry, Cache& cache, Value value) {
        return storeAndCache<Byte>(entry, cache, static_cast<Cache>(value));
    }
    template <class Value>
    static void decode(const Cache& cache, Value& value) {
        value = static_cast<Value>(cache);
    }
    static void setLiteral(Cache& cache, Literal literal) { cache = literal; }
    static constexpr bool isDisplayable(const Cache& /*cache*/) { return true; }
};

/// Two bytes, the most significant first on every host.
struct Word {
    using Cache = std::array<unsigned char, 2>;
    using Literal = unsigned short;
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readBytes(entry, cache.data(), 2); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) { return writeBytes(entry, cache.data(), 2); }
    static std::uint32_t write(const Entry& entry, Cache& cache, unsigned short value);
    static void decode(const Cache& cache, unsigned short& value);
    static void setLiteral(Cache& cache, Literal literal);
    static constexpr bool isDisplayable(const Cache& /*cache*/) { return true; }
};

/// An integer entry.
struct Integer {
    using Cache = std::uint32_t;
    using Literal = std::uint32_t;
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readInteger(entry, cache); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) { return writeInteger(entry, cache); }
    static std::uint32_t write(const Entry& entry, Cache& cache, unsigned int value) {
        return storeAndCache<Integer>(entry, cache, value);
    }
    static void decode(const Cache& cache, unsigned int& value) { value = cache; }
    static void setLiteral(Cache& cache, Literal literal) { cache = literal; }
    static constexpr bool isDisplayable(const Cache& /*cache*/) { return true; }
};

/// Four bytes in the byte order of the host.
struct Counter : Integer {
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readBytes(entry, &cache, sizeof cache); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) {
        return writeBytes(entry, &cache, sizeof cache);
    }
    static std::uint32_t write(const Entry& entry, Cache& cache, unsigned int value) {
        return storeAndCache<Counter>(entry, cache, value);
    }
};

/// Two decimal digits: a byte 0xF9 and a byte with one digit in each half. A literal is the second byte.
struct PackedDigits : Word {
    using Literal = unsigned char;
    /// A missing character and one that is not a digit count as 0; characters after the second are ignored.
    static std::uint32_t write(const Entry& entry, Cache& cache, const std::string& value);
    /// A stored half above 9 is not checked and becomes one of the characters after '9'.
    static void decode(const Cache& cache, std::string& value);
    static void setLiteral(Cache& cache, Literal literal) { cache = {0xF9, literal}; }
};

/// A text, written unchanged and converted from ISO 8859-1 to UTF-8 when read. A text that could not be written is not
/// cached.
struct Latin1Text {
    using Cache = Text;
    using Literal = const char*;
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readText(entry, cache); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) { return writeText(entry, cache.c_str()); }
    static std::uint32_t write(const Entry& entry, Cache& cache, const std::string& value);
    static void decode(const Cache& cache, std::string& value) { value = cache.c_str(); }
    /// Null is the empty text.
    static void setLiteral(Cache& cache, Literal literal) { cache.assign(literal == nullptr ? "" : literal); }
    static bool isDisplayable(Cache& cache) { return isControlCharacter(cache.data()) == 0; }
};

} // namespace cdroam
