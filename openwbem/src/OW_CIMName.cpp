#include "OW_CIMName.hpp"

#include "OW_CIMElement.hpp"
#include "OW_CIMStream.hpp"

#include <ostream>

namespace OpenWBEM {

namespace {

bool isASCII(unsigned char c) {
    return c < 0x80;
}

unsigned char toLowerASCII(unsigned char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}

/// As strcmp(), in any case of letters. Names are nearly always ASCII, so that the Unicode-aware comparison is left to
/// those that reach a byte outside it without a difference. (The length decides nothing: letters outside ASCII can have
/// forms of different lengths.)
int compareNames(const String& x, const String& y) {
    const char* a = x.c_str();
    const char* b = y.c_str();
    if (a == b) {
        return 0;
    }
    for (;; ++a, ++b) {
        const unsigned char ca = static_cast<unsigned char>(*a);
        const unsigned char cb = static_cast<unsigned char>(*b);
        if (!isASCII(ca) || !isASCII(cb)) {
            return x.compareToIgnoreCase(y);
        }
        const int difference = toLowerASCII(ca) - toLowerASCII(cb);
        if (difference != 0 || ca == 0) {
            return difference;
        }
    }
}

} // namespace

CIMName::CIMName() = default;
CIMName::CIMName(const String& name) : m_name(name) {}
CIMName::CIMName(const char* name) : m_name(name) {}
CIMName::CIMName(const CIMName& other) : SerializableIFC(other), m_name(other.m_name) {}
CIMName::~CIMName() = default;

CIMName& CIMName::operator=(const CIMName& other) {
    m_name = other.m_name;
    return *this;
}

CIMName& CIMName::operator=(const String& name) {
    m_name = name;
    return *this;
}

CIMName& CIMName::operator=(const char* name) {
    m_name = String(name);
    return *this;
}

String CIMName::toString() const {
    return m_name;
}

bool CIMName::isValid() const {
    return !m_name.empty();
}

void CIMName::readObject(std::istream& istrm) {
    CIMStream::take(istrm, m_name);
}

void CIMName::writeObject(std::ostream& ostrm) const {
    CIMStream::put(ostrm, m_name);
}

bool operator==(const CIMName& x, const CIMName& y) {
    return compareNames(x.m_name, y.m_name) == 0;
}

bool operator<(const CIMName& x, const CIMName& y) {
    return compareNames(x.m_name, y.m_name) < 0;
}

std::ostream& operator<<(std::ostream& ostrm, const CIMName& name) {
    return ostrm << name.toString();
}

CIMElement::~CIMElement() = default;

String CIMElement::toString() const {
    return getName();
}

int CIMElement::compare(const CIMElement& other) {
    return compareNames(getName(), other.getName());
}

bool CIMElement::equals(const CIMElement& other) {
    return compare(other) == 0;
}

bool CIMElement::operator==(const CIMElement& other) {
    return equals(other);
}

bool CIMElement::operator!=(const CIMElement& other) {
    return !equals(other);
}

} // namespace OpenWBEM
