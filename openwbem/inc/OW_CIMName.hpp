#pragma once
#include "OW_config.h"

#include "OW_SafeBool.hpp"
#include "OW_SerializableIFC.hpp"
#include "OW_String.hpp"

#include <iosfwd>

namespace OpenWBEM {

/// The name of a class, property, key, method, parameter or qualifier: keeps its spelling and compares ignoring case. A
/// name is valid, and true in a condition, unless it is empty.
class OW_COMMON_API CIMName : public SerializableIFC {
    typedef SafeBool<CIMName>::type safe_bool;

  public:
    CIMName();
    CIMName(const String& name);
    /// A null pointer gives the empty name. The text is copied.
    CIMName(const char* name);
    CIMName(const CIMName& other) = default;
    ~CIMName() override = default;

    CIMName& operator=(const CIMName& other) = default;
    CIMName& operator=(const String& name);
    CIMName& operator=(const char* name);

    /// The spelling.
    String toString() const;

    /// False for the empty name.
    bool isValid() const;
    operator safe_bool() const { return SafeBool<CIMName>::of(isValid()); }
    bool operator!() const { return !isValid(); }

    /// Binary form. readObject() throws CIMStreamException for malformed bytes.
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend class CIMAccess;
    friend bool operator==(const CIMName& x, const CIMName& y) {
        const bool differ = x.hash_ != y.hash_ && x.hash_ != 0 && y.hash_ != 0;
        return !differ && x.name_.equalsIgnoreCase(y.name_);
    }
    friend OW_COMMON_API bool operator<(const CIMName& x, const CIMName& y);
    friend bool operator!=(const CIMName& x, const CIMName& y) { return !(x == y); }
    friend bool operator>(const CIMName& x, const CIMName& y) { return y < x; }
    friend bool operator<=(const CIMName& x, const CIMName& y) { return !(y < x); }
    friend bool operator>=(const CIMName& x, const CIMName& y) { return !(x < y); }

  private:
    String name_;
    /// Of the name in lower-case letters; 0 for a name that is no identifier. Names with different hashes differ,
    /// unless one hash is 0.
    UInt32 hash_;
};

/// Comparisons ignore the case of all letters, not only of ASCII ones. Different names sort by their spelling, see
/// UTF8Utils::compareToIgnoreCase().
OW_COMMON_API bool operator<(const CIMName& x, const CIMName& y);

/// Prints the spelling.
OW_COMMON_API std::ostream& operator<<(std::ostream& ostrm, const CIMName& name);

} // namespace OpenWBEM
