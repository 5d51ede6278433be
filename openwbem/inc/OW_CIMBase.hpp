#pragma once
#include "OW_config.h"

#include "OW_CommonFwd.hpp"
#include "OW_SafeBool.hpp"
#include "OW_SerializableIFC.hpp"
#include "OW_Types.hpp"

#include <iosfwd>

namespace OpenWBEM {

/// Base of the CIM model's value classes.
///
/// The classes derived from it are handles: an object holds one counted pointer to its data, copying counts, and
/// changing a shared object copies the data first, so that copies are independent. An object can be null; any use of a
/// null object other than copying, assigning, testing and setNull() throws an Exception "NULL COWReference
/// dereferenced", unless the member says otherwise. Different objects may be used by different threads even while they
/// share data; one object must not be changed while another thread uses it.
class OW_COMMON_API CIMBase : public SerializableIFC {
  public:
    /// Error codes of the CIMStreamException that readSig() throws.
    enum EErrorCodes { E_UNEXPECTED_SIGNATURE, E_UNKNOWN_VERSION };

    CIMBase() {}
    CIMBase(const CIMBase& other) : SerializableIFC(other) {}
    CIMBase& operator=(const CIMBase&) { return *this; }
    ~CIMBase() override;

    /// Makes this a null object.
    virtual void setNull() = 0;

    /// Text for people and logs.
    virtual String toString() const = 0;

    /// Text in the Managed Object Format.
    virtual String toMOF() const = 0;

    /// Reads a signature that writeSig() wrote. Throws CIMStreamException (E_UNEXPECTED_SIGNATURE) for anything else.
    static void readSig(std::istream& istrm, const char* sig);

    /// Reads a signature with a version and returns the version. Throws CIMStreamException (E_UNEXPECTED_SIGNATURE, or
    /// E_UNKNOWN_VERSION for a version above maxVersion).
    static UInt32 readSig(std::istream& istrm, const char* sig, UInt32 maxVersion);

    static void writeSig(std::ostream& ostrm, const char* sig);
    static void writeSig(std::ostream& ostrm, const char* sig, UInt32 version);
};

/// Prints toString().
OW_COMMON_API std::ostream& operator<<(std::ostream& ostrm, const CIMBase& object);

/// Comparable classes declare their own operators; without these a comparison would compile and compare the null tests.
bool operator==(const CIMBase& x, const CIMBase& y) = delete;
bool operator!=(const CIMBase& x, const CIMBase& y) = delete;

} // namespace OpenWBEM
