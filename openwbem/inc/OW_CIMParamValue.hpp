#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

/// A parameter of a method call: name and value, which may be null.
class OW_COMMON_API CIMParamValue : public CIMBase {
    struct Data;
    typedef SafeBool<CIMParamValue>::type safe_bool;

  public:
    CIMParamValue();
    explicit CIMParamValue(CIMNULL_t);
    CIMParamValue(const CIMName& name, const CIMValue& value);
    /// With a null value.
    explicit CIMParamValue(const CIMName& name);
    CIMParamValue(const CIMParamValue& other);
    ~CIMParamValue() override;
    CIMParamValue& operator=(const CIMParamValue& other);

    String getName() const;
    CIMParamValue& setName(const CIMName& name);
    CIMValue getValue() const;
    /// Stores the value unchanged.
    CIMParamValue& setValue(const CIMValue& value);

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMParamValue>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// CIMParamValue(name): value
    String toString() const override;
    /// Same as toString(): MOF has no calls.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend OW_COMMON_API bool operator<(const CIMParamValue& x, const CIMParamValue& y);

  private:
    COWIntrusiveReference<Data> data_;
};

/// Orders by name, then value; null sorts first.
OW_COMMON_API bool operator<(const CIMParamValue& x, const CIMParamValue& y);

} // namespace OpenWBEM
