#pragma once
#include "OW_config.h"

#include "OW_CIMDataType.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_WBEMFlags.hpp"

namespace OpenWBEM {

/// A property of a class or an instance, or a key of an object path: name, type, value, qualifiers and origin.
class OW_COMMON_API CIMProperty : public CIMElement {
    struct Data;
    typedef SafeBool<CIMProperty>::type safe_bool;

  public:
    /// The property name "Name".
    static const char* const NAME_PROPERTY;

    /// Without a type: CIMNULL, value null.
    CIMProperty();
    explicit CIMProperty(CIMNULL_t);
    explicit CIMProperty(const CIMName& name);
    explicit CIMProperty(const char* name);
    /// Of the type of the value. A null value has no type and throws like any null object.
    CIMProperty(const CIMName& name, const CIMValue& value);
    /// Of that type, value null.
    CIMProperty(const CIMName& name, const CIMDataType& dataType);
    CIMProperty(const CIMProperty& other);
    ~CIMProperty() override;
    CIMProperty& operator=(const CIMProperty& other);

    /// Sets the value, cast to the type of the property if it has one (see CIMValueCast for its exceptions). Embedded
    /// objects are stored unchanged. Null clears the value. A property without a type stores the value and stays
    /// without a type.
    CIMProperty& setValue(const CIMValue& value);
    /// The value, which may be null.
    CIMValue getValue() const;
    /// The value. Throws NULLValueException, with the name, if it is null.
    CIMValue getValueT() const;

    /// Sets the type and casts the present value to it.
    CIMProperty& setDataType(const CIMDataType& dataType);
    CIMProperty& setDataType(const CIMDataType::Type& dataType);
    CIMDataType getDataType() const;

    /// A size kept beside the type; -1 unless it was set.
    Int32 getSize() const;
    CIMProperty& setDataSize(Int32 size);

    CIMQualifierArray getQualifiers() const;
    CIMProperty& setQualifiers(const CIMQualifierArray& qualifiers);
    CIMProperty& clearQualifiers();
    /// Removes all qualifiers but Key.
    CIMProperty& clearNonKeyQualifiers();
    /// A null qualifier if there is none of that name.
    CIMQualifier getQualifier(const CIMName& name) const;
    /// Throws NoSuchQualifierException, with the name, if there is none.
    CIMQualifier getQualifierT(const CIMName& name) const;
    /// Replaces the qualifier of that name, or appends it. A null qualifier is ignored.
    CIMProperty& setQualifier(const CIMQualifier& qualifier);
    /// Appends the qualifier. Throws CIMException ALREADY_EXISTS if there is one of that name.
    CIMProperty& addQualifier(const CIMQualifier& qualifier);
    /// False if there is none of that name.
    bool removeQualifier(const CIMName& name);
    /// True if there is a qualifier of that name whose value is the boolean true.
    bool hasTrueQualifier(const CIMName& name) const;

    /// True for a reference and for a property with Key(true).
    bool isKey() const;
    bool isReference() const;

    /// The class that first declared the property.
    String getOriginClass() const;
    CIMProperty& setOriginClass(const CIMName& originClass);
    String getOverridingProperty() const;
    CIMProperty& setOverridingProperty(const CIMName& property);
    /// Whether the property is inherited unchanged from a superclass.
    bool getPropagated() const;
    CIMProperty& setPropagated(bool propagated = true);

    CIMProperty clone() const;
    /// A copy without what the flags exclude.
    CIMProperty clone(WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                      WBEMFlags::EIncludeClassOriginFlag includeClassOrigin) const;
    /// A copy without the qualifiers if they are excluded; null if only local properties are asked for and this one is
    /// propagated.
    CIMProperty filter(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers) const;

    String getName() const override;
    void setName(const CIMName& name) override;

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMProperty>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// type:Name=value, or =null
    String toString() const override;
    /// The declaration: qualifiers, type, name, default value.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend class CIMAccess;
    friend OW_COMMON_API bool operator<(const CIMProperty& x, const CIMProperty& y);

  private:
    COWIntrusiveReference<Data> data_;
};

/// Orders by everything an object holds; null sorts first.
OW_COMMON_API bool operator<(const CIMProperty& x, const CIMProperty& y);

} // namespace OpenWBEM
