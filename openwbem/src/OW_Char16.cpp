// Char16 and Bool.

#include "OW_Char16.hpp"

#include "OW_CIMStream.hpp"
#include "OW_String.hpp"
#include "OW_UTF8Utils.hpp"
#include <ostream>

namespace OpenWBEM {

Char16::Char16(const String& x) : value_(x.empty() ? UInt16(0) : UTF8Utils::UTF8toUCS2(x.c_str())) {}

String Char16::toString() const {
    return UTF8Utils::UCS2toUTF8(value_);
}

String Char16::toUTF8() const {
    return toString();
}

void Char16::writeObject(std::ostream& ostrm) const {
    CIMStream::put(ostrm, value_);
}

void Char16::readObject(std::istream& istrm) {
    CIMStream::take(istrm, value_);
}

std::ostream& operator<<(std::ostream& ostrm, const Char16& arg) {
    if (arg.getValue() != 0 && arg.getValue() < 0x80) {
        return ostrm << static_cast<char>(arg.getValue());
    }
    String text;
    text.format("\\x%04X", static_cast<unsigned>(arg.getValue()));
    return ostrm << text;
}

String Bool::toString() const {
    return String(value_ ? "true" : "false");
}

void Bool::writeObject(std::ostream& ostrm) const {
    CIMStream::put(ostrm, value_);
}

void Bool::readObject(std::istream& istrm) {
    CIMStream::take(istrm, value_);
}

std::ostream& operator<<(std::ostream& ostrm, const Bool& arg) {
    return ostrm << arg.toString();
}

} // namespace OpenWBEM
