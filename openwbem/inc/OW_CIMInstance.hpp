#pragma once
#include "OW_config.h"

#include "OW_Array.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_String.hpp"
#include "OW_WBEMFlags.hpp"

namespace OpenWBEM {

/// An instance of a class: class name, properties in order, qualifiers, language, and the key list.
///
/// The key list, from which an object path is made, is kept beside the properties. It is rebuilt from the key
/// properties by setProperties() and syncWithClass(), and by setting, updating or removing a key property; setKeys()
/// replaces it. Appending a property by name and value does not change it, nor do cloning and filtering: the path of an
/// instance survives the loss of its key properties.
class OW_COMMON_API CIMInstance : public CIMElement {
    struct Data;
    typedef SafeBool<CIMInstance>::type safe_bool;

  public:
    /// Error code of the NoSuchPropertyException that getPropertyT() throws.
    enum EErrorCodes { E_INSTANCE_HAS_NO_SUCH_PROPERTY };

    CIMInstance();
    explicit CIMInstance(CIMNULL_t);
    explicit CIMInstance(const CIMName& className);
    explicit CIMInstance(const char* className);
    CIMInstance(const CIMInstance& other);
    ~CIMInstance() override;
    CIMInstance& operator=(const CIMInstance& other);

    /// getName() and setName() are the same.
    String getClassName() const;
    CIMInstance& setClassName(const CIMName& className);

    /// All properties, or those of one type of data (a CIMDataType::Type).
    CIMPropertyArray getProperties(Int32 valueDataType = CIMDataType::INVALID) const;
    CIMInstance& setProperties(const CIMPropertyArray& properties);

    /// A null property if there is none of that name.
    CIMProperty getProperty(const CIMName& name) const;
    /// Like the above, for a property that originClass declared first.
    CIMProperty getProperty(const CIMName& name, const CIMName& originClass) const;
    /// Throws NoSuchPropertyException, with the name, if there is none.
    CIMProperty getPropertyT(const CIMName& name) const;
    /// A null value if there is no such property, or its value is null.
    CIMValue getPropertyValue(const CIMName& name) const;
    bool propertyHasValue(const CIMName& name) const;

    /// Sets the value of the property, cast to the type it has (see CIMValueCast for its exceptions), or appends one of
    /// the type of the value; for a null value that is a property without a type.
    CIMInstance& setProperty(const CIMName& name, const CIMValue& value);
    /// Replaces the property of that name, or appends it. A null property is ignored.
    CIMInstance& setProperty(const CIMProperty& property);

    /// Sets the value of an existing property; a missing one is ignored. A null value throws like any null object.
    CIMInstance& updatePropertyValue(const CIMName& name, const CIMValue& value);
    /// Like the above, with the name and the value of the property; here the value may be null.
    CIMInstance& updatePropertyValue(const CIMProperty& property);
    CIMInstance& updatePropertyValues(const CIMPropertyArray& properties);
    CIMInstance& removeProperty(const CIMName& name);

    /// The key list.
    CIMPropertyArray getKeyValuePairs() const;
    CIMInstance& setKeys(const CIMPropertyArray& keys);

    /// Qualifiers of the instance itself. getQualifier() gives a null one if there is none of that name;
    /// setQualifier() replaces or appends and ignores a null one.
    CIMQualifierArray getQualifiers() const;
    CIMQualifier getQualifier(const CIMName& name) const;
    CIMInstance& removeQualifier(const CIMName& name);
    CIMInstance& setQualifiers(const CIMQualifierArray& qualifiers);
    CIMInstance& setQualifier(const CIMQualifier& qualifier);

    String getLanguage() const;
    CIMInstance& setLanguage(const String& language);

    /// A copy without what the flags exclude (local only: without propagated properties) and with the listed properties
    /// only, in the order of this instance. No list (null) is all properties, an empty list none.
    CIMInstance clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                      WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList) const;
    /// Like the above, but an empty list means all properties; noProps leaves out all.
    CIMInstance clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                      WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                      const StringArray& propertyList = StringArray(), bool noProps = false) const;
    /// The answer to a request for the requested class: a copy fitted to cimClass, this instance's own class, filtered
    /// as clone() does; local only keeps what the requested class itself declares, deep what its subclasses add.
    CIMInstance clone(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EDeepFlag deep,
                      WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                      WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                      const CIMClass& requestedClass, const CIMClass& cimClass) const;
    /// A copy with the listed properties only, or with all if ignorePropertyList.
    CIMInstance filterProperties(const StringArray& propertyList, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                 WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                 bool ignorePropertyList = false) const;

    /// Fits the instance to the class. Properties that the class lacks are removed; each other one becomes the class's
    /// property with the instance's value cast to its type, or with the class's default if that value is null; the
    /// class's remaining properties are appended with their defaults. Throws like CIMValueCast for a value that does
    /// not fit.
    CIMInstance& syncWithClass(const CIMClass& cimClass,
                               WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS);

    /// What a modification makes of the previous instance: this one fitted to the class, with the previous values of
    /// the properties that are not in the list (null: all are), and the previous qualifiers if they are excluded.
    CIMInstance createModifiedInstance(const CIMInstance& previousInstance,
                                       WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                       const StringArray* propertyList, const CIMClass& cimClass) const;

    /// True if both have properties of the same names, types and values, in any order.
    bool propertiesAreEqualTo(const CIMInstance& other) const;

    String getName() const override;
    void setName(const CIMName& className) override;

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMInstance>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// "instance of Class {", a line "Name = value;" for each property without Invisible(true), "}".
    String toString() const override;
    /// The same properties as MOF, with their qualifiers where they have values.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend class CIMAccess;
    friend OW_COMMON_API bool operator<(const CIMInstance& x, const CIMInstance& y);

  private:
    COWIntrusiveReference<Data> data_;
};

/// Orders by everything an object holds; null sorts first.
OW_COMMON_API bool operator<(const CIMInstance& x, const CIMInstance& y);

} // namespace OpenWBEM
