// The MOF language: what is written, and what it means.
#include "tests/cimserver/schema/Mof.hpp"

using namespace OpenWBEM;
using cimserver::schema::Repository;

namespace {

// clang-format off
// The declaration of the property P, its default as text and its type.
const std::tuple<const char*, const char*, CIMDataType::Type> kDefaults[] = {
    {"uint8 P = 255;", "255", CIMDataType::UINT8},
    {"SINT8 P = -128;", "-128", CIMDataType::SINT8},
    {"uint16 P = 0xfFfF;", "65535", CIMDataType::UINT16},
    {"sint16 P = -0x8000;", "-32768", CIMDataType::SINT16},
    {"uint32 P = 1010b;", "10", CIMDataType::UINT32},
    {"sint32 P = +017;", "15", CIMDataType::SINT32},
    {"uint64 P = 18446744073709551615;", "18446744073709551615", CIMDataType::UINT64},
    {"sint64 P = -9223372036854775808;", "-9223372036854775808", CIMDataType::SINT64},
    {"uint8 P = 0;", "0", CIMDataType::UINT8},
    {"real32 P = -.5;", "-0.5", CIMDataType::REAL32},
    {"real32 P = -3.4028234663852886e38;", "-3.40282e+38", CIMDataType::REAL32},
    {"real64 P = 1.5E+3;", "1500", CIMDataType::REAL64},
    {"real64 P[] = {-3, 3};", "-3,3", CIMDataType::REAL64},
    {"boolean P = TRUE;", "true", CIMDataType::BOOLEAN},
    {"char16 P = 'x';", "x", CIMDataType::CHAR16},
    {"char16 P = '\\x0041';", "A", CIMDataType::CHAR16},
    {"string P = \"a\\\"b\\n\\x20ac\" /* and */ \"c\" // more\n \"d\";", "a\"b\n\342\202\254cd", CIMDataType::STRING},
    {"string P = \"\";", "", CIMDataType::STRING},
    {"string P = \"\xe9\xed\xa0\x80\";", "\xc3\xa9\xc3\xad\xc2\xa0\xef\xbf\xbd", CIMDataType::STRING},
    {"string P = null;", "(null)", CIMDataType::STRING},
    {"datetime P[] = {\"20240229235959.123456+060\", \"20240229235959.123456-060\", \"00000000000000.000000:000\"};",
     "20240229235959.123456+060,20240229235959.123456-060,00000000000000.000000:000", CIMDataType::DATETIME},
    {"uint8 P[] = {1, 0x2, 11b};", "1,2,3", CIMDataType::UINT8},
    {"string P[4] = {\"a\", \"b\" \"c\"};", "a,bc", CIMDataType::STRING},
    {"boolean P[] = {};", "", CIMDataType::BOOLEAN},
};
// clang-format on

TEST(Defaults, AreOfTheirType) {
    for (const auto& [declaration, value, type] : kDefaults) {
        Repository repository;
        repository.compileText(std::string("class A { ") + declaration + " };", "t.mof", "root/test");
        const CIMProperty property = repository.findClass("root/test", "a")->getProperty(CIMName("p"));
        EXPECT_EQ(property.getDataType().getType(), type) << declaration;
        EXPECT_EQ(property.getValue().toString(), String(value)) << declaration;
    }
}

const std::string kKeyed = "class A { [Key] string K; }; ";

const char* const kBadCharacter = "2:24: \\x needs one to four hexadecimal digits of a character other than 0 (in A)";
// clang-format off
// What stands after the qualifiers, so in line 2.
const std::pair<std::string, const char*> kMistakes[] = {
    // Of the characters.
    {"class A { /* ", "2:11: the comment is not closed (in A)"},
    {"class A { string P = \"a\n\"; };", "2:22: the string is not closed on its line (in A)"},
    {"class A { string P = \"a", "2:22: the string is not closed on its line (in A)"},
    {"class A { string P = \"\\q\"; };", "2:23: unknown escape sequence in a text (in A)"},
    {"class A { string P = \"\\x0\"; };", kBadCharacter},
    {"class A { string P = \"\\xD800\"; };", kBadCharacter},
    {"class A { string P = \"\x01\"; };", "2:23: unexpected byte 1 in a string (in A)"},
    {"class A { char16 P = ''; };", "2:22: a character is missing between single quotes (one beyond ASCII is written \\xHHHH) (in A)"},
    {"class A { char16 P = 'ab'; };", "2:22: the character is not closed (in A)"},
    {"class A { uint8 P = 08; };", "2:21: \"08\" is not a number (in A)"},
    {"class A { uint8 P = 12b; };", "2:21: \"12b\" is not a number (in A)"},
    {"class A { uint8 P = 0x; };", "2:21: \"0x\" is not a number (in A)"},
    {"class A { real32 P = 1.; };", "2:22: \"1.\" is not a real number (in A)"},
    {"class A { real64 P = 1.0e999; };", "2:22: \"1.0e999\" is not a real number (in A)"},
    {"class A { uint64 P = 18446744073709551616; };", "2:22: \"18446744073709551616\" does not fit into 64 bits (in A)"},
    {"class \xc3\xa9 {};", "2:7: unexpected byte 195"},
    {"class A @", "2:9: unexpected '@'"},
    // Of the grammar.
    {"klass A {};", "2:1: a declaration of a qualifier, class or instance or #pragma is expected instead of \"klass\""},
    {"class A {}", "2:11: \";\" is expected instead of the end of the text (in A)"},
    {"class A { uint8 };", "2:17: the name of a property or method is expected instead of \"}\" (in A)"},
    {"class A { uint8 P[0]; };", "2:19: the size of an array must be 1 to 1000000 (in A)"},
    {"class A { uint8 P = {1, {2}}; };", "2:25: a value is expected instead of \"{\" (in A)"},
    {"class A { uint8 P = $x; };", "2:21: the value is not of type uint8 (in A.P)"},
    {"class A as B {};", "2:12: an alias is expected instead of \"B\" (in A)"},
    {"Qualifier Q : string, Skope(any);", "2:23: Scope or Flavor is expected instead of \"Skope\""},
    {"instance of A {};", "2:13: the class \"A\" of the instance is not declared"},
    {"[Description(\"x\")] instance of A {};", "2:32: the class \"A\" of the instance is not declared"},
    {"#pragma include(x)", "2:17: a string is expected instead of \"x\""},
    {"#pragma include(\"x.mof\" 1)", "2:25: \")\" is expected instead of \"1\""},
    {"#define X", "2:1: #pragma is expected instead of \"#define\""},
    {"#pragma include(\"x.mof\")", "2:1: an include is possible in a file only"},
    {"#pragma namespace(\"//other/root\")", "2:1: \"//other/root\" is not the name of a namespace of this server"},
    // Of the meaning.
    {"class A { uint9 P; };", "2:11: \"uint9\" is not a type (a reference is written \"CLASS REF\") (in A.P)"},
    {"class A { uint8 P = 256; };", "2:21: 256 is out of the range of uint8 (in A.P)"},
    {"class A { uint8 P = -1; };", "2:21: -1 is out of the range of uint8 (in A.P)"},
    {"class A { sint8 P = -129; };", "2:21: -129 is out of the range of sint8 (in A.P)"},
    {"class A { real32 P = 1.0e39; };", "2:22: 1.0e39 is out of the range of real32 (in A.P)"},
    {"class A { uint8 P = \"1\"; };", "2:21: the value is not of type uint8 (in A.P)"},
    {"class A { string P = 1; };", "2:22: the value is not of type string (in A.P)"},
    {"class A { boolean P = 1; };", "2:23: the value is not of type boolean (in A.P)"},
    {"class A { uint8 P = {1}; };", "2:21: the value is not of type uint8 (in A.P)"},
    {"class A { uint8 P[] = 1; };", "2:23: an array is expected, written in braces (in A.P)"},
    {"class A { uint8 P[] = {1, null}; };", "2:27: the value is not of type uint8 (in A.P)"},
    {"class A { datetime P = \"2024\"; };", "2:24: \"2024\" is not a datetime of 25 characters (in A.P)"},
    {"class A {}; class a {};", "2:19: the class \"a\" is declared already"},
    {"class A : B {};", "2:7: the superclass \"B\" of \"A\" is not declared"},
    {"class A : A {};", "2:7: the superclass \"A\" of \"A\" is not declared"},
    {"class A { uint8 P; uint8 p; };", "2:26: \"p\" is declared twice in the class (in A.p)"},
    {"class A { uint8 F(uint8 x, uint8 X); };", "2:34: the parameter \"X\" is declared twice (in A.F)"},
    {"[Nope] class A {};", "2:2: the qualifier \"Nope\" is not declared (in A)"},
    {"[Key] class A {};", "2:2: the qualifier \"Key\" is not allowed here by its scope (in A)"},
    {"Qualifier Q : boolean, Scope(association); [Q] class A {};", "2:45: the qualifier \"Q\" is not allowed here by its scope (in A)"},
    {"class A { [Key, key] string P; };", "2:17: the qualifier \"key\" is given twice (in A.P)"},
    {"class A { [Key(1)] string P; };", "2:16: the value is not of type boolean (in A.P)"},
    {"class A { [Values(\"x\")] string P; };", "2:19: an array is expected, written in braces (in A.P)"},
    {"class A { [Key : Nope] string P; };", "2:18: \"Nope\" is not a flavor (in A.P)"},
    {"class A { [Key : EnableOverride DisableOverride] string K; };", "2:33: the flavor \"DisableOverride\" contradicts another one (in A.K)"},
    {"class A { [Key : ToSubclass Restricted] string P; };", "2:29: the flavor \"Restricted\" contradicts another one (in A.P)"},
    {"class A { [Key] string P; }; class B : A { [Key(false)] string P; };", "2:45: the qualifier \"Key\" may not be overridden (in B.P)"},
    {"class A { string P; }; class B : A { uint8 P; };", "2:38: \"P\" overrides an element of another type (in B.P)"},
    {"class A { string P; }; class B : A { string P(); };", "2:45: \"P\" is inherited as a property (in B.P)"},
    {"class A { [Override(\"P\")] string P; };", "2:34: \"P\" overrides \"P\", which is not inherited (in A.P)"},
    {"class A { A REF P; };", "2:11: a reference is allowed in an association only (in A.P)"},
    {"Qualifier Key : string, Scope(any);", "2:11: the qualifier \"Key\" is declared already, and differently"},
    {"Qualifier Q : string;", "2:11: the qualifier \"Q\" is declared without a scope"},
    {"Qualifier Q : string, Scope(nothing);", "2:29: \"nothing\" is not a scope"},
    {"Qualifier Q : A REF, Scope(any);", "2:15: a qualifier cannot be a reference"},
    {"class A { [Key] uint8 K; uint8 N; }; instance of A { K = 1; n = 256; };", "2:65: 256 is out of the range of uint8 (in A.n)"},
    {kKeyed + "instance of A { };", "2:42: the key \"K\" of the instance of \"A\" has no value"},
    {kKeyed + "instance of A { K = NULL; };", "2:42: the key \"K\" of the instance of \"A\" has no value"},
    {kKeyed + "instance of A { K = \"1\"; Q = 1; };", "2:55: the class has no such property (in A.Q)"},
    {kKeyed + "instance of A { K = \"1\"; k = \"2\"; };", "2:55: the property is given twice (in A.k)"},
    {kKeyed + "instance of A { K = \"1\"; }; instance of a { K = \"1\"; };", "2:70: the instance A.K=\"1\" is declared already"},
    {kKeyed + "instance of A as $x { K = \"1\"; }; instance of A as $X { K = \"2\"; };", "2:76: the alias \"$X\" is given twice"},
    {"class A { string K; }; instance of A { K = \"1\"; };", "2:36: the class \"A\" has no keys to name an instance by"},
    {"[Abstract] class A { [Key] string K; }; instance of A { K = \"1\"; };", "2:53: the class \"A\" is abstract: it has no instances"},
    {kKeyed + "class B { [Key] string K; }; [Association] class L { [Key] A REF R; }; instance of L { R = \"B.K=\\\"1\\\"\"; };",
     "2:121: \"B\" is no class derived from \"A\" (in L.R)"},
    {"[Association] class L { [Key] L REF R; }; instance of L as $l { R = $l; };", "2:55: references go in a circle or deeper than 8 (in L.R)"},
    {"[Association] class L { [Key] L REF R; }; instance of L { R = $m; };", "2:63: there is no alias \"$m\" (in L.R)"},
    {"[Association] class L { [Key] L REF R; }; instance of L { R = \"\"; };", "2:63: \"\" is not an object path (in L.R)"},
    {"[Association] class A { A REF P = $x; };", "2:35: the value is not of type REF (in A.P)"},
    {"class A { string Q; }; class B : A { [Override(\"C.Q\")] string Q; };", "2:63: \"Q\" overrides \"C.Q\", which is not inherited (in B.Q)"},
    {"class M : L { [Override(\"R\")] C REF R; }; [Association] class L { A REF R; }; class A {}; class C {};",
     "2:31: \"R\" overrides an element of another type (in M.R)"},
};
// clang-format on

TEST(Mistakes, AreNamedWithTheirPlace) {
    for (const auto& [mof, message] : kMistakes) {
        EXPECT_EQ(errorOf(kQualifiers + mof), std::string("t.mof:") + message);
    }
}

TEST(Hostile, ExcessEndsInAnErrorNotInExhaustion) {
    EXPECT_NE(errorOf("class " + std::string(257, 'A') + " {};"), "");
    EXPECT_EQ(errorOf("class " + std::string(256, 'A') + " {};"), "");
    EXPECT_NE(errorOf("class A { uint8 P = " + std::string(100000, '9') + "; };"), "");
    EXPECT_NE(errorOf(std::string(100000, '[')), "");
    EXPECT_NE(errorOf(std::string("class A\0 {};", 12)), "");
    std::string deep = "class C0 {};";
    for (int i = 1; i < 100; ++i) {
        deep += "class C" + std::to_string(i) + " : C" + std::to_string(i - 1) + " {};";
    }
    EXPECT_EQ(errorOf(deep), "");
    EXPECT_NE(errorOf(deep + "class D : C99 {};").find("derived deeper than 100"), std::string::npos);
}

// Every prefix of a text with all constructs is either complete or an error with a place, never more than that.
TEST(Hostile, EveryCutIsAnErrorWithAPlace) {
    const std::string whole =
        "#pragma locale(\"en_US\")\n[Version(\"1\"), Description(\"a\" \"b\") : Restricted] class A as $a {"
        "[Key] string K; [Values{\"x\"}] uint8 P[2] = {1, 2}; uint32 F([MaxLen(3)] string s, A REF r[]); };";
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const std::string error = errorOf(kQualifiers + whole.substr(0, cut));
        EXPECT_TRUE(error.empty() || error.compare(0, 6, "t.mof:") == 0) << cut << ": " << error;
        EXPECT_TRUE(!error.empty() || cut <= whole.find('[')) << cut;
    }
    EXPECT_EQ(errorOf(kQualifiers + whole), "");
}

} // namespace
