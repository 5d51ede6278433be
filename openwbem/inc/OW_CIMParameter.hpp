#pragma once
#include "OW_config.h"

#include "OW_CIMElement.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"

namespace OpenWBEM {

/// A parameter that a method declares: name, type and qualifiers.
class OW_COMMON_API CIMParameter : public CIMElement {
    struct Data;
    typedef SafeBool<CIMParameter>::type safe_bool;

  public:
    CIMParameter();
    explicit CIMParameter(CIMNULL_t);
    explicit CIMParameter(const CIMName& name);
    explicit CIMParameter(const char* name);
    CIMParameter(const CIMParameter& other);
    ~CIMParameter() override;
    CIMParameter& operator=(const CIMParameter& other);

    CIMQualifierArray getQualifiers() const;
    CIMParameter& setQualifiers(const CIMQualifierArray& qualifiers);
    /// A null qualifier if there is none of that name.
    CIMQualifier getQualifier(const CIMName& name) const;
    /// True if there is a qualifier of that name whose value is the boolean true.
    bool hasTrueQualifier(const CIMName& name) const;

    CIMParameter& setDataType(const CIMDataType& dataType);
    CIMDataType getType() const;
    /// The size of the type: 1 for a scalar, -1 for an array of any size.
    Int32 getDataSize() const;

    String getName() const override;
    void setName(const CIMName& name) override;

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMParameter>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// CIMParameter(name)
    String toString() const override;
    /// The declaration: qualifiers, type and name.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend OW_COMMON_API bool operator<(const CIMParameter& x, const CIMParameter& y);

  private:
    COWIntrusiveReference<Data> data_;
};

/// Orders by everything an object holds; null sorts first.
OW_COMMON_API bool operator<(const CIMParameter& x, const CIMParameter& y);

} // namespace OpenWBEM
