// The push settings of the registry, checked: whatever bytes the entries hold, what is here can be used.
#pragma once

#include "Address.hpp"

#include <ctime>
#include <string>

namespace transfer {

struct PushSettings {
    unsigned char type = 0;
    Address address;
    std::string user;
    std::string password;
    std::string folder; ///< without a slash at its end; empty: the account's own folder; "/": the root
    unsigned retries = 0;
    bool deleteSent = false;
    bool compress = false;
    bool metrics = false;

    /// Where the files go, for people: "sftp://user@host:22/folder". Never holds the password.
    std::string target() const;
    /// The path of a file in the folder, relative to the account's own folder unless it begins with a slash.
    std::string pathOf(const std::string& name) const;
};

/// The entries as they are stored: any bytes.
struct StoredSettings {
    unsigned char type = 4;
    std::string address, user, password, folder;
    unsigned char retries = 0, deleteFlag = 0, compressFlag = 0, metricsFlag = 0;
};

/// Throws Failure, scope Run, when a setting is unusable or says that nothing is pushed.
PushSettings checkedSettings(const StoredSettings& stored);

/// Reads the settings and checks them. Throws Failure, scope Run, when one is unusable, cannot be read, or says that
/// nothing is pushed.
PushSettings readPushSettings();

/// The transfer type alone; 4 when it is not set.
unsigned char readTransferType();
/// What a transfer type means: "daily push", ...
std::string transferTypeText(unsigned char type);

/// The entry that tells clients when the last transfer took place; empty when there is none.
std::string readLastTransferTime();
/// Throws Failure, scope Run.
void writeLastTransferTime(std::time_t time);

} // namespace transfer
