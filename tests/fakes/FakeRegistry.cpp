// The registry of FakePlatform. Refuses what the real one refuses, with the same statuses.
#include "FakePlatform.hpp"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <mutex>

using fakes::FakePlatform;

namespace {

constexpr const char* kBytes = "bytes ";
constexpr const char* kText = "text ";
constexpr const char* kInteger = "int ";

bool isKind(const std::string& value, const char* kind) {
    return value.compare(0, std::strlen(kind), kind) == 0;
}

// The value without its kind.
std::string content(const std::string& value) {
    return value.substr(value.find(' ') + 1);
}

std::string describeBytes(const void* bytes, std::uint32_t length) {
    std::string text = kBytes;
    for (std::uint32_t i = 0; i < length; ++i) {
        char digits[3];
        (void)std::snprintf(digits, sizeof digits, "%02x", static_cast<const unsigned char*>(bytes)[i]);
        text += digits;
    }
    return text;
}

void storeBytes(const std::string& digits, void* buffer) {
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        static_cast<unsigned char*>(buffer)[i / 2] =
            static_cast<unsigned char>(std::stoul(digits.substr(i, 2), nullptr, 16));
    }
}

bool isName(const char* text) {
    bool good = *text != '\0' && std::strlen(text) <= ZPO_REG_MAX_NAME;
    for (; *text != '\0'; ++text) {
        good = good && std::iscntrl(static_cast<unsigned char>(*text)) == 0;
    }
    return good;
}

// One access, alone while it lasts; its status is 0 as long as nothing stands against it.
struct Access {
    static std::mutex& mutex() {
        static std::mutex one;
        return one;
    }
    std::lock_guard<std::mutex> lock{mutex()};
    std::string name;
    std::uint32_t status;

    Access(const char* function, const char* component, const char* section, const char* key, bool argumentsGood,
           const std::string& value = "")
        : status(ZPO_REG_BAD_ARGUMENT) {
        if (component == nullptr || section == nullptr || key == nullptr || !argumentsGood) {
            return;
        }
        name = std::string(component) + "/" + section + "/" + key;
        status = FakePlatform::get().called(function, name + (value.empty() ? "" : " ") + value);
        if (status == 0 && !(isName(component) && isName(section) && isName(key))) {
            status = ZPO_REG_BAD_NAME;
        }
    }

    // The content of the entry, which must be of the kind; sets the status when there is none.
    std::string read(const char* kind) {
        const std::string value = status == 0 ? FakePlatform::get().entry(name) : "";
        if (status == 0 && value.empty()) {
            status = ZPO_REG_ENTRY_NOT_FOUND;
        } else if (status == 0 && !isKind(value, kind)) {
            status = ZPO_REG_WRONG_KIND;
        }
        return status == 0 ? content(value) : "";
    }

    std::uint32_t write(const std::string& value) {
        if (status == 0) {
            FakePlatform::get().put(name, value);
        }
        return status;
    }
};

} // namespace

void FakePlatform::put(const std::string& entry, const std::string& value) {
    if (value.empty()) {
        entries.erase(entry);
    } else {
        entries[entry] = value;
    }
}

std::string FakePlatform::entry(const std::string& entry) const {
    const auto found = entries.find(entry);
    return found == entries.end() ? "" : found->second;
}

uint32_t ZpoGetRegEntryBinary(const char* component, const char* section, const char* key, void* buffer,
                              uint32_t length) {
    Access access(__func__, component, section, key, buffer != nullptr && length != 0 && length <= ZPO_REG_MAX_BINARY,
                  std::to_string(length));
    const std::string digits = access.read(kBytes);
    if (access.status == 0 && digits.size() != 2U * length) {
        return ZPO_REG_WRONG_LENGTH;
    }
    storeBytes(digits, buffer);
    return access.status;
}

uint32_t ZpoSetRegEntryBinary(const char* component, const char* section, const char* key, const void* buffer,
                              uint32_t length) {
    const bool good = buffer != nullptr && length != 0 && length <= ZPO_REG_MAX_BINARY;
    const std::string value = good ? describeBytes(buffer, length) : "";
    return Access(__func__, component, section, key, good, value).write(value);
}

uint32_t ZpoGetRegEntryString(const char* component, const char* section, const char* key, char* buffer,
                              uint32_t size) {
    Access access(__func__, component, section, key, buffer != nullptr && size != 0, std::to_string(size));
    const std::string text = access.read(kText);
    if (access.status == 0 && text.size() >= size) {
        return ZPO_REG_BUFFER_TOO_SMALL;
    }
    if (access.status == 0) {
        std::memcpy(buffer, text.c_str(), text.size() + 1);
    }
    return access.status;
}

uint32_t ZpoSetRegEntryString(const char* component, const char* section, const char* key, const char* text) {
    const std::string value = text == nullptr ? "" : std::string(kText) + text;
    Access access(__func__, component, section, key, text != nullptr, value);
    if (access.status == 0 && std::strlen(text) > ZPO_REG_MAX_TEXT) {
        return ZPO_REG_TEXT_TOO_LONG;
    }
    return access.write(value);
}

uint32_t ZpoGetRegEntryInt(const char* component, const char* section, const char* key, uint32_t* value) {
    Access access(__func__, component, section, key, value != nullptr);
    const std::string digits = access.read(kInteger);
    if (access.status == 0) {
        *value = static_cast<std::uint32_t>(std::stoul(digits));
    }
    return access.status;
}

uint32_t ZpoSetRegEntryInt(const char* component, const char* section, const char* key, uint32_t value) {
    const std::string text = kInteger + std::to_string(value);
    return Access(__func__, component, section, key, true, text).write(text);
}
