#include "LibraryTest.hpp"

using namespace OpenWBEM;

namespace {

const std::tuple<CIMDataType::Type, const char*, bool> namedTypes[] = {
    {CIMDataType::UINT8, "uint8", true},        {CIMDataType::SINT8, "sint8", true},
    {CIMDataType::UINT16, "uint16", true},      {CIMDataType::SINT16, "sint16", true},
    {CIMDataType::UINT32, "uint32", true},      {CIMDataType::SINT32, "sint32", true},
    {CIMDataType::UINT64, "uint64", true},      {CIMDataType::SINT64, "sint64", true},
    {CIMDataType::STRING, "string", false},     {CIMDataType::BOOLEAN, "boolean", false},
    {CIMDataType::REAL32, "real32", true},      {CIMDataType::REAL64, "real64", true},
    {CIMDataType::DATETIME, "datetime", false}, {CIMDataType::CHAR16, "char16", false},
    {CIMDataType::REFERENCE, "REF", false},
};

TEST(CIMDataType, hasANameBothWays) {
    for (const auto& [type, name, numeric] : namedTypes) {
        EXPECT_EQ(CIMDataType(type).toString(), name);
        EXPECT_EQ(CIMDataType::strToSimpleType(String(name).toUpperCase()), type);
        EXPECT_EQ(CIMDataType::getDataType(name).getType(), type);
        EXPECT_EQ(CIMDataType(type).isNumericType(), numeric) << name;
        EXPECT_TRUE(CIMDataType(type)) << name;
    }
    EXPECT_EQ(CIMDataType::strToSimpleType("Reference"), CIMDataType::REFERENCE);
    EXPECT_EQ(CIMDataType::strToSimpleType("uint128"), CIMDataType::INVALID);
    EXPECT_EQ(CIMDataType(CIMDataType::EMBEDDEDINSTANCE).toString(), "string");
}

TEST(CIMDataType, withoutATypeIsFalse) {
    const char* const noType = "** INVALID DATA TYPE IN CIMDATATYPE - toString **";
    EXPECT_EQ(CIMDataType().toString(), noType);
    EXPECT_EQ(CIMDataType(CIMDataType::CIMNULL, 3).toString(), noType);
    EXPECT_FALSE(CIMDataType());
    EXPECT_FALSE(CIMDataType(CIMDataType::INVALID));
    EXPECT_FALSE(CIMDataType(CIMNULL));
    EXPECT_TRUE(!CIMDataType::getDataType("nonsense"));
    EXPECT_EQ(CIMDataType::getDataType("").getType(), CIMDataType::CIMNULL);
}

TEST(CIMDataType, knowsItsArrays) {
    const std::tuple<CIMDataType, Int32, bool, const char*> cases[] = {
        {CIMDataType::UINT8, 1, false, ""},
        {CIMDataType(CIMDataType::UINT8, 0), -1, true, "[]"},
        {CIMDataType(CIMDataType::UINT8, -7), -1, true, "[]"},
        {CIMDataType(CIMDataType::UINT8, 1), 1, true, "[1]"},
        {CIMDataType(CIMDataType::UINT8, 4), 4, true, "[4]"}};
    for (const auto& [type, size, array, mof] : cases) {
        EXPECT_EQ(type.getSize(), size);
        EXPECT_EQ(type.isArrayType(), array);
        EXPECT_EQ(type.getArrayMOF(), mof);
    }
    CIMDataType type(CIMDataType::STRING);
    EXPECT_TRUE(type.setToArrayType(3));
    EXPECT_FALSE(type.setToArrayType(4));
    EXPECT_EQ(type.getSize(), 3);
    EXPECT_FALSE(CIMDataType(CIMDataType::STRING).isArrayType()) << "the shared scalar type has changed";
    EXPECT_FALSE(CIMDataType().setToArrayType(3));
}

TEST(CIMDataType, comparesLooselyAndFully) {
    const CIMDataType four(CIMDataType::UINT8, 4);
    const CIMDataType any(CIMDataType::UINT8, -1);
    EXPECT_TRUE(four.equals(any));
    EXPECT_TRUE(four != any);
    EXPECT_FALSE(four.equals(CIMDataType::UINT8));
    const CIMDataType reference(CIMName("ACME_Thing"));
    EXPECT_TRUE(reference == CIMDataType(CIMName("acme_thing")));
    EXPECT_TRUE(reference != CIMDataType(CIMDataType::REFERENCE));
    EXPECT_TRUE(CIMDataType(CIMNULL) < CIMDataType());
    EXPECT_EQ(reference.toMOF(), "ACME_Thing REF");
    EXPECT_EQ(reference.getRefClassName(), "ACME_Thing");
}

TEST(CIMDataType, followsAValue) {
    CIMDataType type(CIMDataType::STRING);
    EXPECT_TRUE(type.syncWithValue(CIMValue("x")));
    EXPECT_TRUE(type.syncWithValue(CIMValue(CIMNULL)));
    EXPECT_FALSE(type.syncWithValue(CIMValue(UInt8Array(2, UInt8(1)))));
    EXPECT_TRUE(type == CIMDataType(CIMDataType::UINT8, -1));
}

} // namespace
