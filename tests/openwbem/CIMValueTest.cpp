#include "LibraryTest.hpp"
#include "OW_CIMValueCast.hpp"

using namespace OpenWBEM;

namespace {

template <class T>
Array<T> two(const T& first, const T& second) {
    Array<T> array(size_t(1), first);
    array.push_back(second);
    return array;
}

CIMInstance thing(const char* name) {
    return CIMInstance("ACME_Thing").setProperty("Name", CIMValue(name));
}

struct TypedValue {
    CIMValue value;
    CIMDataType::Type type;
    bool array;
    const char* text;
    const char* mof;
};

std::vector<TypedValue> valuesOfAllTypes() {
    const CIMDateTime point(String("20040131142530.123456+060"));
    const CIMObjectPath path = CIMObjectPath("C", "root").setKeyValue("K", CIMValue("v"));
    // clang-format off
    return {
        {CIMValue(true), CIMDataType::BOOLEAN, false, "true", "true"},
        {CIMValue(Bool(false)), CIMDataType::BOOLEAN, false, "false", "false"},
        {CIMValue(UInt8(65)), CIMDataType::UINT8, false, "65", "65"},
        {CIMValue(Int8(-65)), CIMDataType::SINT8, false, "-65", "-65"},
        {CIMValue(UInt16(65535)), CIMDataType::UINT16, false, "65535", "65535"},
        {CIMValue(Int16(-32768)), CIMDataType::SINT16, false, "-32768", "-32768"},
        {CIMValue(5u), CIMDataType::UINT32, false, "5", "5"},
        {CIMValue(0), CIMDataType::SINT32, false, "0", "0"},
        {CIMValue(18446744073709551615ul), CIMDataType::UINT64, false, "18446744073709551615", "18446744073709551615"},
        {CIMValue(Int64(-5)), CIMDataType::SINT64, false, "-5", "-5"},
        {CIMValue(1.5f), CIMDataType::REAL32, false, "1.5", "1.5"},
        {CIMValue(1234567.5), CIMDataType::REAL64, false, "1.23457e+06", "1.23457e+06"},
        {CIMValue(Char16(UInt16(0x4161))), CIMDataType::CHAR16, false, "a", "a"},
        {CIMValue("a\"b\\\n\x01"), CIMDataType::STRING, false, "a\"b\\\n\x01", "\"a\\\"b\\\\\\n\x01\""},
        {CIMValue(static_cast<const char*>(nullptr)), CIMDataType::STRING, false, "", "\"\""},
        {CIMValue(point), CIMDataType::DATETIME, false, "20040131142530.123456+060", "\"20040131142530.123456+060\""},
        {CIMValue(path), CIMDataType::REFERENCE, false, "/root:C.K=\"v\"", "/root:C.K=\\\"v\\\""},
        {CIMValue(CIMClass("C")), CIMDataType::EMBEDDEDCLASS, false, "class C\n{\n};\n", "\"class C\\n{\\n};\\n\""},
        {CIMValue(CIMInstance("C")), CIMDataType::EMBEDDEDINSTANCE, false, "instance of C {\n}\n", "\"instance of C {\\n}\\n\""},
        {CIMValue(two(Bool(true), Bool(false))), CIMDataType::BOOLEAN, true, "true,false", "{true,false}"},
        {CIMValue(two(Char16('a'), Char16('b'))), CIMDataType::CHAR16, true, "a,b", "{a,b}"},
        {CIMValue(two(UInt8(65), UInt8(66))), CIMDataType::UINT8, true, "65,66", "{65,66}"},
        {CIMValue(two(Int8(-65), Int8(66))), CIMDataType::SINT8, true, "-65,66", "{-65,66}"},
        {CIMValue(two(UInt16(1), UInt16(2))), CIMDataType::UINT16, true, "1,2", "{1,2}"},
        {CIMValue(two(Int16(1), Int16(2))), CIMDataType::SINT16, true, "1,2", "{1,2}"},
        {CIMValue(two(UInt32(1), UInt32(2))), CIMDataType::UINT32, true, "1,2", "{1,2}"},
        {CIMValue(two(Int32(1), Int32(2))), CIMDataType::SINT32, true, "1,2", "{1,2}"},
        {CIMValue(two(UInt64(1), UInt64(2))), CIMDataType::UINT64, true, "1,2", "{1,2}"},
        {CIMValue(two(Int64(1), Int64(2))), CIMDataType::SINT64, true, "1,2", "{1,2}"},
        {CIMValue(two(Real32(1.5f), Real32(2))), CIMDataType::REAL32, true, "1.5,2", "{1.5,2}"},
        {CIMValue(two(Real64(1.5), Real64(2))), CIMDataType::REAL64, true, "1.5,2", "{1.5,2}"},
        {CIMValue(two(String("a,"), String("\"b"))), CIMDataType::STRING, true, "a,,\"b", "{\"a,\",\"\\\"b\"}"},
        {CIMValue(two(CIMDateTime(), CIMDateTime())), CIMDataType::DATETIME, true,
         "00000000000000.000000:000,00000000000000.000000:000",
         "{\"00000000000000.000000:000\",\"00000000000000.000000:000\"}"},
        {CIMValue(two(CIMObjectPath("C"), CIMObjectPath("D"))), CIMDataType::REFERENCE, true, "/:C,/:D", "{/:C,/:D}"},
        {CIMValue(CIMClassArray()), CIMDataType::EMBEDDEDCLASS, true, "", "{}"},
        {CIMValue(CIMInstanceArray(size_t(1), CIMInstance("C"))), CIMDataType::EMBEDDEDINSTANCE, true, "instance of C {\n}\n", "{\"instance of C {\\n}\\n\"}"}};
    // clang-format on
}

TEST(CIMValue, knowsItsTypeAndText) {
    for (const TypedValue& c : valuesOfAllTypes()) {
        EXPECT_EQ(c.value.getType(), c.type) << c.text;
        EXPECT_EQ(c.value.isArray(), c.array) << c.text;
        EXPECT_EQ(c.value.getCIMDataType().getSize(), c.array ? -1 : 1) << c.text;
        EXPECT_EQ(c.value.getCIMDataType().getRefClassName(), "") << c.text;
        EXPECT_EQ(c.value.toString(), c.text);
        EXPECT_EQ(c.value.toMOF(), c.mof);
        EXPECT_EQ(c.value.isNumericType(), CIMDataType::isNumericType(c.type)) << c.text;
    }
    EXPECT_EQ(CIMValue(5).getArraySize(), 1u);
    EXPECT_EQ(CIMValue(UInt8Array(3, UInt8(1))).getArraySize(), 3u);
}

TEST(CIMValue, equalsOnlyItselfAndAnEqualOneOfItsType) {
    const std::vector<TypedValue> values = valuesOfAllTypes();
    const std::vector<TypedValue> again = valuesOfAllTypes();
    for (size_t i = 0; i < values.size(); ++i) {
        for (size_t j = 0; j < values.size(); ++j) {
            EXPECT_EQ(values[i].value == again[j].value, i == j) << values[i].text << " and " << again[j].text;
        }
        EXPECT_FALSE(values[i].value < again[i].value) << values[i].text;
        EXPECT_TRUE(CIMValue(CIMNULL) < values[i].value) << values[i].text;
    }
    EXPECT_TRUE(CIMValue(thing("a")) != CIMValue(thing("b"))) << "embedded instances compare whole";
    EXPECT_TRUE(CIMValue("a") != CIMValue("A"));
    EXPECT_TRUE(CIMValue("a") < CIMValue("b"));
    EXPECT_FALSE(CIMValue(UInt8(1)) < CIMValue(2)) << "different types have no order";
    EXPECT_FALSE(CIMValue(2) < CIMValue(UInt8(1)));
}

TEST(CIMValue, nullIsTheOnlyFalseOne) {
    EXPECT_TRUE(CIMValue(false) && CIMValue("") && CIMValue(0) && CIMValue(CIMDateTime()));
    const CIMValue null(CIMNULL);
    EXPECT_FALSE(null);
    EXPECT_EQ(null.toString(), "(null)");
    EXPECT_TRUE(null == CIMValue(CIMNULL));
    EXPECT_TRUE(null != CIMValue(0));
    EXPECT_EQ(thrownBy([&] { null.toMOF(); }), nullUse);
}

TEST(CIMValue, isReadAsItsOwnTypeOnly) {
    const std::string start = "ValueCastException: CIMValue::CIMValueImpl::get - Value is not a ";
    const CIMValue text("5");
    const CIMValue byte(UInt8(5));
    const CIMValue wide(Int64(5));
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[&] { text.toUInt32(); }, "UINT32"},
        {[&] { byte.toUInt32(); }, "UINT32"},
        {[&] { byte.toInt8(); }, "SINT8"},
        {[&] { byte.toBool(); }, "BOOLEAN"},
        {[&] { byte.toUInt32Array(); }, "UINT32 ARRAY"},
        {[&] { text.toCIMObjectPath(); }, "REFERENCE"},
        {[&] { text.toCIMObjectPathArray(); }, "OBJECTPATH ARRAY"},
        {[&] { text.toCIMDateTime(); }, "DATETIME"},
        {[&] { wide.toUInt64Array(); }, "UINT64 ARRAY"},
        {[&] { wide.toBool(); }, "BOOLEAN"}};
    for (const auto& [call, type] : cases) {
        EXPECT_EQ(thrownBy(call), start + type);
    }
    String taken("before");
    EXPECT_EQ(thrownBy([&] { byte.get(taken); }), start + "STRING");
    EXPECT_EQ(taken, "before");
    text.get(taken);
    EXPECT_EQ(taken, "5");
    EXPECT_EQ(CIMValue(thing("a")).toCIMInstance().getPropertyValue("Name").toString(), "a");
}

