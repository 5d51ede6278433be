#include "PushSettings.hpp"

#include "Failure.hpp"
#include "Text.hpp"
#include "ZpoShared.h"

#include <fmt/format.h>

namespace transfer {
namespace {

constexpr char kComponent[] = "CDR";
constexpr char kSection[] = "CDRPush";
constexpr char kLastTransferTime[] = "LastTransferTime";

constexpr unsigned char kPull = 3;
constexpr unsigned char kNone = 4;

[[noreturn]] void refuse(const char* key, std::uint32_t status) {
    throw Failure(Scope::Run, fmt::format("the registry's entry {} {} {} cannot be read: status {:#x}", kComponent,
                                          kSection, key, status));
}

unsigned char readByte(const char* key, unsigned char fallback) {
    unsigned char value = fallback;
    const std::uint32_t status = ZpoGetRegEntryBinary(kComponent, kSection, key, &value, 1);
    if (status != ZPO_OK && status != ZPO_REG_ENTRY_NOT_FOUND) {
        refuse(key, status);
    }
    return value;
}

/// A missing entry is empty.
std::string readText(const char* key) {
    char text[ZPO_REG_MAX_TEXT + 1] = "";
    const std::uint32_t status = ZpoGetRegEntryString(kComponent, kSection, key, text, sizeof text);
    if (status != ZPO_OK && status != ZPO_REG_ENTRY_NOT_FOUND) {
        refuse(key, status);
    }
    return text;
}

/// Servers and protocols take a control character for the end of a command.
const std::string& withoutControl(const std::string& text, const char* property) {
    if (holdsControl(text)) {
        throw Failure(Scope::Run, std::string(property) + " holds a control character");
    }
    return text;
}

std::string checkedFolder(const std::string& text) {
    std::string folder = withoutControl(text, "DestFolder");
    if (("/" + folder + "/").find("/../") != std::string::npos) {
        throw Failure(Scope::Run, "DestFolder may not lead upwards (..)");
    }
    while (folder.size() > 1 && folder.back() == '/') {
        folder.pop_back();
    }
    return folder;
}

} // namespace

std::string PushSettings::target() const {
    std::string url = address.url();
    url.insert(url.find("://") + 3, printable(user) + "@");
    return url + (folder.empty() || folder.front() == '/' ? "" : "/") + printable(folder);
}

std::string PushSettings::pathOf(const std::string& name) const {
    return folder.empty() ? name : folder + (folder == "/" ? "" : "/") + name;
}

PushSettings checkedSettings(const StoredSettings& stored) {
    PushSettings settings;
    settings.type = stored.type;
    if (settings.type == kPull || settings.type == kNone) {
        throw Failure(Scope::Run, fmt::format("TransferType is {} ({}): nothing is pushed", settings.type,
                                              transferTypeText(settings.type)));
    }
    settings.address = parseAddress(stored.address);
    settings.user = withoutControl(stored.user, "UserName");
    if (settings.user.empty()) {
        throw Failure(Scope::Run, "no account is set: UserName is empty");
    }
    settings.password = withoutControl(stored.password, "Password");
    settings.folder = checkedFolder(stored.folder);
    settings.retries = stored.retries;
    settings.deleteSent = stored.deleteFlag != 0;
    settings.compress = stored.compressFlag != 0;
    settings.metrics = stored.metricsFlag != 0;
    return settings;
}

PushSettings readPushSettings() {
    StoredSettings stored;
    stored.type = readTransferType();
    stored.address = readText("IpAddr");
    stored.user = readText("UserName");
    stored.password = readText("Password");
    stored.folder = readText("DestFolder");
    stored.retries = readByte("NumRetry", 0);
    stored.deleteFlag = readByte("DeleteFlag", 0);
    stored.compressFlag = readByte("CompressFlag", 0);
    stored.metricsFlag = readByte("IncludeMetricsFlag", 0);
    return checkedSettings(stored);
}

unsigned char readTransferType() {
    return readByte("TransferType", kNone);
}

std::string transferTypeText(unsigned char type) {
    static const char* const kTexts[] = {"daily push", "weekly push", "monthly push", "pull", "no transfer"};
    return type < std::size(kTexts) ? kTexts[type] : "unknown, taken as daily push";
}

std::string readLastTransferTime() {
    return printable(readText(kLastTransferTime));
}

void writeLastTransferTime(std::time_t time) {
    const std::uint32_t status = ZpoSetRegEntryString(kComponent, kSection, kLastTransferTime, cimTime(time).c_str());
    if (status != ZPO_OK) {
        throw Failure(Scope::Run, fmt::format("LastTransferTime cannot be written: status {:#x}", status));
    }
}

} // namespace transfer
