// What a provider may deliver, and the XML that clients must be able to read.
#include "cimserver/cimxml/ObjectWriter.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/NameWriter.hpp"

#include <gtest/gtest.h>

namespace {

using namespace OpenWBEM;
using namespace cimserver::cimxml;

template <class T>
Array<T> listOf(std::initializer_list<T> items) {
    return Array<T>(items.begin(), items.end());
}

CIMQualifier qualifier(const char* name, const CIMValue& value) {
    return CIMQualifier(name).setValue(value);
}

CIMProperty qualified(CIMProperty property, std::initializer_list<CIMQualifier> qualifiers) {
    for (const CIMQualifier& one : qualifiers) {
        property.addQualifier(one);
    }
    return property;
}

/// A qualifier that a provider declared as text and filled with numbers.
CIMQualifier misdeclared() {
    CIMQualifierType declared("ValidValueMap");
    declared.setDataType(CIMDataType::STRING);
    return CIMQualifier(declared).setValue(CIMValue(listOf<UInt32>({0, 1})));
}

CIMInstance inner() {
    CIMInstance instance("A<B");
    return instance.setProperty("x", CIMValue("\x02"));
}

struct PropertyCase {
    const char* name;
    CIMProperty property;
    const char* xml;
};

class Properties : public testing::TestWithParam<PropertyCase> {};

TEST_P(Properties, AreWritten) {
    XmlWriter writer;
    writeProperty(writer, GetParam().property, "C", ObjectForm());
    EXPECT_EQ(writer.text(), GetParam().xml);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Properties,
    testing::Values(
        PropertyCase{"ImpossibleDate", CIMProperty("D", CIMValue(CIMDateTime(String("20241399000000.000000+000")))),
                     "<PROPERTY NAME=\"D\" TYPE=\"datetime\"></PROPERTY>"},
        PropertyCase{
            "DatesInAnArray",
            CIMProperty("D", CIMValue(listOf({CIMDateTime(String("20000229000000.000000+000")),
                                              CIMDateTime(String("19000229000000.000000+000")), CIMDateTime(),
                                              CIMDateTime(CIMNULL)}))),
            "<PROPERTY.ARRAY NAME=\"D\" TYPE=\"datetime\"><VALUE.ARRAY><VALUE>20000229000000.000000+000"
            "</VALUE><VALUE.NULL></VALUE.NULL><VALUE>00000000000000.000000:000</VALUE><VALUE.NULL></VALUE.NULL>"
            "</VALUE.ARRAY></PROPERTY.ARRAY>"},
        PropertyCase{"QualifierTypeFollowsValue",
                     qualified(CIMProperty("P", CIMDataType(CIMDataType::UINT8)), {misdeclared()}),
                     "<PROPERTY NAME=\"P\" TYPE=\"uint8\"><QUALIFIER NAME=\"ValidValueMap\" TYPE=\"uint32\">"
                     "<VALUE.ARRAY><VALUE>0</VALUE><VALUE>1</VALUE></VALUE.ARRAY></QUALIFIER></PROPERTY>"},
        PropertyCase{"PairedQualifiersOfOneLength",
                     qualified(CIMProperty("P", CIMValue(UInt8(1))),
                               {qualifier("ValueMap", CIMValue(listOf<String>({"0", "1"}))),
                                qualifier("Values", CIMValue(listOf<String>({"no"})))}),
                     "<PROPERTY NAME=\"P\" TYPE=\"uint8\"><QUALIFIER NAME=\"ValueMap\" TYPE=\"string\"><VALUE.ARRAY>"
                     "<VALUE>0</VALUE></VALUE.ARRAY></QUALIFIER><QUALIFIER NAME=\"Values\" TYPE=\"string\">"
                     "<VALUE.ARRAY><VALUE>no</VALUE></VALUE.ARRAY></QUALIFIER><VALUE>1</VALUE></PROPERTY>"},
        PropertyCase{"QualifierWithoutAnything", qualified(CIMProperty("P", CIMValue(true)), {CIMQualifier("Odd")}),
                     "<PROPERTY NAME=\"P\" TYPE=\"boolean\"><QUALIFIER NAME=\"Odd\" TYPE=\"string\"></QUALIFIER>"
                     "<VALUE>TRUE</VALUE></PROPERTY>"},
        PropertyCase{"EmbeddedInstance", CIMProperty("E", CIMValue(inner())),
                     "<PROPERTY NAME=\"E\" TYPE=\"string\" EmbeddedObject=\"instance\"><VALUE>&lt;INSTANCE "
                     "CLASSNAME=&quot;A&amp;lt;B&quot;&gt;&lt;PROPERTY NAME=&quot;x&quot; TYPE=&quot;string&quot;&gt;"
                     "&lt;VALUE&gt;\xEF\xBF\xBD&lt;/VALUE&gt;&lt;/PROPERTY&gt;&lt;/INSTANCE&gt;</VALUE></PROPERTY>"},
        PropertyCase{"HalfASurrogatePair", CIMProperty("L", CIMValue(Char16(UInt16(0xD800)))),
                     "<PROPERTY NAME=\"L\" TYPE=\"char16\"><VALUE>\xEF\xBF\xBD</VALUE>"
                     "</PROPERTY>"},
        PropertyCase{"LayoutCharacters", CIMProperty("T\n", CIMValue("a\tb\r\nc")),
                     "<PROPERTY NAME=\"T&#10;\" TYPE=\"string\"><VALUE>a\tb&#13;\nc</VALUE></PROPERTY>"},
        PropertyCase{"BrokenUtf8", CIMProperty("T", CIMValue("\xE2\x82|\xF0\x9F\x98|\xC3|\xF5|\xEF\xBF\xBE|\xC3\xA4")),
                     "<PROPERTY NAME=\"T\" "
                     "TYPE=\"string\"><VALUE>\xEF\xBF\xBD|\xEF\xBF\xBD|\xEF\xBF\xBD|\xEF\xBF\xBD|\xEF\xBF\xBD|\xC3\xA4"
                     "</VALUE></PROPERTY>"},
        PropertyCase{"NotANumber", CIMProperty("R", CIMValue(Real64(0.0) / 0.0)),
                     "<PROPERTY NAME=\"R\" TYPE=\"real64\"><VALUE>NaN</VALUE></PROPERTY>"},
        PropertyCase{"NoTypeAtAll", CIMProperty("U"), ""}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(InstanceNames, NeedEachKeysValue) {
    XmlWriter writer;
    CIMObjectPath path("C", "root/cimv2");
    path.setKeys(CIMPropertyArray(size_t(1), CIMProperty("K", CIMDataType(CIMDataType::STRING))));
    EXPECT_THROW(writeInstanceName(writer, path), cimserver::CimError);
}

TEST(MethodResults, LeaveOutWhatIsNull) {
    XmlWriter writer;
    writeReturnValue(writer, CIMValue(CIMNULL));
    writeParamValue(writer, "n", CIMValue(CIMNULL));
    writeParamValue(writer, "d", CIMValue(CIMDateTime(String("00000000000000.000000+000"))));
    writeParamValue(writer, "r", CIMValue(CIMObjectPath("C", "")));
    EXPECT_EQ(writer.text(), "<PARAMVALUE NAME=\"r\" PARAMTYPE=\"reference\"><VALUE.REFERENCE><CLASSNAME NAME=\"C\">"
                             "</CLASSNAME></VALUE.REFERENCE></PARAMVALUE>");
}

} // namespace
