#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace zpo {

/// Kind of an entry; the character is what the store holds.
enum class EntryKind : char { Binary = 'b', Text = 't', Integer = 'i' };

/// An entry's name as the store's key: component, section and key, separated by NUL. A fixed array, because every read
/// makes one and should not allocate.
class EntryName {
  public:
    /// Checks and joins the three texts. ZPO_REG_BAD_ARGUMENT when one is null, ZPO_REG_BAD_NAME when one is unusable.
    std::uint32_t assign(const char* component, const char* section, const char* key);

    std::string_view encoded() const { return {bytes_.data(), length_}; }

  private:
    bool append(const char* part);

    std::array<char, 384> bytes_; // only the first length_ are set
    std::size_t length_ = 0;
};

/// An entry outside the store.
struct Entry {
    std::string component;
    std::string section;
    std::string key;
    EntryKind kind = EntryKind::Binary;
    std::string bytes; ///< the value: binary as it is, a text without NUL, an integer in 4 bytes, low byte first

    /// An integer entry's value.
    std::uint32_t integer() const;
};

std::string encodeInteger(std::uint32_t value);
std::uint32_t decodeInteger(std::string_view bytes);

/// Whether the value fits its kind: 0, ZPO_REG_BAD_ARGUMENT, or ZPO_REG_TEXT_TOO_LONG.
std::uint32_t checkValue(EntryKind kind, std::string_view bytes);

/// The record that is stored for a value: the kind, then the bytes.
std::string encodeRecord(EntryKind kind, std::string_view bytes);

/// Decodes a stored record without trusting it; `bytes` points into it. 0 or ZPO_REG_ENTRY_DAMAGED.
std::uint32_t decodeRecord(std::string_view record, EntryKind& kind, std::string_view& bytes);

/// Decodes a stored key and record without trusting them. 0 or ZPO_REG_ENTRY_DAMAGED.
std::uint32_t decodeEntry(std::string_view encodedName, std::string_view record, Entry& entry);

} // namespace zpo
