#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"

namespace OpenWBEM {

/// What kind of element a qualifier may be put on. True in a condition unless it is BAD.
class OW_COMMON_API CIMScope : public CIMBase {
    typedef SafeBool<CIMScope>::type safe_bool;

  public:
    enum Scope {
        BAD = 0,
        SCHEMA = 1,
        CLASS = 2,
        ASSOCIATION = 3,
        INDICATION = 4,
        PROPERTY = 5,
        REFERENCE = 6,
        METHOD = 7,
        PARAMETER = 8,
        QUALIFIER = 9,
        ANY = 11,
        MAXSCOPE = 12
    };

    explicit CIMScope(CIMNULL_t);
    CIMScope(Scope scope = BAD);
    CIMScope(const CIMScope& other);
    ~CIMScope() override;
    CIMScope& operator=(const CIMScope& other);

    Scope getScope() const;
    bool equals(const CIMScope& other) const;

    /// Null is BAD.
    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMScope>::of(scope_ != BAD); }
    bool operator!() const { return scope_ == BAD; }

    /// The name of the scope in lower case; same as toMOF().
    String toString() const override;
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;
    friend bool operator==(const CIMScope& x, const CIMScope& y) { return x.equals(y); }
    friend bool operator!=(const CIMScope& x, const CIMScope& y) { return !x.equals(y); }
    friend bool operator<(const CIMScope& x, const CIMScope& y) { return x.getScope() < y.getScope(); }

  private:
    Scope scope_;
};

} // namespace OpenWBEM
