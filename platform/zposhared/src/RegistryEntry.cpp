#include "RegistryEntry.hpp"

#include "Characters.hpp"
#include "ZpoShared.h"

#include <cstring>

namespace zpo {

namespace {

// Whether one of the parts, which NULs separate, has a control character. Without branches, so that the compiler looks
// at many bytes at once.
bool hasControl(std::string_view parts) {
    unsigned char found = 0;
    for (const char c : parts) {
        found |= static_cast<unsigned char>((c != '\0') & isControl(c));
    }
    return found != 0;
}

} // namespace

bool EntryName::append(const char* part) {
    const std::size_t length = strnlen(part, ZPO_REG_MAX_NAME + 1);
    if (length == 0 || length > ZPO_REG_MAX_NAME) {
        return false;
    }
    std::memcpy(bytes_.data() + length_, part, length + 1);
    length_ += length + 1;
    return true;
}

std::uint32_t EntryName::assign(const char* component, const char* section, const char* key) {
    length_ = 0;
    if (component == nullptr || section == nullptr || key == nullptr) {
        return ZPO_REG_BAD_ARGUMENT;
    }
    if (!append(component) || !append(section) || !append(key)) {
        return ZPO_REG_BAD_NAME;
    }
    --length_; // the last NUL is not part of the key
    return hasControl(encoded()) ? ZPO_REG_BAD_NAME : ZPO_OK;
}

std::uint32_t Entry::integer() const {
    return decodeInteger(bytes);
}

std::string encodeInteger(std::uint32_t value) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<char>(value >> shift));
    }
    return bytes;
}

std::uint32_t decodeInteger(std::string_view bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < bytes.size() && i < 4; ++i) {
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    }
    return value;
}

std::uint32_t checkValue(EntryKind kind, std::string_view bytes) {
    switch (kind) {
    case EntryKind::Binary:
        return bytes.empty() || bytes.size() > ZPO_REG_MAX_BINARY ? ZPO_REG_BAD_ARGUMENT : ZPO_OK;
    case EntryKind::Text:
        if (bytes.size() > ZPO_REG_MAX_TEXT) {
            return ZPO_REG_TEXT_TOO_LONG;
        }
        return bytes.find('\0') != std::string_view::npos ? ZPO_REG_BAD_ARGUMENT : ZPO_OK;
    case EntryKind::Integer:
        return bytes.size() == 4 ? ZPO_OK : ZPO_REG_BAD_ARGUMENT;
    }
    return ZPO_REG_BAD_ARGUMENT;
}

std::string encodeRecord(EntryKind kind, std::string_view bytes) {
    std::string record(1, static_cast<char>(kind));
    record.append(bytes);
    return record;
}

std::uint32_t decodeRecord(std::string_view record, EntryKind& kind, std::string_view& bytes) {
    if (record.empty()) {
        return ZPO_REG_ENTRY_DAMAGED;
    }
    const auto stored = static_cast<EntryKind>(record.front());
    const std::string_view value = record.substr(1);
    if (checkValue(stored, value) != ZPO_OK) {
        return ZPO_REG_ENTRY_DAMAGED;
    }
    kind = stored;
    bytes = value;
    return ZPO_OK;
}

std::uint32_t decodeEntry(std::string_view encodedName, std::string_view record, Entry& entry) {
    const auto first = encodedName.find('\0');
    const auto second = first == std::string_view::npos ? first : encodedName.find('\0', first + 1);
    if (second == std::string_view::npos) {
        return ZPO_REG_ENTRY_DAMAGED;
    }
    entry.component = encodedName.substr(0, first);
    entry.section = encodedName.substr(first + 1, second - first - 1);
    entry.key = encodedName.substr(second + 1);
    EntryName again;
    if (again.assign(entry.component.c_str(), entry.section.c_str(), entry.key.c_str()) != ZPO_OK ||
        again.encoded() != encodedName) {
        return ZPO_REG_ENTRY_DAMAGED;
    }
    std::string_view bytes;
    const std::uint32_t status = decodeRecord(record, entry.kind, bytes);
    entry.bytes = bytes;
    return status;
}

} // namespace zpo
