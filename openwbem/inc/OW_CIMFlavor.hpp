#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_Types.hpp"

namespace OpenWBEM {

/// How a qualifier is propagated, overridden or translated. True in a condition if it is one of the named flavors.
class OW_COMMON_API CIMFlavor : public CIMBase {
    typedef SafeBool<CIMFlavor>::type safe_bool;

  public:
    enum Flavor {
        INVALID = 0,
        ENABLEOVERRIDE = 1,
        DISABLEOVERRIDE = 2,
        RESTRICTED = 3,
        TOSUBCLASS = 4,
        TRANSLATE = 5,
        LASTVALUE = 6
    };

    CIMFlavor();
    explicit CIMFlavor(CIMNULL_t);
    /// A value that is not a flavor gives INVALID.
    CIMFlavor(Flavor flavor);
    CIMFlavor(const CIMFlavor& other);
    ~CIMFlavor() override;
    CIMFlavor& operator=(const CIMFlavor& other);

    Int32 getFlavor() const;
    bool isValid();
    /// True for the values from ENABLEOVERRIDE to TRANSLATE.
    static bool validFlavor(Int32 flavor);

    bool equals(const CIMFlavor& other);
    bool operator==(const CIMFlavor& other);
    bool operator!=(const CIMFlavor& other);
    friend OW_COMMON_API bool operator<(const CIMFlavor& x, const CIMFlavor& y);

    /// Null is INVALID.
    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMFlavor>::of(validFlavor(flavor_)); }
    bool operator!() const { return !validFlavor(flavor_); }

    /// FLAVOR(...) with the text of toMOF().
    String toString() const override;
    /// EnableOverride, DisableOverride, Restricted, ToSubclass or Translatable.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

  private:
    Int32 flavor_;
};

OW_COMMON_API bool operator<(const CIMFlavor& x, const CIMFlavor& y);

} // namespace OpenWBEM
