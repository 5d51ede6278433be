// CIMFlavor and CIMScope.

#include "OW_CIMFlavor.hpp"

#include "OW_CIMScope.hpp"
#include "OW_CIMStream.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

CIMFlavor::CIMFlavor() : flavor_(INVALID) {}
CIMFlavor::CIMFlavor(CIMNULL_t) : flavor_(INVALID) {}
CIMFlavor::CIMFlavor(Flavor flavor) : flavor_(validFlavor(flavor) ? Int32(flavor) : Int32(INVALID)) {}
CIMFlavor::CIMFlavor(const CIMFlavor& other) = default;
CIMFlavor::~CIMFlavor() = default;
CIMFlavor& CIMFlavor::operator=(const CIMFlavor& other) = default;

Int32 CIMFlavor::getFlavor() const {
    return flavor_;
}

bool CIMFlavor::isValid() {
    return validFlavor(flavor_);
}

bool CIMFlavor::validFlavor(Int32 flavor) {
    return flavor > INVALID && flavor < LASTVALUE;
}

bool CIMFlavor::equals(const CIMFlavor& other) {
    return flavor_ == other.flavor_;
}

bool CIMFlavor::operator==(const CIMFlavor& other) {
    return equals(other);
}

bool CIMFlavor::operator!=(const CIMFlavor& other) {
    return !equals(other);
}

bool operator<(const CIMFlavor& x, const CIMFlavor& y) {
    return x.flavor_ < y.flavor_;
}

void CIMFlavor::setNull() {
    flavor_ = INVALID;
}

String CIMFlavor::toString() const {
    return "FLAVOR(" + toMOF() + ")";
}

String CIMFlavor::toMOF() const {
    switch (flavor_) {
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
    flavor_ = validFlavor(flavor) ? flavor : Int32(INVALID);
}

void CIMFlavor::writeObject(std::ostream& ostrm) const {
    CIMBase::writeSig(ostrm, "F");
    CIMStream::put(ostrm, flavor_);
}

CIMScope::CIMScope(CIMNULL_t) : scope_(BAD) {}
CIMScope::CIMScope(Scope scope) : scope_(scope) {}
CIMScope::CIMScope(const CIMScope& other) = default;
CIMScope::~CIMScope() = default;
CIMScope& CIMScope::operator=(const CIMScope& other) = default;

CIMScope::Scope CIMScope::getScope() const {
    return scope_;
}

bool CIMScope::equals(const CIMScope& other) const {
    return scope_ == other.scope_;
}

void CIMScope::setNull() {
    scope_ = BAD;
}

String CIMScope::toString() const {
    return toMOF();
}

String CIMScope::toMOF() const {
    static const char* const names[MAXSCOPE] = {"bad",        "schema",    "class",     "association",
                                                "indication", "property",  "reference", "method",
                                                "parameter",  "qualifier", "bad",       "any"};
    return names[scope_ < MAXSCOPE ? scope_ : BAD];
}

void CIMScope::readObject(std::istream& istrm) {
    CIMBase::readSig(istrm, "S");
    UInt32 scope = BAD;
    CIMStream::take(istrm, scope);
    scope_ = scope < MAXSCOPE ? static_cast<Scope>(scope) : BAD;
}

void CIMScope::writeObject(std::ostream& ostrm) const {
    CIMBase::writeSig(ostrm, "S");
    CIMStream::put(ostrm, static_cast<UInt32>(scope_));
}

} // namespace OpenWBEM
