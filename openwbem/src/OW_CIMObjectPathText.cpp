// The text of object paths: escape(), modelPath(), toString() and parse().

#include "OW_CIMException.hpp"
#include "OW_CIMModel.hpp"
#include "OW_CIMNameSpace.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMUrl.hpp"
#include "OW_CIMValue.hpp"

#include <algorithm>
#include <string>

namespace OpenWBEM {

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
            c = text.c_str()[++i];
            c = c == 'n' ? '\n' : c;
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
        if (url.getPortNumber() > 0) {
            text += ":" + String(url.getPortNumber());
        }
    }
    return text + "/" + getNameSpace() + ":" + modelPath();
}

String CIMObjectPath::toMOF() const {
    return escape(toString());
}

namespace {

/// Takes [protocol://host[:port]/][namespace:]Class.Key=value,... apart, from its front to its end.
class PathReader {
  public:
    explicit PathReader(const String& text) : m_text(text) {}

    void read() {
        readUrl();
        readNameSpaceAndClass();
        do {
            readKey();
        } while (takeComma());
    }

    CIMUrl url;
    String nameSpace = "root";
    CIMName className;
    CIMPropertyArray keys;

  private:
    [[noreturn]] void fail(CIMException::ErrNoType code, const char* what) const {
        const String message = String(what) + ": " + m_text;
        OW_THROWCIMMSG(code, message.c_str());
    }
    bool atEnd() const { return m_position >= m_text.length(); }
    /// The text from here up to the position, or to the end.
    String takeUpTo(size_t position) {
        const size_t end = std::min(position, m_text.length());
        String taken = m_text.substring(m_position, end - m_position);
        m_position = end;
        return taken;
    }

    void readUrl();
    void readNameSpaceAndClass();
    void readKey();
    String readQuoted();
    bool takeComma();

    const String m_text;
    size_t m_position = 0;
};

void PathReader::readUrl() {
    const size_t protocolEnd = m_text.indexOf("://");
    if (protocolEnd == String::npos || m_text.indexOf('=') < protocolEnd) {
        return;
    }
    const size_t hostEnd = m_text.indexOf('/', protocolEnd + 3);
    if (hostEnd == String::npos) {
        fail(CIMException::INVALID_PARAMETER, "Nothing follows the host of the object path");
    }
    url = CIMUrl(takeUpTo(hostEnd));
    ++m_position;
}

void PathReader::readNameSpaceAndClass() {
    const size_t assignment = m_text.indexOf('=', m_position);
    const size_t colon = m_text.indexOf(':', m_position);
    if (colon != String::npos && colon < assignment) {
        nameSpace = takeUpTo(colon);
        ++m_position;
    }
    const size_t dot = m_text.indexOf('.', m_position);
    if (dot == String::npos || dot + 1 == m_text.length()) {
        fail(CIMException::INVALID_PARAMETER, "There are no keys in the object path");
    }
    className = takeUpTo(dot);
    ++m_position;
}

void PathReader::readKey() {
    const size_t assignment = m_text.indexOf('=', m_position);
    if (assignment == String::npos || m_text.indexOf(',', m_position) < assignment) {
        fail(CIMException::NOT_FOUND, "There is no = behind a key of the object path");
    }
    const CIMName name(takeUpTo(assignment));
    ++m_position;
    const bool quoted = m_text.charAt(m_position) == '"' && !atEnd();
    const String value = quoted ? readQuoted() : takeUpTo(m_text.indexOf(',', m_position));
    keys.push_back(CIMProperty(name, CIMValue(value)));
}

/// The quoted value from here on, unescaped.
String PathReader::readQuoted() {
    size_t end = ++m_position;
    while (end < m_text.length() && m_text.c_str()[end] != '"') {
        end += size_t(m_text.c_str()[end] == '\\' ? 2 : 1);
    }
    if (end >= m_text.length()) {
        fail(CIMException::INVALID_PARAMETER, "A quoted value of the object path has no end");
    }
    const String escaped = takeUpTo(end);
    ++m_position;
    return CIMObjectPath::unEscape(escaped);
}

/// False at the end.
bool PathReader::takeComma() {
    if (atEnd()) {
        return false;
    }
    if (m_text.c_str()[m_position] != ',') {
        fail(CIMException::INVALID_PARAMETER, "A value of the object path goes on behind its quotes");
    }
    ++m_position;
    return true;
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
