// CIMName and CIMElement.

#include "OW_CIMName.hpp"

#include "OW_CIMAccess.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMStream.hpp"
#include "OW_CaseFolding.hpp"

#include <ostream>

namespace OpenWBEM {

namespace {

constexpr UInt32 kHashOfNothing = 2166136261u;

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

/// The FNV-1a hash of an identifier in lower case. 0 for any other name: the lower case of one that is not ASCII can
/// differ in length and in bytes.
UInt32 hashOf(const String& name) {
    UInt32 hash = kHashOfNothing;
    const char* const end = name.c_str() + name.length();
    for (const char* p = name.c_str(); p != end; ++p) {
        const char c = toLowerASCII(*p);
        if (!isWordCharacter(c)) {
            return 0;
        }
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    }
    return hash;
}

} // namespace

CIMName::CIMName() : hash_(kHashOfNothing) {}
CIMName::CIMName(const String& name) : name_(name), hash_(hashOf(name)) {}
CIMName::CIMName(const char* name) : CIMName(String(name)) {}

CIMName& CIMName::operator=(const String& name) {
    name_ = name;
    hash_ = hashOf(name);
    return *this;
}

CIMName& CIMName::operator=(const char* name) {
    return *this = String(name);
}

const String& CIMAccess::text(const CIMName& name) {
    return name.name_;
}

bool CIMAccess::isIdentifier(const CIMName& name) {
    return name.hash_ != 0;
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

bool operator<(const CIMName& x, const CIMName& y) {
    return x.name_.compareToIgnoreCase(y.name_) < 0;
}

std::ostream& operator<<(std::ostream& ostrm, const CIMName& name) {
    return ostrm << name.toString();
}

CIMElement::~CIMElement() = default;

String CIMElement::toString() const {
    return getName();
}

int CIMElement::compare(const CIMElement& other) {
    return getName().compareToIgnoreCase(other.getName());
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
