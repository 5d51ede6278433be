#pragma once
#include "OW_config.h"

#include "OW_CIMElement.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"

namespace OpenWBEM {

/// A qualifier on an element of a class or an instance: name, value, flavors, and the declaration it was made from.
class OW_COMMON_API CIMQualifier : public CIMElement {
    struct Data;
    typedef SafeBool<CIMQualifier>::type safe_bool;

  public:
    /// Names of the common qualifiers.
    static const char* const CIM_QUAL_ASSOCIATION;
    static const char* const CIM_QUAL_ABSTRACT;
    static const char* const CIM_QUAL_AGGREGATE;
    static const char* const CIM_QUAL_AGGREGATION;
    static const char* const CIM_QUAL_ALIAS;
    static const char* const CIM_QUAL_ARRAYTYPE;
    static const char* const CIM_QUAL_BITMAP;
    static const char* const CIM_QUAL_BITVALUES;
    static const char* const CIM_QUAL_COMPOSITION;
    static const char* const CIM_QUAL_COUNTER;
    static const char* const CIM_QUAL_DELETE;
    static const char* const CIM_QUAL_DEPRECATED;
    static const char* const CIM_QUAL_DESCRIPTION;
    static const char* const CIM_QUAL_DISPLAYNAME;
    static const char* const CIM_QUAL_DN;
    static const char* const CIM_QUAL_EMBEDDEDOBJECT;
    static const char* const CIM_QUAL_EXCEPTION;
    static const char* const CIM_QUAL_EXPENSIVE;
    static const char* const CIM_QUAL_EXPERIMENTAL;
    static const char* const CIM_QUAL_GAUGE;
    static const char* const CIM_QUAL_IFDELETED;
    static const char* const CIM_QUAL_IN;
    static const char* const CIM_QUAL_INDICATION;
    static const char* const CIM_QUAL_INVISIBLE;
    static const char* const CIM_QUAL_KEY;
    static const char* const CIM_QUAL_LARGE;
    static const char* const CIM_QUAL_MAPPINGSTRINGS;
    static const char* const CIM_QUAL_MAX;
    static const char* const CIM_QUAL_MAXLEN;
    static const char* const CIM_QUAL_MAXVALUE;
    static const char* const CIM_QUAL_MIN;
    static const char* const CIM_QUAL_MINLEN;
    static const char* const CIM_QUAL_MINVALUE;
    static const char* const CIM_QUAL_MODELCORRESPONDENCE;
    static const char* const CIM_QUAL_NONLOCAL;
    static const char* const CIM_QUAL_NONLOCALTYPE;
    static const char* const CIM_QUAL_NULLVALUE;
    static const char* const CIM_QUAL_OCTETSTRING;
    static const char* const CIM_QUAL_OUT;
    static const char* const CIM_QUAL_OVERRIDE;
    static const char* const CIM_QUAL_PROPAGATED;
    static const char* const CIM_QUAL_PROPERTYUSAGE;
    static const char* const CIM_QUAL_PROVIDER;
    static const char* const CIM_QUAL_READ;
    static const char* const CIM_QUAL_REQUIRED;
    static const char* const CIM_QUAL_REVISION;
    static const char* const CIM_QUAL_SCHEMA;
    static const char* const CIM_QUAL_SOURCE;
    static const char* const CIM_QUAL_SOURCETYPE;
    static const char* const CIM_QUAL_STATIC;
    static const char* const CIM_QUAL_SYNTAX;
    static const char* const CIM_QUAL_SYNTAXTYPE;
    static const char* const CIM_QUAL_TERMINAL;
    static const char* const CIM_QUAL_TRIGGERTYPE;
    static const char* const CIM_QUAL_UNITS;
    static const char* const CIM_QUAL_UNKNOWNVALUES;
    static const char* const CIM_QUAL_UNSUPPORTEDVALUES;
    static const char* const CIM_QUAL_VALUEMAP;
    static const char* const CIM_QUAL_VALUES;
    static const char* const CIM_QUAL_VERSION;
    static const char* const CIM_QUAL_WEAK;
    static const char* const CIM_QUAL_WRITE;

    CIMQualifier();
    explicit CIMQualifier(CIMNULL_t);
    /// No value, no flavors, an untyped declaration.
    CIMQualifier(const CIMName& name);
    CIMQualifier(const char* name);
    /// Takes name, default value and flavors from the declaration and keeps it.
    CIMQualifier(const CIMQualifierType& declaration);
    CIMQualifier(const CIMQualifier& other);
    ~CIMQualifier() override;
    CIMQualifier& operator=(const CIMQualifier& other);

    /// The value, which may be null; the default of the declaration is not consulted.
    CIMValue getValue() const;
    /// The value. Throws NULLValueException, with the name, if it is null.
    CIMValue getValueT() const;
    /// Stores the value unchanged, whatever the declared type.
    CIMQualifier& setValue(const CIMValue& value);
    bool hasValue() const;

    /// Compares the names only.
    bool equals(const CIMQualifier& other) const;
    bool isKeyQualifier() const;
    bool isAssociationQualifier() const;

    CIMQualifier& setDefaults(const CIMQualifierType& declaration);
    CIMQualifierType getDefaults() const;

    bool hasFlavor(const CIMFlavor& flavor) const;
    /// Adds a flavor in place of its opposite; an invalid or existing one is ignored.
    CIMQualifier& addFlavor(const CIMFlavor& flavor);
    CIMQualifier& removeFlavor(Int32 flavor);
    CIMFlavorArray getFlavor() const;

    /// Whether the qualifier is inherited from a superclass.
    CIMQualifier& setPropagated(bool propagated = true);
    bool getPropagated() const;
    CIMQualifier& setLanguage(const String& language);
    String getLanguage() const;

    /// Key(true).
    static CIMQualifier createKeyQualifier();

    String getName() const override;
    void setName(const CIMName& name) override;

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMQualifier>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// CIMQualifier(Name), with a language CIMQualifier(Name_language)
    String toString() const override;
    /// Name(value), Name({value,value}), or the name alone if there is no value; the name as in toString().
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend class CIMAccess;
    friend OW_COMMON_API bool operator<(const CIMQualifier& x, const CIMQualifier& y);

  private:
    String nameWithLanguage() const;

    COWIntrusiveReference<Data> data_;
};

/// Orders by everything an object holds; null sorts first.
OW_COMMON_API bool operator<(const CIMQualifier& x, const CIMQualifier& y);

} // namespace OpenWBEM
