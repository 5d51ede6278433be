#pragma once
#include "OW_config.h"

#include "OW_Array.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_String.hpp"
#include "OW_WBEMFlags.hpp"

namespace OpenWBEM {

/// A class: name, superclass, qualifiers, properties and methods, each in order.
class OW_COMMON_API CIMClass : public CIMElement {
    struct Data;
    typedef SafeBool<CIMClass>::type safe_bool;

  public:
    /// "__Namespace", the class that once represented namespaces.
    OW_DEPRECATED static const char* const NAMESPACECLASS;

    CIMClass();
    explicit CIMClass(CIMNULL_t);
    explicit CIMClass(const CIMName& name);
    explicit CIMClass(const char* name);
    CIMClass(const CIMClass& other);
    ~CIMClass() override;
    CIMClass& operator=(const CIMClass& other);

    String getName() const override;
    void setName(const CIMName& name) override;
    String getSuperClass() const;
    CIMClass& setSuperClass(const CIMName& superClass);
    /// The class that first declared the first key; empty without a key.
    String getKeyClass() const;

    CIMPropertyArray getAllProperties() const;
    /// The properties that do not override another one.
    CIMPropertyArray getProperties() const;
    /// The properties that are keys.
    CIMPropertyArray getKeys() const;
    /// These four give a null object if there is none of that name (that the origin class declared first).
    CIMProperty getProperty(const CIMName& name) const;
    CIMProperty getProperty(const CIMName& name, const CIMName& originClass) const;
    CIMMethod getMethod(const CIMName& name) const;
    CIMMethod getMethod(const CIMName& name, const CIMName& originClass) const;
    CIMMethodArray getAllMethods() const;
    /// The methods that do not override another one.
    CIMMethodArray getMethods() const;

    CIMQualifierArray getQualifiers() const;
    /// A null qualifier if there is none of that name.
    CIMQualifier getQualifier(const CIMName& name) const;

    /// Whether the class has keys: set by hand or by adding a key property.
    bool isKeyed() const;
    CIMClass& setIsKeyed(bool keyed = true);
    /// Whether the class is an association: set by hand or by an Association qualifier.
    bool isAssociation() const;
    CIMClass& setIsAssociation(bool association);
    UInt32 numberOfProperties() const;
    UInt32 numberOfQualifiers() const;

    /// The add functions append, and throw CIMException ALREADY_EXISTS if there is one of that name. The set functions
    /// for one element replace or append it, and ignore a null one; those for arrays replace all.
    CIMClass& addProperty(const CIMProperty& property);
    CIMClass& setProperties(const CIMPropertyArray& properties);
    CIMClass& setProperty(const CIMProperty& property);
    /// The remove functions return whether there was one of that name.
    bool removeProperty(const CIMName& name);
    CIMClass& addQualifier(const CIMQualifier& qualifier);
    CIMClass& setQualifier(const CIMQualifier& qualifier);
    CIMClass& setQualifiers(const CIMQualifierArray& qualifiers);
    /// True if there is a qualifier of that name.
    bool hasQualifier(const CIMQualifier& qualifier) const;
    bool removeQualifier(const CIMQualifier& qualifier);
    bool removeQualifier(const CIMName& name);
    CIMClass& addMethod(const CIMMethod& method);
    CIMClass& setMethods(const CIMMethodArray& methods);
    CIMClass& setMethod(const CIMMethod& method);

    /// An instance with all properties of the class, their defaults and qualifiers, and the key list.
    CIMInstance newInstance() const;

    /// A copy without what the flags exclude (local only: without what is propagated) and with the listed properties
    /// only. An empty list is all properties; noProps leaves out all.
    CIMClass clone(WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                   WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
                   WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_INCLUDE_CLASS_ORIGIN,
                   const StringArray& propertyList = StringArray(), bool noProps = false) const;
    /// A copy with the listed properties only (an empty list is all of them), or without any.
    CIMClass filterProperties(const StringArray& propertyList, bool noProps = false) const;
    /// The names of the properties that an instance of this class carries in the answer to a request for the requested
    /// class; see CIMInstance::clone() for the flags and the lists.
    StringArray getCloneProps(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EDeepFlag deep,
                              const StringArray* propertyList, const CIMClass& requestedClass) const;
    StringArray getCloneProps(WBEMFlags::ELocalOnlyFlag localOnly, WBEMFlags::EDeepFlag deep,
                              const StringArray& propertyList, bool noProps, const CIMClass& requestedClass) const;

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMClass>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// Same as toMOF().
    String toString() const override;
    /// The declaration of the class.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend class CIMAccess;
    friend OW_COMMON_API bool operator<(const CIMClass& x, const CIMClass& y);
    friend bool operator>(const CIMClass& x, const CIMClass& y) { return y < x; }
    friend bool operator<=(const CIMClass& x, const CIMClass& y) { return !(y < x); }
    friend bool operator>=(const CIMClass& x, const CIMClass& y) { return !(x < y); }
    friend bool operator==(const CIMClass& x, const CIMClass& y) { return !(x < y) && !(y < x); }
    friend bool operator!=(const CIMClass& x, const CIMClass& y) { return !(x == y); }

  private:
    COWIntrusiveReference<Data> data_;
};

/// Compare everything an object holds. Null equals null and sorts first.
OW_COMMON_API bool operator<(const CIMClass& x, const CIMClass& y);

} // namespace OpenWBEM