TEST(CIMValue, sint64IsReadAsAnyNumber) {
    const CIMValue number(Int64(0x1234567890ABCDEF));
    EXPECT_EQ(number.toUInt8(), 0xEF);
    EXPECT_EQ(number.toInt8(), -17);
    EXPECT_EQ(number.toUInt16(), 0xCDEF);
    EXPECT_EQ(number.toUInt32(), 0x90ABCDEFu);
    EXPECT_EQ(number.toUInt64(), 0x1234567890ABCDEFul);
    EXPECT_EQ(CIMValue(Int64(-3)).toReal64(), -3.0);
}

TEST(CIMValue, isMadeFromText) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"UINT8", "256", "StringConversionException: Unable to convert \"256\" into UInt8"},
        {"boolean", "TRUE", "true"},
        {"boolean", "1", "StringConversionException: Unable to convert \"1\" into bool"},
        {"char16", "abc", "a"},
        {"string", "", ""},
        {"datetime", "", "00000000000000.000000:000"},
        {"datetime", "now", "CIMDateTimeException: Invalid format for date time"},
        {"reference", "root:C.K=1", "/root:C.K=\"1\""},
        {"ref", "", "(null)"},
        {"uint128", "1", "(null)"},
        {"", "1", "(null)"}};
    for (const auto& [type, text, result] : cases) {
        const auto made = [from = text, as = type] { return CIMValue::createSimpleValue(as, from).toString(); };
        EXPECT_EQ(resultOf(made), result) << type << " " << text;
    }
}

