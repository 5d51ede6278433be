#pragma once
#include "OW_config.h"

#include "OW_CIMDataType.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"

namespace OpenWBEM {

/// The declaration of a qualifier: type, default value, where it may be used and its flavors. A new one may be
/// overridden and is passed on to subclasses.
class OW_COMMON_API CIMQualifierType : public CIMElement {
    struct Data;
    typedef SafeBool<CIMQualifierType>::type safe_bool;

  public:
    CIMQualifierType();
    explicit CIMQualifierType(CIMNULL_t);
    CIMQualifierType(const CIMName& name);
    CIMQualifierType(const char* name);
    CIMQualifierType(const CIMQualifierType& other);
    ~CIMQualifierType() override;
    CIMQualifierType& operator=(const CIMQualifierType& other);

    /// Sets the type and casts an existing default value to it (see CIMValueCast for its exceptions).
    CIMQualifierType& setDataType(const CIMDataType& dataType);
    CIMQualifierType& setDataType(const CIMDataType::Type& dataType);
    CIMDataType getDataType() const;
    /// The size of the data type: 1 for a scalar, -1 for an array of any size.
    Int32 getDataSize() const;

    /// Sets the value cast to the data type. Without a data type the value is lost: set the type first.
    CIMQualifierType& setDefaultValue(const CIMValue& value);
    /// May be null.
    CIMValue getDefaultValue() const;
    bool hasDefaultValue() const;
    /// True if the data type is an array.
    bool isDefaultValueArray() const;

    /// Adds a scope unless it is there already. ANY replaces all others.
    CIMQualifierType& addScope(const CIMScope& scope);
    /// The scopes by their numbers. The reference lives as long as this object is not changed.
    const CIMScopeArray& getScope() const;
    /// True if the scope was added, or ANY was.
    bool hasScope(const CIMScope& scope) const;

    /// Adds a flavor in place of its opposite; an invalid or existing one is ignored.
    CIMQualifierType& addFlavor(const CIMFlavor& flavor);
    CIMQualifierType& removeFlavor(const Int32 flavor);
    bool hasFlavor(const CIMFlavor& flavor) const;
    CIMFlavorArray getFlavors() const;

    String getName() const override;
    void setName(const CIMName& name) override;

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMQualifierType>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// Same as toMOF().
    String toString() const override;
    /// The declaration; the two default flavors are left out.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend OW_COMMON_API bool operator<(const CIMQualifierType& x, const CIMQualifierType& y);

  private:
    COWIntrusiveReference<Data> data_;
};

/// Orders by everything an object holds; null sorts first.
OW_COMMON_API bool operator<(const CIMQualifierType& x, const CIMQualifierType& y);

} // namespace OpenWBEM
