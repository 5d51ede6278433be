// The registry of FakePlatform. Refuses what the real one refuses, with the same statuses.
#include "FakePlatform.hpp"

#include <cstdio>
#include <cstring>

using namespace fakes;

namespace {

using Text = const char*;

constexpr Text kBytes = "bytes ";
constexpr Text kText = "text ";
constexpr Text kInteger = "int ";

struct Name {
    const char* component;
    const char* section;
    const char* key;

    std::string text() const { return std::string(component) + "/" + section + "/" + key; }
    bool isGiven() const { return component != nullptr && section != nullptr && key != nullptr; }
    bool isEmpty() const { return *component == '\0' || *section == '\0' || *key == '\0'; }
};

std::uint32_t accessed(const Call& platform, Text function, const Name& name, bool argumentsGood,
                       const std::string& detail) {
    if (!name.isGiven() || !argumentsGood) {
        return ZPO_REG_BAD_ARGUMENT;
    }
    const std::uint32_t status = platform->called(function, name.text() + detail);
    return status == 0 && name.isEmpty() ? ZPO_REG_BAD_NAME : status;
}

// Reads an entry of the kind; `content` is the value without it.
std::uint32_t read(Text function, const Name& name, bool argumentsGood, Text kind, const std::string& detail,
                   std::string& content) {
    const Call platform;
    const std::uint32_t status = accessed(platform, function, name, argumentsGood, detail);
    if (status != 0) {
        return status;
    }
    const std::string value = platform->entry(name.text());
    if (value.compare(0, std::strlen(kind), kind) != 0) {
        return value.empty() ? ZPO_REG_ENTRY_NOT_FOUND : ZPO_REG_WRONG_KIND;
    }
    content = value.substr(std::strlen(kind));
    return 0;
}

std::uint32_t write(Text function, const Name& name, bool argumentsGood, const std::string& value) {
    const Call platform;
    const std::uint32_t status = accessed(platform, function, name, argumentsGood, " " + value);
    if (status == 0) {
        platform->put(name.text(), value);
    }
    return status;
}

} // namespace

void FakePlatform::put(const std::string& entry, const std::string& value) {
    entries.erase(entry);
    if (!value.empty()) {
        entries[entry] = value;
    }
}

std::string FakePlatform::entry(const std::string& entry) const {
    return entries.count(entry) == 0 ? "" : entries.at(entry);
}

uint32_t ZpoGetRegEntryBinary(Text component, Text section, Text key, void* buffer, uint32_t length) {
    std::string digits;
    const std::uint32_t status = read(__func__, {component, section, key}, buffer != nullptr && length != 0, kBytes,
                                      " " + std::to_string(length), digits);
    if (status == 0 && digits.size() != 2U * length) {
        return ZPO_REG_WRONG_LENGTH;
    }
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const unsigned long byte = std::stoul(digits.substr(i, 2), nullptr, 16);
        static_cast<unsigned char*>(buffer)[i / 2] = static_cast<unsigned char>(byte);
    }
    return status;
}

uint32_t ZpoSetRegEntryBinary(Text component, Text section, Text key, const void* buffer, uint32_t length) {
    std::string value = kBytes;
    for (std::uint32_t i = 0; buffer != nullptr && i < length; ++i) {
        char digits[3];
        (void)std::snprintf(digits, sizeof digits, "%02x", static_cast<const unsigned char*>(buffer)[i]);
        value += digits;
    }
    return write(__func__, {component, section, key}, buffer != nullptr && length != 0, value);
}

uint32_t ZpoGetRegEntryString(Text component, Text section, Text key, char* buffer, uint32_t size) {
    std::string text;
    const std::uint32_t status = read(__func__, {component, section, key}, buffer != nullptr && size != 0, kText,
                                      " " + std::to_string(size), text);
    if (status == 0 && text.size() >= size) {
        return ZPO_REG_BUFFER_TOO_SMALL;
    }
    if (status == 0) {
        std::memcpy(buffer, text.c_str(), text.size() + 1);
    }
    return status;
}

uint32_t ZpoSetRegEntryString(Text component, Text section, Text key, Text text) {
    if (text != nullptr && std::strlen(text) > ZPO_REG_MAX_TEXT) {
        return ZPO_REG_TEXT_TOO_LONG;
    }
    return write(__func__, {component, section, key}, text != nullptr,
                 kText + std::string(text == nullptr ? "" : text));
}

uint32_t ZpoGetRegEntryInt(Text component, Text section, Text key, uint32_t* value) {
    std::string digits;
    const std::uint32_t status = read(__func__, {component, section, key}, value != nullptr, kInteger, "", digits);
    if (status == 0) {
        *value = static_cast<std::uint32_t>(std::stoul(digits));
    }
    return status;
}

uint32_t ZpoSetRegEntryInt(Text component, Text section, Text key, uint32_t value) {
    return write(__func__, {component, section, key}, true, kInteger + std::to_string(value));
}
