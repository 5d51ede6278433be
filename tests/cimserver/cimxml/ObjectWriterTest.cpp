// What a provider may deliver, and the XML that clients must be able to read.
#include "cimserver/cimxml/ObjectWriter.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/NameWriter.hpp"
#include "cimserver/common/Memory.hpp"

#include <gtest/gtest.h>

namespace {

using namespace OpenWBEM;
using namespace cimserver::cimxml;

template <class T>
Array<T> listOf(std::initializer_list<T> items) {
    return Array<T>(items.begin(), items.end());
}

CIMProperty qualified(CIMProperty property, std::initializer_list<CIMQualifier> qualifiers) {
    for (const CIMQualifier& one : qualifiers) {
        property.addQualifier(one);
    }
    return property;
}

CIMQualifier texts(CIMQualifier qualifier, std::initializer_list<String> values) {
    return qualifier.setValue(CIMValue(listOf<String>(values)));
}

/// A qualifier that a provider declared as text and filled with numbers.
CIMQualifier misdeclared() {
    CIMQualifierType declared("ValidValueMap");
    declared.setDataType(CIMDataType::STRING);
    return CIMQualifier(declared).setValue(CIMValue(listOf<UInt32>({0, 1})));
}

CIMDateTime date(const char* text) {
    return CIMDateTime(String(text));
}

TEST(LongAnswer, TakesMemoryFromItsRequestWhileItGrows) {
    constexpr std::size_t kAll = 1048576; // three quarters are the peer's
    cimserver::MemoryBudget budget(kAll);
    cimserver::MemoryAccount account(budget, "one");
    XmlWriter xml(&account);
    const std::string part(10000, 'x');
    const auto write = [&](int parts) {
        for (int i = 0; i < parts; ++i) {
            xml.raw(part);
        }
    };
    write(20);
    EXPECT_FALSE(cimserver::MemoryAccount(budget, "one").hold(kAll * 3 / 4 - 20 * part.size()));
    EXPECT_THROW(write(80), cimserver::CimError);
}

TEST(Properties, AreWritten) {
    const CIMProperty byte("P", CIMDataType(CIMDataType::UINT8));
    const CIMInstance inner = CIMInstance("A<B").setProperty("x", CIMValue("\x02"));
    const CIMDateTimeArray dates = listOf(
        {date("20000229000000.000000+000"), date("19000229000000.000000+000"), CIMDateTime(), CIMDateTime(CIMNULL)});
    // clang-format off
    const std::pair<CIMProperty, const char*> cases[] = { // what stands in <PROPERTY...>
        {CIMProperty("Impossible", CIMValue(date("20241399000000.000000+000"))), R"( NAME="Impossible" TYPE="datetime">)"},
        {CIMProperty("D", CIMValue(dates)),
         R"(.ARRAY NAME="D" TYPE="datetime"><VALUE.ARRAY><VALUE>20000229000000.000000+000</VALUE><VALUE.NULL></VALUE.NULL>)"
         R"(<VALUE>00000000000000.000000:000</VALUE><VALUE.NULL></VALUE.NULL></VALUE.ARRAY>)"},
        {qualified(byte, {misdeclared()}), // the type follows the value
         R"( NAME="P" TYPE="uint8"><QUALIFIER NAME="ValidValueMap" TYPE="uint32"><VALUE.ARRAY><VALUE>0</VALUE><VALUE>1</VALUE>)"
         R"(</VALUE.ARRAY></QUALIFIER>)"},
        {qualified(byte, {texts("ValueMap", {"0", "1"}), texts("Values", {"no"})}), // pairs are of one length
         R"( NAME="P" TYPE="uint8"><QUALIFIER NAME="ValueMap" TYPE="string"><VALUE.ARRAY><VALUE>0</VALUE></VALUE.ARRAY>)"
         R"(</QUALIFIER><QUALIFIER NAME="Values" TYPE="string"><VALUE.ARRAY><VALUE>no</VALUE></VALUE.ARRAY></QUALIFIER>)"},
        {qualified(CIMProperty("P", CIMValue(true)), {CIMQualifier("Odd")}), // neither type nor value
         R"( NAME="P" TYPE="boolean"><QUALIFIER NAME="Odd" TYPE="string"></QUALIFIER><VALUE>TRUE</VALUE>)"},
        {CIMProperty("E", CIMValue(inner)),
         R"( NAME="E" TYPE="string" EmbeddedObject="instance"><VALUE>&lt;INSTANCE CLASSNAME=&quot;A&amp;lt;B&quot;&gt;)"
         R"(&lt;PROPERTY NAME=&quot;x&quot; TYPE=&quot;string&quot;&gt;&lt;VALUE&gt;)" "\xEF\xBF\xBD"
         R"(&lt;/VALUE&gt;&lt;/PROPERTY&gt;&lt;/INSTANCE&gt;</VALUE>)"},
        {CIMProperty("L", CIMValue(Char16(UInt16(0xD800)))), " NAME=\"L\" TYPE=\"char16\"><VALUE>\xEF\xBF\xBD</VALUE>"},
        {CIMProperty("T\n", CIMValue("a\tb\r\nc")), " NAME=\"T&#10;\" TYPE=\"string\"><VALUE>a\tb&#13;\nc</VALUE>"},
        {CIMProperty("T", CIMValue("\xE0\xA0|\xF0\x9F\x98|\xC3|\xF5\x80|\xEF\xBF\xBE|\xC3\xA4")),
         " NAME=\"T\" TYPE=\"string\"><VALUE>\xEF\xBF\xBD|\xEF\xBF\xBD|\xEF\xBF\xBD|\xEF\xBF\xBD\xEF\xBF\xBD|\xEF\xBF\xBD|\xC3\xA4</VALUE>"},
        {CIMProperty("R", CIMValue(Real64(0.0) / 0.0)), R"( NAME="R" TYPE="real64"><VALUE>NaN</VALUE>)"},
    };
    // clang-format on
    for (const auto& [property, xml] : cases) {
        XmlWriter writer;
        writeProperty(writer, property, "C", ObjectForm());
        EXPECT_EQ(writer.take(), "<PROPERTY" + (xml + std::string(*xml == '.' ? "</PROPERTY.ARRAY>" : "</PROPERTY>")));
    }
    XmlWriter writer;
    writeProperty(writer, CIMProperty("NoType"), "C", ObjectForm());
    EXPECT_EQ(writer.take(), "");
}

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
    EXPECT_EQ(writer.take(), "<PARAMVALUE NAME=\"r\" PARAMTYPE=\"reference\"><VALUE.REFERENCE><CLASSNAME NAME=\"C\">"
                             "</CLASSNAME></VALUE.REFERENCE></PARAMVALUE>");
}

TEST(Pieces, AreTheWholeText) {
    for (const int count : {1, 3, 4, 20}) {
        XmlWriter writer;
        {
            const Element list(writer, "L");
            writer.inPieces([done = 0, count](XmlWriter& part) mutable {
                Element(part, "P").text(std::string(90'000, static_cast<char>('a' + done)));
                return ++done < count;
            });
        }
        std::string expected = "<L>";
        for (int i = 0; i < count; ++i) {
            expected += "<P>" + std::string(90'000, static_cast<char>('a' + i)) + "</P>";
        }
        const auto rest = writer.takeRest();
        EXPECT_EQ(rest != nullptr, count > 3) << count;
        std::string text = writer.take();
        for (std::string piece; rest && !(piece = rest()).empty(); text += piece) {
            EXPECT_LT(piece.size(), 400'000U) << count;
        }
        EXPECT_TRUE(text == expected + "</L>") << count;
    }
}

} // namespace
