#include "OW_CIMUrl.hpp"

#include "OW_CIMModel.hpp"
#include "OW_CIMStream.hpp"

namespace OpenWBEM {

namespace {
const char* const kThisHost = "127.0.0.1";
constexpr Int32 kDefaultPort = 5988;

bool namesThisHost(const String& host) {
    return host.empty() || host == kThisHost || host.equalsIgnoreCase("localhost");
}

Int32 portFrom(const String& text) {
    try {
        const Int32 port = text.toInt32();
        return port > 0 ? port : kDefaultPort;
    } catch (const StringConversionException&) {
        return kDefaultPort;
    }
}
} // namespace

struct CIMUrl::Data : public ModelData<CIMUrl::Data> {
    String protocol = "http";
    String host = kThisHost;
    Int32 port = kDefaultPort;
    String file = "cimom";
    String ref;
    String text;

    Data() { buildText(); }
    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.protocol, self.host, self.port, self.file, self.ref, self.text);
    }
    void parse(const String& url);
    void parseHostAndPort(const String& authority);
    void setHost(const String& name) { host = namesThisHost(name) ? String(kThisHost) : name; }
    void buildText() {
        text = protocol + "://" + host + ":" + String(port) + "/" + file;
        if (!ref.empty()) {
            text += "#" + ref;
        }
    }
};

void CIMUrl::Data::parse(const String& url) {
    if (url.empty()) {
        protocol = host = file = text = String();
        port = 0;
        return;
    }
    String rest = url;
    const size_t protocolEnd = rest.indexOf("://");
    if (protocolEnd != String::npos) {
        protocol = rest.substring(0, protocolEnd);
        rest = rest.substring(protocolEnd + 3);
    }
    const size_t hostEnd = rest.indexOf('/');
    if (hostEnd != String::npos && hostEnd + 1 < rest.length()) {
        const size_t fileEnd = rest.indexOf('#', hostEnd);
        file = rest.substring(hostEnd + 1, fileEnd == String::npos ? fileEnd : fileEnd - hostEnd - 1);
        ref = fileEnd == String::npos ? String() : rest.substring(fileEnd + 1);
    }
    parseHostAndPort(rest.substring(0, hostEnd));
    buildText();
}

void CIMUrl::Data::parseHostAndPort(const String& authority) {
    const size_t at = authority.lastIndexOf('@');
    const String address = at == String::npos ? authority : authority.substring(at + 1);
    // The colons of an IPv6 address are in brackets.
    const size_t addressEnd = address.startsWith('[') ? address.indexOf(']') : 0;
    const size_t colon = addressEnd == String::npos ? String::npos : address.indexOf(':', addressEnd);
    setHost(address.substring(0, colon));
    if (colon != String::npos) {
        port = portFrom(address.substring(colon + 1));
    }
}

CIMUrl::CIMUrl() : data_(sharedDefault<Data>()) {}
CIMUrl::CIMUrl(CIMNULL_t) {}
CIMUrl::CIMUrl(const String& url) : CIMUrl() {
    data_->parse(url);
}
CIMUrl::CIMUrl(const String& protocol, const String& host, const String& file, Int32 port) : CIMUrl() {
    data_->protocol = protocol;
    data_->setHost(host);
    data_->file = file;
    data_->port = port;
    data_->buildText();
}
CIMUrl::CIMUrl(const CIMUrl& context, const String& url) : CIMUrl(url) {
    const Data& other = *context.data_;
    if (other.protocol == getProtocol()) {
        data_->host = other.host;
        data_->port = other.port;
        data_->file = other.file;
        data_->buildText();
    }
}
CIMUrl::CIMUrl(const CIMUrl& other) = default;
CIMUrl::~CIMUrl() = default;
CIMUrl& CIMUrl::operator=(const CIMUrl& other) = default;

void CIMUrl::setNull() {
    data_ = nullptr;
}

String CIMUrl::getProtocol() const {
    return data_->protocol;
}

String CIMUrl::getHost() const {
    return data_->host;
}

Int32 CIMUrl::getPort() const {
    return data_->port;
}

String CIMUrl::getFile() const {
    return data_->file;
}

String CIMUrl::getRef() const {
    return data_->ref;
}

String CIMUrl::getSpec() const {
    return data_->text;
}

bool CIMUrl::isLocal() const {
    return namesThisHost(data_->host);
}

CIMUrl& CIMUrl::setProtocol(const String& protocol) {
    data_->protocol = protocol;
    data_->buildText();
    return *this;
}

CIMUrl& CIMUrl::setHost(const String& host) {
    data_->setHost(host);
    data_->buildText();
    return *this;
}

bool CIMUrl::sameFile(const CIMUrl& other) const {
    const Data& x = *data_;
    const Data& y = *other.data_;
    return x.protocol == y.protocol && x.host == y.host && x.port == y.port && x.file == y.file;
}

bool CIMUrl::equals(const CIMUrl& other) const {
    if (!data_ || !other.data_) {
        return !data_ && !other.data_;
    }
    return sameFile(other) && data_->ref == other.data_->ref;
}

bool operator<(const CIMUrl& x, const CIMUrl& y) {
    if (!x || !y) {
        return !x && !!y;
    }
    return x.data_->text < y.data_->text;
}

String CIMUrl::toString() const {
    return getSpec();
}

String CIMUrl::toMOF() const {
    return "UNIMPLEMENTED";
}

void CIMUrl::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "u").release();
}

void CIMUrl::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "u", *data_);
}

} // namespace OpenWBEM
