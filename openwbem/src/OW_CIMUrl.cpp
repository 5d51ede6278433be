#include "OW_CIMUrl.hpp"

#include "OW_CIMModel.hpp"
#include "OW_CIMStream.hpp"

namespace OpenWBEM {

struct CIMUrl::Data : public ModelData<CIMUrl::Data> {
    String protocol = "http";
    String host = "127.0.0.1";
    Int32 port = 0;
    String file;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.protocol, self.host, self.port, self.file);
    }
    void parse(const String& url);
    void parseHostAndPort(const String& authority);
};

void CIMUrl::Data::parse(const String& url) {
    String rest = url;
    const size_t protocolEnd = rest.indexOf("://");
    if (protocolEnd != String::npos) {
        protocol = rest.substring(0, protocolEnd);
        rest = rest.substring(protocolEnd + 3);
    }
    const size_t hostEnd = rest.indexOf('/');
    if (hostEnd != String::npos) {
        file = rest.substring(hostEnd + 1);
        rest = rest.substring(0, hostEnd);
    }
    parseHostAndPort(rest);
}

void CIMUrl::Data::parseHostAndPort(const String& authority) {
    const size_t addressEnd = authority.startsWith('[') ? authority.indexOf(']') : 0;
    const size_t colon = addressEnd == String::npos ? String::npos : authority.indexOf(':', addressEnd);
    host = authority.substring(0, colon);
    if (colon == String::npos) {
        return;
    }
    const String digits = authority.substring(colon + 1);
    bool good = !digits.empty() && digits.length() <= 5;
    for (size_t i = 0; i < digits.length(); ++i) {
        good = good && digits.charAt(i) >= '0' && digits.charAt(i) <= '9';
    }
    port = good ? digits.toInt32() : 0;
    if (port < 1 || port > 65535) {
        const String message = "\"" + digits + "\" is no port number";
        OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, message.c_str());
    }
}

CIMUrl::CIMUrl() : m_pdata(sharedDefault<Data>()) {}
CIMUrl::CIMUrl(CIMNULL_t) {}
CIMUrl::CIMUrl(const String& url) : CIMUrl() {
    m_pdata->parse(url);
}
CIMUrl::CIMUrl(const char* url) : CIMUrl(String(url)) {}
CIMUrl::CIMUrl(const CIMUrl& other) = default;
CIMUrl::~CIMUrl() = default;
CIMUrl& CIMUrl::operator=(const CIMUrl& other) = default;

void CIMUrl::setNull() {
    m_pdata = nullptr;
}

String CIMUrl::getProtocol() const {
    return m_pdata->protocol;
}

String CIMUrl::getHost() const {
    return m_pdata->host;
}

Int32 CIMUrl::getPortNumber() const {
    return m_pdata->port;
}

String CIMUrl::getFileName() const {
    return m_pdata->file;
}

bool CIMUrl::isLocal() const {
    const String& host = m_pdata->host;
    return host.empty() || host == "127.0.0.1" || host == "::1" || host == "[::1]" ||
           host.equalsIgnoreCase("localhost");
}

CIMUrl& CIMUrl::setProtocol(const String& protocol) {
    m_pdata->protocol = protocol;
    return *this;
}

CIMUrl& CIMUrl::setHost(const String& host) {
    m_pdata->host = host;
    return *this;
}

CIMUrl& CIMUrl::setPortNumber(Int32 port) {
    m_pdata->port = port;
    return *this;
}

CIMUrl& CIMUrl::setFileName(const String& file) {
    m_pdata->file = file;
    return *this;
}

bool CIMUrl::equals(const CIMUrl& other) const {
    const Data& x = *m_pdata;
    const Data& y = *other.m_pdata;
    return x.protocol.equalsIgnoreCase(y.protocol) && x.host.equalsIgnoreCase(y.host) && x.port == y.port &&
           x.file == y.file;
}

bool operator==(const CIMUrl& x, const CIMUrl& y) {
    return !x || !y ? !x && !y : x.equals(y);
}

String CIMUrl::toString() const {
    const Data& data = *m_pdata;
    String text = data.protocol + "://" + data.host;
    if (data.port > 0) {
        text += ":" + String(data.port);
    }
    return data.file.empty() ? text : text + "/" + data.file;
}

String CIMUrl::toMOF() const {
    return toString();
}

void CIMUrl::readObject(std::istream& istrm) {
    m_pdata = CIMStream::readData<Data>(istrm, "u").release();
}

void CIMUrl::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "u", *m_pdata);
}

} // namespace OpenWBEM
