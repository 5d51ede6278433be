#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_Types.hpp"

namespace OpenWBEM {

/// The type of a value: one of the CIM types, alone or as an array, and for references the class referred to.
/// True in a condition only if it is not null and names a type, that is, is neither CIMNULL nor INVALID.
class OW_COMMON_API CIMDataType : public CIMBase {
    struct Data;
    typedef SafeBool<CIMDataType>::type safe_bool;

  public:
// The interface has two enumerators of the name CIMNULL, this one and OpenWBEM::CIMNULL; Clang warns of it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
    enum Type {
        CIMNULL = 0,
        UINT8 = 1,
        SINT8 = 2,
        UINT16 = 3,
        SINT16 = 4,
        UINT32 = 5,
        SINT32 = 6,
        UINT64 = 7,
        SINT64 = 8,
        STRING = 9,
        BOOLEAN = 10,
        REAL32 = 11,
        REAL64 = 12,
        DATETIME = 13,
        CHAR16 = 14,
        REFERENCE = 15,
        EMBEDDEDCLASS = 16,
        EMBEDDEDINSTANCE = 17,
        MAXDATATYPE = 18,
        INVALID = 99
    };
#pragma GCC diagnostic pop
    enum { SIZE_SINGLE, SIZE_UNLIMITED, SIZE_LIMITED };

    /// No type yet: CIMNULL.
    CIMDataType();
    explicit CIMDataType(CIMNULL_t);
    /// A scalar.
    CIMDataType(Type type);
    /// An array of size elements; a size below 1 means any number.
    CIMDataType(Type type, Int32 size);
    /// A reference to an object of the class.
    explicit CIMDataType(const CIMName& refClassName);
    CIMDataType(const CIMDataType& other);
    ~CIMDataType() override;
    CIMDataType& operator=(const CIMDataType& other);

    Type getType() const;
    /// 1 for a scalar, -1 for an array of any size, else the size of the array.
    Int32 getSize() const;
    /// The class a reference refers to; empty for other types.
    String getRefClassName() const;

    bool isArrayType() const;
    /// True for the eight integer and the two real types.
    bool isNumericType() const;
    static bool isNumericType(Type type);
    bool isReferenceType() const;

    /// Makes a scalar type an array (a size below 1: of any size). Returns false and does nothing if this names no type
    /// or is an array already.
    bool setToArrayType(Int32 size);

    /// Makes this the type of the value, if it is another one. True if it was that type already; a null value fits
    /// every type.
    bool syncWithValue(const CIMValue& value);

    /// The type of that name, ignoring case: null for an unknown name, CIMNULL for an empty one.
    static CIMDataType getDataType(const String& name);

    /// Like getDataType(), but INVALID for an unknown or empty name.
    static Type strToSimpleType(const String& name);

    /// Same type, and both arrays or both not.
    bool equals(const CIMDataType& other) const;

    void setNull() override;
    operator safe_bool() const {
        return SafeBool<CIMDataType>::of(namesType());
    }
    bool operator!() const {
        return !namesType();
    }

    /// The name of the type, without any mark of an array; REF for references.
    String toString() const override;

    /// Like toString(), but "Class REF" for references.
    String toMOF() const override;

    /// What MOF writes after the name of an element of this type: nothing, "[]" or "[4]".
    String getArrayMOF() const;

    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend OW_COMMON_API bool operator==(const CIMDataType& x, const CIMDataType& y);
    friend OW_COMMON_API bool operator<(const CIMDataType& x, const CIMDataType& y);
    friend bool operator!=(const CIMDataType& x, const CIMDataType& y) {
        return !(x == y);
    }
    friend bool operator>(const CIMDataType& x, const CIMDataType& y) {
        return y < x;
    }
    friend bool operator<=(const CIMDataType& x, const CIMDataType& y) {
        return !(y < x);
    }
    friend bool operator>=(const CIMDataType& x, const CIMDataType& y) {
        return !(x < y);
    }

  private:
    bool namesType() const;

    COWIntrusiveReference<Data> data_;
};

/// Compare type, size and reference class. Null equals null and sorts first.
OW_COMMON_API bool operator==(const CIMDataType& x, const CIMDataType& y);
OW_COMMON_API bool operator<(const CIMDataType& x, const CIMDataType& y);

} // namespace OpenWBEM
