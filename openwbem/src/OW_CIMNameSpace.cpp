#include "OW_CIMNameSpace.hpp"

#include "OW_CIMModel.hpp"
#include "OW_CIMStream.hpp"

namespace OpenWBEM {

struct CIMNameSpace::Data : public ModelData<CIMNameSpace::Data> {
    String nameSpace;
    CIMUrl url;

    template <class Self>
    static auto fields(Self& self) {
        return std::tie(self.nameSpace, self.url);
    }
};

CIMNameSpace::CIMNameSpace() : data_(sharedDefault<Data>()) {}
CIMNameSpace::CIMNameSpace(CIMNULL_t) {}
CIMNameSpace::CIMNameSpace(const CIMUrl& url, const String& nameSpace) : CIMNameSpace(nameSpace) {
    setHostUrl(url);
}
CIMNameSpace::CIMNameSpace(const String& nameSpace) : CIMNameSpace() {
    setNameSpace(nameSpace);
}
CIMNameSpace::CIMNameSpace(const char* nameSpace) : CIMNameSpace(String(nameSpace)) {}
CIMNameSpace::CIMNameSpace(const CIMNameSpace& other) = default;
CIMNameSpace::~CIMNameSpace() = default;
CIMNameSpace& CIMNameSpace::operator=(const CIMNameSpace& other) = default;

void CIMNameSpace::setNull() {
    data_ = nullptr;
}

String CIMNameSpace::getNameSpace() const {
    return data_->nameSpace;
}

String CIMNameSpace::getHost() const {
    return data_->url.getHost();
}

String CIMNameSpace::getProtocol() const {
    return data_->url.getProtocol();
}

String CIMNameSpace::getFileName() const {
    return data_->url.getFile();
}

Int32 CIMNameSpace::getPortNumber() const {
    return data_->url.getPort();
}

CIMUrl CIMNameSpace::getHostUrl() const {
    return data_->url;
}

bool CIMNameSpace::isLocal() const {
    return data_->url.isLocal();
}

CIMNameSpace& CIMNameSpace::setNameSpace(const String& nameSpace) {
    String name = nameSpace;
    name.trim();
    size_t start = 0;
    while (name.charAt(start) == '/') {
        ++start;
    }
    data_->nameSpace = start == 0 ? name : name.substring(start);
    return *this;
}

CIMNameSpace& CIMNameSpace::setHost(const String& host) {
    data_->url.setHost(host);
    return *this;
}

CIMNameSpace& CIMNameSpace::setProtocol(const String& protocol) {
    data_->url.setProtocol(protocol);
    return *this;
}

CIMNameSpace& CIMNameSpace::setHostUrl(const CIMUrl& url) {
    data_->url = url;
    return *this;
}

bool operator==(const CIMNameSpace& x, const CIMNameSpace& y) {
    if (!x || !y) {
        return !x && !y;
    }
    return x.getNameSpace().equalsIgnoreCase(y.getNameSpace()) && x.getHostUrl() == y.getHostUrl();
}

String CIMNameSpace::toString() const {
    return getNameSpace();
}

String CIMNameSpace::toMOF() const {
    return "UMIMPLEMENTED"; // the misspelling is deliberate: others compare with it
}

void CIMNameSpace::readObject(std::istream& istrm) {
    data_ = CIMStream::readData<Data>(istrm, "N").release();
}

void CIMNameSpace::writeObject(std::ostream& ostrm) const {
    CIMStream::writeData(ostrm, "N", *data_);
}

} // namespace OpenWBEM
