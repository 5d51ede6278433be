#pragma once
#include "OW_config.h"

#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMBase.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_Types.hpp"

namespace OpenWBEM {

class CIMValueAccess; // inside the library

/// A value of one of the CIM types, or an array of them, or null. True in a condition unless it is null: false and ""
/// are values too.
///
/// A value is read as exactly the type it has. Reading it as another one throws ValueCastException, with one exception:
/// a scalar sint64 is read as any numeric type and loses what does not fit. CIMValueCast converts.
class OW_COMMON_API CIMValue : public CIMBase {
    class CIMValueImpl;
    typedef SafeBool<CIMValue>::type safe_bool;

  public:
    explicit CIMValue(CIMNULL_t);
    CIMValue(const CIMValue& other);
    ~CIMValue() override;

    /// Each constructor makes a value of the type that belongs to its argument; a null pointer is an empty string.
    explicit CIMValue(Bool x);
    explicit CIMValue(bool x);
    explicit CIMValue(UInt8 x);
    explicit CIMValue(Int8 x);
    explicit CIMValue(UInt16 x);
    explicit CIMValue(Int16 x);
    explicit CIMValue(UInt32 x);
    explicit CIMValue(Int32 x);
    explicit CIMValue(UInt64 x);
    explicit CIMValue(Int64 x);
    explicit CIMValue(Real32 x);
    explicit CIMValue(Real64 x);
    explicit CIMValue(const Char16& x);
    explicit CIMValue(const String& x);
    explicit CIMValue(const char* x);
    explicit CIMValue(const CIMDateTime& x);
    explicit CIMValue(const CIMObjectPath& x);
    explicit CIMValue(const CIMClass& x);
    explicit CIMValue(const CIMInstance& x);
    explicit CIMValue(const BoolArray& x);
    explicit CIMValue(const Char16Array& x);
    explicit CIMValue(const UInt8Array& x);
    explicit CIMValue(const Int8Array& x);
    explicit CIMValue(const UInt16Array& x);
    explicit CIMValue(const Int16Array& x);
    explicit CIMValue(const UInt32Array& x);
    explicit CIMValue(const Int32Array& x);
    explicit CIMValue(const UInt64Array& x);
    explicit CIMValue(const Int64Array& x);
    explicit CIMValue(const Real64Array& x);
    explicit CIMValue(const Real32Array& x);
    explicit CIMValue(const StringArray& x);
    explicit CIMValue(const CIMDateTimeArray& x);
    explicit CIMValue(const CIMObjectPathArray& x);
    explicit CIMValue(const CIMClassArray& x);
    explicit CIMValue(const CIMInstanceArray& x);

    /// Each get() copies the value to its argument; throws ValueCastException if it is of another type.
    void get(Bool& x) const;
    void get(Char16& x) const;
    void get(UInt8& x) const;
    void get(Int8& x) const;
    void get(UInt16& x) const;
    void get(Int16& x) const;
    void get(UInt32& x) const;
    void get(Int32& x) const;
    void get(UInt64& x) const;
    void get(Int64& x) const;
    void get(Real32& x) const;
    void get(Real64& x) const;
    void get(String& x) const;
    void get(CIMDateTime& x) const;
    void get(CIMObjectPath& x) const;
    void get(CIMClass& x) const;
    void get(CIMInstance& x) const;
    void get(BoolArray& x) const;
    void get(Char16Array& x) const;
    void get(UInt8Array& x) const;
    void get(Int8Array& x) const;
    void get(UInt16Array& x) const;
    void get(Int16Array& x) const;
    void get(UInt32Array& x) const;
    void get(Int32Array& x) const;
    void get(UInt64Array& x) const;
    void get(Int64Array& x) const;
    void get(Real32Array& x) const;
    void get(Real64Array& x) const;
    void get(StringArray& x) const;
    void get(CIMDateTimeArray& x) const;
    void get(CIMObjectPathArray& x) const;
    void get(CIMClassArray& x) const;
    void get(CIMInstanceArray& x) const;

