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

/// The FNV-1a hash of an ASCII name in lower case; 0 for any other name, whose lower case can differ in length and in
/// bytes. Names with different hashes differ, unless one hash is 0.
UInt32 hashOf(const String& name) {
    UInt32 hash = 2166136261u;
    for (const char* p = name.c_str(); *p; ++p) {
        const unsigned char c = static_cast<unsigned char>(*p);
        if (!isASCII(c)) {
            return 0;
        }
        hash = (hash ^ toLowerASCII(c)) * 16777619u;
    }
    return hash;
}

/// Like UTF8Utils::compareToIgnoreCase(), but calls the Unicode-aware comparison only when a byte outside ASCII comes
/// before any difference.
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
        if (toLowerASCII(ca) != toLowerASCII(cb)) {
            return ca - cb; // deliberately unfolded, as everywhere: "A" sorts before "_", "a" after it
        }
        if (ca == 0) {
            return 0;
        }
    }
}

} // namespace

CIMName::CIMName() : CIMName(String()) {}
CIMName::CIMName(const String& name) : name_(name), hash_(hashOf(name)) {}
CIMName::CIMName(const char* name) : CIMName(String(name)) {}
CIMName::CIMName(const CIMName& other) = default;
CIMName::~CIMName() = default;
CIMName& CIMName::operator=(const CIMName& other) = default;

CIMName& CIMName::operator=(const String& name) {
    name_ = name;
    hash_ = hashOf(name);
    return *this;
}

CIMName& CIMName::operator=(const char* name) {
    return *this = String(name);
}

String CIMName::toString() const {
    return name_;
}

bool CIMName::isValid() const {
    return !name_.empty();
}

void CIMName::readObject(std::istream& istrm) {
    String name;
    CIMStream::take(istrm, name);
    *this = name;
}

void CIMName::writeObject(std::ostream& ostrm) const {
    CIMStream::put(ostrm, name_);
}

bool operator==(const CIMName& x, const CIMName& y) {
    const bool differ = x.hash_ != y.hash_ && x.hash_ != 0 && y.hash_ != 0;
    return !differ && compareNames(x.name_, y.name_) == 0;
}

bool operator<(const CIMName& x, const CIMName& y) {
    return compareNames(x.name_, y.name_) < 0;
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
