// CIMBase, and the numbers and texts of the binary form.

#include "OW_CIMStream.hpp"

#include <algorithm>
#include <istream>
#include <ostream>
#include <string>

namespace OpenWBEM {
namespace CIMStream {

namespace {

void readBytes(std::istream& istrm, char* bytes, size_t count) {
    if (!istrm.read(bytes, static_cast<std::streamsize>(count))) {
        OW_THROW(CIMStreamException, "The binary form of a CIM object ends too early");
    }
}

void requireWritten(const std::ostream& ostrm) {
    if (!ostrm) {
        OW_THROW(CIMStreamException, "The binary form of a CIM object cannot be written");
    }
}

} // namespace

void putNumber(std::ostream& ostrm, UInt64 number, int bytes) {
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
        ostrm.put(static_cast<char>(number >> shift));
    }
    requireWritten(ostrm);
}

UInt64 takeNumber(std::istream& istrm, int bytes) {
    char buffer[8];
    readBytes(istrm, buffer, static_cast<size_t>(bytes));
    UInt64 number = 0;
    for (int i = 0; i < bytes; ++i) {
        number = number << 8 | static_cast<unsigned char>(buffer[i]);
    }
    return number;
}

void put(std::ostream& ostrm, const String& text) {
    put(ostrm, static_cast<UInt32>(text.length()));
    ostrm.write(text.c_str(), static_cast<std::streamsize>(text.length()));
    requireWritten(ostrm);
}

void take(std::istream& istrm, String& text) {
    UInt32 length = 0;
    take(istrm, length);
    std::string bytes;
    while (bytes.size() < length) {
        char chunk[4096];
        const size_t count = std::min(sizeof(chunk), length - bytes.size());
        readBytes(istrm, chunk, count);
        bytes.append(chunk, count);
    }
    text = String(bytes.data(), bytes.size());
}

} // namespace CIMStream

OW_DEFINE_EXCEPTION(CIMStream)

CIMBase::~CIMBase() = default;

void CIMBase::writeSig(std::ostream& ostrm, const char* sig) {
    CIMStream::put(ostrm, String(sig));
}

void CIMBase::readSig(std::istream& istrm, const char* sig) {
    String found;
    CIMStream::take(istrm, found);
    if (!found.equals(sig)) {
        const String message = "Expected signature \"" + String(sig) + "\" in the binary form of a CIM object";
        OW_THROW_ERR(CIMStreamException, message.c_str(), E_UNEXPECTED_SIGNATURE);
    }
}

void CIMBase::writeSig(std::ostream& ostrm, const char* sig, UInt32 version) {
    writeSig(ostrm, sig);
    CIMStream::put(ostrm, version);
}

UInt32 CIMBase::readSig(std::istream& istrm, const char* sig, UInt32 maxVersion) {
    readSig(istrm, sig);
    UInt32 version = 0;
    CIMStream::take(istrm, version);
    if (version > maxVersion) {
        const String message = "Unknown version " + String(version) + " of signature \"" + String(sig) + "\"";
        OW_THROW_ERR(CIMStreamException, message.c_str(), E_UNKNOWN_VERSION);
    }
    return version;
}

std::ostream& operator<<(std::ostream& ostrm, const CIMBase& object) {
    return ostrm << object.toString();
}

} // namespace OpenWBEM
