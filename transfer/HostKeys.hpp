// The keys of SFTP servers that are trusted: lines of OpenSSH's known_hosts form.
#pragma once

#include "Address.hpp"

#include <string>
#include <vector>

namespace transfer {

struct HostKey {
    std::string blob; ///< as it goes over the wire; begins with the name of its kind

    /// "ssh-ed25519", ...; "unknown" when the blob is malformed.
    std::string kind() const;
    /// "SHA256:..." as OpenSSH prints it.
    std::string fingerprint() const;
    std::string base64() const;
};

/// Adds the key to the file in place of the keys that the host had. Throws Failure, scope Run.
void trustHostKey(const std::string& knownHosts, const Address& address, const HostKey& key);
/// Whether the file holds a key of the host.
bool isKnownHost(const std::string& knownHosts, const Address& address);

} // namespace transfer
