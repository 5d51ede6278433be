#include "HostKeys.hpp"

#include "StateFolder.hpp"

#include <openssl/evp.h>
#include <sstream>

namespace transfer {
namespace {

std::string encode(const unsigned char* bytes, std::size_t count) {
    std::string text(4 * ((count + 2) / 3) + 1, '\0');
    const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()), bytes, static_cast<int>(count));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

const unsigned char* bytesOf(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

bool isOf(const std::string& line, const Address& address) {
    const std::string start = address.knownHostsName() + " ";
    return line.compare(0, start.size(), start) == 0;
}

} // namespace

std::string HostKey::kind() const {
    constexpr std::size_t kMaxKind = 64;
    std::size_t length = 0;
    for (std::size_t i = 0; i < 4 && i < blob.size(); ++i) {
        length = length << 8U | static_cast<unsigned char>(blob[i]);
    }
    const bool whole = length > 0 && length <= kMaxKind && blob.size() >= 4 + length;
    const std::string kind = whole ? blob.substr(4, length) : "";
    const bool plain = kind.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-@.") == std::string::npos;
    return kind.empty() || !plain ? "unknown" : kind;
}

std::string HostKey::fingerprint() const {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    EVP_Digest(blob.data(), blob.size(), digest, &length, EVP_sha256(), nullptr);
    std::string text = encode(digest, length);
    text.resize(text.find_last_not_of('=') + 1);
    return "SHA256:" + text;
}

std::string HostKey::base64() const {
    return encode(bytesOf(blob), blob.size());
}

void trustHostKey(const std::string& knownHosts, const Address& address, const HostKey& key) {
    std::string content;
    std::istringstream lines(loadFile(knownHosts));
    for (std::string line; std::getline(lines, line);) {
        content += isOf(line, address) ? "" : line + "\n";
    }
    saveFile(knownHosts, content + address.knownHostsName() + " " + key.kind() + " " + key.base64() + "\n");
}

bool isKnownHost(const std::string& knownHosts, const Address& address) {
    std::istringstream lines(loadFile(knownHosts));
    for (std::string line; std::getline(lines, line);) {
        if (isOf(line, address)) {
            return true;
        }
    }
    return false;
}

} // namespace transfer
