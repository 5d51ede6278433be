#include "OW_CIMFlavor.hpp"

#include "OW_CIMScope.hpp"
#include "OW_CIMStream.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

CIMFlavor::CIMFlavor() : m_flavor(INVALID) {}
CIMFlavor::CIMFlavor(CIMNULL_t) : m_flavor(INVALID) {}
CIMFlavor::CIMFlavor(Flavor flavor) : m_flavor(validFlavor(flavor) ? Int32(flavor) : Int32(INVALID)) {}
CIMFlavor::CIMFlavor(const CIMFlavor& other) = default;
CIMFlavor::~CIMFlavor() = default;
CIMFlavor& CIMFlavor::operator=(const CIMFlavor& other) = default;

Int32 CIMFlavor::getFlavor() const {
    return m_flavor;
}

bool CIMFlavor::isValid() {
    return validFlavor(m_flavor);
}

bool CIMFlavor::validFlavor(Int32 flavor) {
    return flavor > INVALID && flavor < LASTVALUE;
}

bool CIMFlavor::equals(const CIMFlavor& other) {
    return m_flavor == other.m_flavor;
}

bool CIMFlavor::operator==(const CIMFlavor& other) {
    return equals(other);
}

bool CIMFlavor::operator!=(const CIMFlavor& other) {
    return !equals(other);
}

bool operator<(const CIMFlavor& x, const CIMFlavor& y) {
    return x.m_flavor < y.m_flavor;
}

void CIMFlavor::setNull() {
    m_flavor = INVALID;
}

String CIMFlavor::toString() const {
    return "FLAVOR(" + toMOF() + ")";
}

String CIMFlavor::toMOF() const {
    switch (m_flavor) {
    case ENABLEOVERRIDE:
        return "EnableOverride";
    case DISABLEOVERRIDE:
        return "DisableOverride";
    case RESTRICTED:
        return "Restricted";
    case TOSUBCLASS:
        return "ToSubclass";
    case TRANSLATE:
        return "Translatable";
    default:
        return "INVALID";
    }
}

void CIMFlavor::readObject(std::istream& istrm) {
    CIMBase::readSig(istrm, "F");
    Int32 flavor = INVALID;
    CIMStream::take(istrm, flavor);
    m_flavor = validFlavor(flavor) ? flavor : Int32(INVALID);
}

void CIMFlavor::writeObject(std::ostream& ostrm) const {
    CIMBase::writeSig(ostrm, "F");
    CIMStream::put(ostrm, m_flavor);
}

CIMScope::CIMScope(CIMNULL_t) : m_scope(BAD) {}
CIMScope::CIMScope(Scope scope) : m_scope(scope) {}
CIMScope::CIMScope(const CIMScope& other) = default;
CIMScope::~CIMScope() = default;
CIMScope& CIMScope::operator=(const CIMScope& other) = default;

CIMScope::Scope CIMScope::getScope() const {
    return m_scope;
}

bool CIMScope::equals(const CIMScope& other) const {
    return m_scope == other.m_scope;
}

void CIMScope::setNull() {
    m_scope = BAD;
}

String CIMScope::toString() const {
    return toMOF();
}

String CIMScope::toMOF() const {
    static const char* const names[MAXSCOPE] = {"bad",        "schema",    "class",     "association",
                                                "indication", "property",  "reference", "method",
                                                "parameter",  "qualifier", "bad",       "any"};
    return names[m_scope < MAXSCOPE ? m_scope : BAD];
}

void CIMScope::readObject(std::istream& istrm) {
    CIMBase::readSig(istrm, "S");
    UInt32 scope = BAD;
    CIMStream::take(istrm, scope);
    m_scope = scope < MAXSCOPE ? static_cast<Scope>(scope) : BAD;
}

void CIMScope::writeObject(std::ostream& ostrm) const {
    CIMBase::writeSig(ostrm, "S");
    CIMStream::put(ostrm, static_cast<UInt32>(m_scope));
}

} // namespace OpenWBEM