    /// The value as get() gives it. No conversion, the same exceptions.
    Bool toBool() const;
    Char16 toChar16() const;
    UInt8 toUInt8() const;
    Int8 toInt8() const;
    UInt16 toUInt16() const;
    Int16 toInt16() const;
    UInt32 toUInt32() const;
    Int32 toInt32() const;
    UInt64 toUInt64() const;
    Int64 toInt64() const;
    Real32 toReal32() const;
    Real64 toReal64() const;
    CIMDateTime toCIMDateTime() const;
    CIMObjectPath toCIMObjectPath() const;
    CIMClass toCIMClass() const;
    CIMInstance toCIMInstance() const;
    BoolArray toBoolArray() const;
    Char16Array toChar16Array() const;
    UInt8Array toUInt8Array() const;
    Int8Array toInt8Array() const;
    UInt16Array toUInt16Array() const;
    Int16Array toInt16Array() const;
    UInt32Array toUInt32Array() const;
    Int32Array toInt32Array() const;
    UInt64Array toUInt64Array() const;
    Int64Array toInt64Array() const;
    Real32Array toReal32Array() const;
    Real64Array toReal64Array() const;
    StringArray toStringArray() const;
    CIMDateTimeArray toCIMDateTimeArray() const;
    CIMObjectPathArray toCIMObjectPathArray() const;
    CIMClassArray toCIMClassArray() const;
    CIMInstanceArray toCIMInstanceArray() const;

    CIMDataType::Type getType() const;
    /// The type; of an array with size -1, of a reference without a class name.
    CIMDataType getCIMDataType() const;
    bool isArray() const;
    /// The number of elements, 1 for a scalar.
    UInt32 getArraySize() const;
    bool isNumericType() const;
    /// Same type, and both arrays or both not.
    bool sameType(const CIMValue& other) const;

    /// Same type and same value, strings compared case-sensitively; uint8 1 is not uint32 1. Null equals null only.
    bool equal(const CIMValue& other) const;

    CIMValue& set(const CIMValue& other);
    CIMValue& operator=(const CIMValue& other);

    /// Reads a text as a value of the named type. Null for an unknown type name, or an empty reference. Throws
    /// StringConversionException for a text that is not such a number or boolean, CIMDateTimeException for a bad
    /// date-time, CIMException for a bad object path.
    static CIMValue createSimpleValue(const String& cimtype, const String& value);

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMValue>::of(!!impl_); }
    bool operator!() const { return !impl_; }

    /// The value as text, unquoted; the elements of an array joined with ','; "(null)" for a null value.
    String toString() const override;
    /// The value in MOF: strings quoted and escaped, arrays in braces.
    String toMOF() const override;

    /// Binary form; the value must not be null. readObject() throws CIMStreamException for malformed bytes and for
    /// values nested too deeply.
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend class CIMValueAccess;
    friend OW_COMMON_API bool operator<(const CIMValue& x, const CIMValue& y);
    friend bool operator==(const CIMValue& x, const CIMValue& y) { return x.equal(y); }
    friend bool operator!=(const CIMValue& x, const CIMValue& y) { return !x.equal(y); }
    friend bool operator>(const CIMValue& x, const CIMValue& y) { return y < x; }
    friend bool operator<=(const CIMValue& x, const CIMValue& y) { return x < y || x.equal(y); }
    friend bool operator>=(const CIMValue& x, const CIMValue& y) { return y <= x; }

  private:
    // A pointer of another type is not a boolean.
    explicit CIMValue(const void*);
    explicit CIMValue(void*);
    explicit CIMValue(const volatile void*);
    explicit CIMValue(volatile void*);

    COWIntrusiveReference<CIMValueImpl> impl_;
};

/// equal(), and the order of values of one type; values of different types are not ordered. Null sorts first.
OW_COMMON_API bool operator<(const CIMValue& x, const CIMValue& y);

} // namespace OpenWBEM