TEST(CIMValueCast, convertsThroughText) {
    const CIMDataType bytes(CIMDataType::UINT8, -1);
    const std::string failed = "CIMException: general error (";
    // clang-format off
    const std::tuple<CIMValue, CIMDataType, std::string> cases[] = {
        // the result as MOF, or what is thrown
        {CIMValue("5"), CIMDataType::UINT32, "5"},
        {CIMValue(5), CIMDataType::STRING, "\"5\""},
        {CIMValue(""), CIMDataType::SINT16, "0"},
        {CIMValue("TRUE"), CIMDataType::BOOLEAN, "true"},
        {CIMValue(UInt8(5)), CIMDataType::REAL32, "5"},
        {CIMValue(Int64(-5)), CIMDataType::SINT8, "-5"},
        {CIMValue(1.5), CIMDataType::UINT8, failed + "Unable to convert \"1.5\" into UInt8)"},
        {CIMValue(7), CIMDataType::DATETIME, failed + "Failed to convert \"7\" to datetime)"},
        {CIMValue(7), CIMDataType::REFERENCE, failed + "Failed to convert \"7\" to REF)"},
        {CIMValue(CIMDateTime()), CIMDataType::UINT8, failed + "Failed to convert \"00000000000000.000000:000\" to uint8)"},
        {CIMValue(CIMObjectPath("C")), CIMDataType::BOOLEAN, failed + "Failed to convert \"/:C\" to boolean)"},
        {CIMValue(CIMDateTime()), CIMDataType::STRING, "\"00000000000000.000000:000\""},
        {CIMValue("x"), CIMDataType::DATETIME, "CIMDateTimeException: Invalid format for date time"},
        {CIMValue("x"), CIMDataType::EMBEDDEDINSTANCE, failed + "Failed to convert \"x\" to string)"},
        {CIMValue("5"), CIMDataType::MAXDATATYPE, failed + "Failed to convert \"5\" to ** INVALID DATA TYPE IN CIMDATATYPE - toString **)"},
        {CIMValue(UInt8(5)), bytes, "{5}"},
        {CIMValue("5"), bytes, "{5}"},
        {CIMValue(two(String("1"), String("2"))), bytes, "{1,2}"},
        {CIMValue(two(UInt8(1), UInt8(2))), CIMDataType::UINT8, "1"},
        {CIMValue(two(UInt8(1), UInt8(2))), CIMDataType::STRING, "\"1\""}};
    // clang-format on
    for (const auto& [value, to, result] : cases) {
        EXPECT_EQ(resultOf([v = value, t = to] { return CIMValueCast::castValueToDataType(v, t).toMOF(); }), result);
    }
    EXPECT_FALSE(CIMValueCast::castValueToDataType(CIMValue(CIMNULL), CIMDataType::UINT8));
    EXPECT_FALSE(CIMValueCast::castValueToDataType(CIMValue(5), CIMDataType()));
    EXPECT_FALSE(CIMValueCast::castValueToDataType(CIMValue(UInt8Array()), CIMDataType::UINT8));
}

} // namespace
