// Access to the configuration registry: entries of component "CDR", the texts in them, and how a number lies in an
// entry.
#pragma once

#include "ZpoShared.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// Tells whether a stored text may be shown. Returns -1 when the pointer is null, when the text is empty or when one of
/// its characters is a control character, else 0. That an empty text counts is deliberate: it is logged like the
/// others.
int isControlCharacter(char* text);

namespace cdroam {

/// Status values of accessors, as a provider shows them in a CIM error.
enum Status : int { Success = 0, ReadFailed = 100, WriteFailed = 101, ValueRefused = 301 };

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

/// Capacity of a text entry with its terminating NUL, in bytes.
constexpr std::size_t kTextCapacity = 512;

/// A text of at most 511 bytes that is terminated whatever is done to it.
class Text {
  public:
    char* data() { return bytes_.data(); }
    const char* c_str() const { return bytes_.data(); }
    /// Takes a copy; what does not fit is left out.
    void assign(const char* text);
    void clear() { bytes_[0] = '\0'; }

  private:
    std::array<char, kTextCapacity> bytes_{};
};

/// The platform's status of an access; 0 is success and ZPO_REG_ENTRY_NOT_FOUND tells that the entry does not exist.
std::uint32_t readBytes(const Entry& entry, void* buffer, std::uint32_t length);
std::uint32_t writeBytes(const Entry& entry, const void* buffer, std::uint32_t length);
std::uint32_t readInteger(const Entry& entry, std::uint32_t& value);
std::uint32_t writeInteger(const Entry& entry, std::uint32_t value);
/// Reads a text as it is stored.
std::uint32_t readRawText(const Entry& entry, Text& text);
/// Reads a text and converts it from ISO 8859-1 to UTF-8; after a failed read the text is empty.
std::uint32_t readText(const Entry& entry, Text& text);
std::uint32_t writeText(const Entry& entry, const char* text);

// How a value lies in an entry. Each kind has the cache that holds the entry's bytes, its transfer to and from the
// registry, and the conversion between the bytes and the property's value.

/// One byte: an enumeration, a flag (0 is false, anything else true, true is stored as 1) or a number of which only the
/// low-order byte is kept.
struct Byte {
    using Cache = unsigned char;
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readBytes(entry, &cache, 1); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) { return writeBytes(entry, &cache, 1); }
    template <class Value>
    static void decode(const Cache& cache, Value& value) {
        value = static_cast<Value>(cache);
    }
    template <class Value>
    static Cache encode(Value value) {
        return static_cast<Cache>(value);
    }
    template <class Value>
    static void zero(Value& value) {
        value = Value{};
    }
};

/// Two bytes, the most significant first on every host.
struct Word : Byte {
    using Cache = std::array<unsigned char, 2>;
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readBytes(entry, cache.data(), 2); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) { return writeBytes(entry, cache.data(), 2); }
    static void decode(const Cache& cache, unsigned short& value);
    static Cache encode(unsigned short value);
};

/// An integer entry.
struct Integer : Byte {
    using Cache = std::uint32_t;
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readInteger(entry, cache); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) { return writeInteger(entry, cache); }
    static void decode(const Cache& cache, unsigned int& value) { value = cache; }
    static Cache encode(unsigned int value) { return value; }
};

/// Four bytes as they lie in memory.
struct Counter : Integer {
    static std::uint32_t load(const Entry& entry, Cache& cache) { return readBytes(entry, &cache, sizeof cache); }
    static std::uint32_t store(const Entry& entry, const Cache& cache) {
        return writeBytes(entry, &cache, sizeof cache);
    }
};

/// Two decimal digits: a byte 0xF9 and a byte with one digit in each half.
struct PackedDigits : Word {
    /// A stored half above 9 is not checked and shows as one of the characters after '9'.
    static void decode(const Cache& cache, std::string& value);
    /// A missing character and one that is no digit count as 0; characters after the second are ignored.
    static Cache encode(const std::string& value);
    static void zero(std::string& value) { value = "00"; }
};

/// A text, stored in ISO 8859-1 and shown in UTF-8. What reads it decides what an absent or an unfit text is shown as.
struct Latin1Text {
    using Cache = Text;
};

/// The same two for properties with accessors of their own.
struct OwnByte : Byte {};
struct OwnText : Latin1Text {};

} // namespace cdroam
