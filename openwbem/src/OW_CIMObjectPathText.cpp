// The text of object paths: escape(), modelPath(), toString() and parse().

#include "OW_CIMException.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMNameSpace.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMUrl.hpp"
#include "OW_CIMValue.hpp"

#include <string>

namespace OpenWBEM {

namespace {
constexpr Int32 kDefaultPort = 5988;
}

String CIMObjectPath::escape(const String& text) {
    std::string escaped;
    for (size_t i = 0; i < text.length(); ++i) {
        const char c = text.c_str()[i];
        if (c == '\\' || c == '"') {
            escaped += '\\';
        }
        escaped += c == '\n' ? std::string("\\n") : std::string(1, c);
    }
    return String(escaped.data(), escaped.size());
}

String CIMObjectPath::unEscape(const String& text) {
    std::string plain;
    for (size_t i = 0; i < text.length(); ++i) {
        char c = text.c_str()[i];
        if (c == '\\' && i + 1 < text.length()) {
            c = text.c_str()[++i]; // also for \n: deliberate
        }
        plain += c;
    }
    return String(plain.data(), plain.size());
}

String CIMObjectPath::modelPath() const {
    std::string path = getClassName().c_str();
    char separator = '.';
    const CIMPropertyArray keys = getKeys();
    for (const CIMProperty& key : keys) {
        const CIMValue value = key.getValue();
        path += separator;
        path += key.getName().c_str();
        path += "=\"";
        path += value ? escape(value.toString()).c_str() : "null";
        path += '"';
        separator = ',';
    }
    return String(path.data(), path.size());
}

String CIMObjectPath::toString() const {
    const CIMUrl url = getNameSpaceUrl();
    String text;
    if (!url.isLocal()) {
        text = url.getProtocol() + "://" + url.getHost();
        if (url.getPort() > 0 && url.getPort() != kDefaultPort) {
            text += ":" + String(url.getPort());
        }
    }
    return text + "/" + getNameSpace() + ":" + modelPath();
}

String CIMObjectPath::toMOF() const {
    return escape(toString());
}

namespace {

/// Parses [protocol://host[:port]/][namespace:]Class.Key=value,... from front to back.
class PathReader {
  public:
    explicit PathReader(const String& text) : given_(text), rest_(String(text).trim()) {}

    void read() {
        readUrl();
        readNameSpaceAndClass();
        readKeys();
    }

    CIMUrl url;
    String nameSpace = "root";
    CIMName className;
    CIMPropertyArray keys;

  private:
    [[noreturn]] static void fail(CIMException::ErrNoType code, const String& message) {
        OW_THROWCIMMSG(code, message.c_str());
    }
    [[noreturn]] void failWithText(const char* what) const {
        fail(CIMException::INVALID_PARAMETER, String(what) + ": " + given_);
    }
    /// Takes the text before the position off rest_, together with the character at the position.
    String takeUpTo(size_t position) {
        String taken = rest_.substring(0, position);
        rest_ = rest_.substring(position + 1);
        return taken;
    }

    void readUrl();
    void readNameSpaceAndClass();
    void readKeys();
    void readKey(const String& text);

    const String given_;
    String rest_;
};

void PathReader::readUrl() {
    const size_t protocolEnd = rest_.indexOf("://");
    if (protocolEnd == String::npos || protocolEnd != rest_.indexOf(':')) {
        return;
    }
    const String protocol = takeUpTo(protocolEnd);
    rest_ = rest_.substring(2);
    const size_t hostEnd = rest_.indexOf('/');
    if (hostEnd == String::npos) {
        failWithText("Invalid instance name");
    }
    const String authority = takeUpTo(hostEnd);
    const size_t colon = authority.indexOf(':', authority.startsWith('[') ? authority.indexOf(']') : 0);
    if (colon == String::npos) {
        url = CIMUrl(protocol, authority, url.getFile(), url.getPort());
        return;
    }
    try {
        url = CIMUrl(protocol, authority.substring(0, colon), url.getFile(), authority.substring(colon + 1).toInt32());
    } catch (const StringConversionException&) {
        fail(CIMException::INVALID_PARAMETER, "Invalid port in Object Path");
    }
}

void PathReader::readNameSpaceAndClass() {
    const size_t colon = rest_.indexOf(':');
    if (colon != String::npos) {
        nameSpace = takeUpTo(colon);
    }
    const size_t dot = rest_.indexOf('.');
    if (dot == String::npos) {
        failWithText("class name not found in instance name");
    }
    className = takeUpTo(dot);
    if (rest_.empty()) {
        failWithText("No key values found in instance name");
    }
}

/// Where the key at the front of the text ends: its comma or the end, npos within an open quote.
size_t keyEnd(const String& text) {
    bool quoted = false;
    for (size_t i = 0; i < text.length(); ++i) {
        const char c = text.charAt(i);
        if (c == '"') {
            quoted = !quoted;
        } else if (quoted && c == '\\') {
            ++i;
        } else if (!quoted && c == ',') {
            return i;
        }
    }
    return quoted ? String::npos : text.length();
}

void PathReader::readKeys() {
    const String all = rest_;
    for (bool first = true; !rest_.empty() && (first || rest_.length() > 1); first = false) {
        const size_t end = keyEnd(rest_);
        if (end == String::npos) {
            return;
        }
        const String key = takeUpTo(end);
        if (key.indexOf('=') == String::npos) {
            fail(CIMException::NOT_FOUND, "Bad key in string (" + all + ")");
        }
        readKey(key);
    }
}

void PathReader::readKey(const String& text) {
    const size_t assignment = text.indexOf('=');
    String value = text.substring(assignment + 1);
    if (value.startsWith('"')) {
        value = CIMObjectPath::unEscape(value.substring(1, value.length() - (value.endsWith('"') ? 2 : 1)));
    }
    keys.push_back(CIMProperty(text.substring(0, assignment), CIMValue(value.empty() ? String("") : value)));
}

} // namespace

CIMObjectPath CIMObjectPath::parse(const String& text) {
    if (text.empty()) {
        return CIMObjectPath(CIMNULL);
    }
    PathReader reader(text);
    reader.read();
    CIMObjectPath path(reader.className, reader.keys);
    path.setFullNameSpace(CIMNameSpace(reader.url, reader.nameSpace));
    return path;
}

} // namespace OpenWBEM
