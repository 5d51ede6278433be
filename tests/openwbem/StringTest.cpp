#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_Char16.hpp"
#include "OW_String.hpp"
#include "OW_StringStream.hpp"
#include "Thrown.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <sstream>

using namespace OpenWBEM;

static_assert(std::is_convertible<const char*, String>::value, "");
static_assert(!std::is_convertible<int, String>::value && !std::is_convertible<char, String>::value, "");
static_assert(!std::is_convertible<double, String>::value && !std::is_convertible<Bool, String>::value, "");
static_assert(!std::is_convertible<String, const char*>::value && !std::is_convertible<std::string, String>::value, "");
static_assert(!std::is_constructible<String, long long>::value, "ambiguous where 64 bits are long");

namespace {

std::string joined(const StringArray& tokens) {
    std::string text;
    for (const String& token : tokens) {
        text += "[" + std::string(token.c_str()) + "]";
    }
    return text;
}

TEST(String, isMadeOfTextsAndNumbers) {
    const struct {
        String made;
        const char* text;
    } cases[] = {
        {String(), ""},
        {String(static_cast<const char*>(nullptr)), ""},
        {String('\0'), ""},
        {String('x'), "x"},
        {String("abcdef", 3), "abc"},
        {String(Int32(-5)), "-5"},
        {String(UInt32(4294967295U)), "4294967295"},
        {String(Int64(-9223372036854775807L - 1)), "-9223372036854775808"},
        {String(UInt64(18446744073709551615UL)), "18446744073709551615"},
        {String(UInt8(65)), "65"},
        {String(Int8(65)), "65"},
        {String(UInt16(65535)), "65535"},
        {String(Real64(1234567.5)), "1.23457e+06"},
        {String(Real64(0.5)), "0.5"},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(c.made.c_str(), c.text);
        EXPECT_EQ(c.made.length(), std::strlen(c.text));
    }
    char* allocated = new char[4];
    std::memcpy(allocated, "ab\0", 4);
    const String owned(String::E_TAKE_OWNERSHIP, allocated, 3);
    EXPECT_EQ(owned.length(), 3U);
    EXPECT_EQ(owned.charAt(2), '\0');
}

TEST(String, copiesAreIndependent) {
    String original("text");
    String copy(original);
    copy += '!';
    String third(copy);
    third[0] = 'T';
    original.concat(original);
    EXPECT_EQ(original, "texttext");
    EXPECT_EQ(copy, "text!");
    EXPECT_EQ(third, "Text!");
    copy.concat(copy.c_str());
    EXPECT_EQ(copy, "text!text!");
}

TEST(String, indexingStaysInside) {
    String text("ab");
    const String& readOnly = text;
    EXPECT_EQ(readOnly[1], 'b');
    EXPECT_EQ(readOnly[2], '\0');
    EXPECT_EQ(readOnly[99], '\0');
    text[99] = 'x';
    EXPECT_EQ(text[99], '\0');
    EXPECT_EQ(text.charAt(99), '\0');
    String none;
    EXPECT_EQ(none.charAt(0), '\0');
    EXPECT_EQ(thrownBy([&] { static_cast<void>(none[0]); }), nullUse);
    EXPECT_EQ(thrownBy([] { static_cast<void>(static_cast<const String&>(String())[0]); }), nullUse);
    EXPECT_EQ(String("")[0], '\0');
}

TEST(String, convertsToNumbersOrSaysWhyNot) {
    using Convert = std::function<String(const String&)>;
    const Convert u8 = [](const String& s) { return String(s.toUInt8()); };
    const Convert i8 = [](const String& s) { return String(s.toInt8()); };
    const Convert u16 = [](const String& s) { return String(s.toUInt16()); };
    const Convert i16 = [](const String& s) { return String(s.toInt16()); };
    const Convert u32 = [](const String& s) { return String(s.toUInt32()); };
    const Convert i32 = [](const String& s) { return String(s.toInt32()); };
    const Convert u64 = [](const String& s) { return String(s.toUInt64()); };
    const Convert i64 = [](const String& s) { return String(s.toInt64()); };
    const Convert u = [](const String& s) { return String(s.toUnsignedInt()); };
    const Convert i = [](const String& s) { return String(s.toInt()); };
    const Convert hex = [](const String& s) { return String(s.toUInt32(16)); };
    const Convert r32 = [](const String& s) { return String(static_cast<Real64>(s.toReal32())); };
    const Convert r64 = [](const String& s) { return String(s.toReal64()); };
    const Convert truth = [](const String& s) { return Bool(s.toBool()).toString(); };
    const struct {
        const char* text; // null: no buffer
        Convert convert;
        const char* result; // "!TYPE": cannot be converted into TYPE
    } cases[] = {
        {"12", u8, "12"},
        {" 12", i32, "12"},
        {"+5", u32, "5"},
        {"010", i32, "10"},
        {"12 ", u32, "!UInt32"},
        {"12x", u32, "!UInt32"},
        {"0x10", u16, "!UInt16"},
        {"0x10", hex, "16"},
        {"300", u8, "!UInt8"},
        {"-1", u8, "!UInt8"},
        {"-1", u16, "!UInt16"},
        {"-1", u32, "!UInt32"},
        {"-1", u, "!unsigned int"},
        {"-1", u64, "18446744073709551615"},
        {"18446744073709551616", u64, "!UInt64"},
        {"-128", i8, "-128"},
        {"-129", i8, "!Int8"},
        {"32768", i16, "!Int16"},
        {"2147483648", i32, "!Int32"},
        {"2147483648", i, "!int"},
        {"2147483648", i64, "2147483648"},
        {"9223372036854775808", i64, "!Int64"},
        {"", u8, "0"},
        {"", i64, "0"},
        {"", r64, "0"},
        {nullptr, i32, "!Int32"},
        {nullptr, u64, "!UInt64"},
        {nullptr, r32, "!Real32"},
        {"1.5", r64, "1.5"},
        {"1.5x", r64, "!Real64"},
        {"1e39", r32, "!Real32"},
        {"1e309", r64, "!Real64"},
        {"TrUe", truth, "true"},
        {"false", truth, "false"},
        {"1", truth, "!bool"},
        {"", truth, "!bool"},
    };
    for (const auto& c : cases) {
        String got;
        const std::string thrown = thrownBy([&] { got = c.convert(String(c.text)); });
        const std::string text = c.text ? c.text : "";
        const std::string refusal = "StringConversionException: Unable to convert \"" + text + "\" into ";
        EXPECT_EQ(thrown, *c.result == '!' ? refusal + (c.result + 1) : "nothing") << text;
        EXPECT_STREQ(got.c_str(), *c.result == '!' ? "" : c.result) << text;
    }
}

TEST(String, comparesAndSearches) {
    const String text("Hello, hello");
    const String none;
    const struct {
        bool answer;
        bool wanted;
    } truths[] = {
        {text.startsWith("Hello"), true},
        {text.startsWith("hello"), false},
        {text.startsWith("hello", String::E_CASE_INSENSITIVE), true},
        {text.startsWith(""), false},
        {none.startsWith(""), true},
        {text.startsWith('H'), true},
        {none.startsWith('H'), false},
        {text.startsWith("Hello, hello, hello"), false},
        {text.endsWith("hello"), true},
        {text.endsWith("HELLO", String::E_CASE_INSENSITIVE), true},
        {text.endsWith(""), false},
        {String("").endsWith(""), true},
        {text.endsWith('o'), true},
        {String("caf\xC3\xA9").equalsIgnoreCase("CAF\xC3\x89"), true},
        {String("caf\xC3\xA9").equals("CAF\xC3\x89"), false},
        {String("a") < String("b"), true},
        {"b" < String("a"), false},
        {String("a") < "\xC3", true},
        {String() == String(""), true},
        {String(" \t\n").isSpaces(), true},
        {none.isSpaces(), true},
        {String(" x").isSpaces(), false},
    };
    for (size_t i = 0; i < sizeof(truths) / sizeof(truths[0]); ++i) {
        EXPECT_EQ(truths[i].answer, truths[i].wanted) << i;
    }
    const struct {
        size_t answer;
        size_t wanted;
    } places[] = {
        {text.indexOf('l'), 2},
        {text.indexOf("ello", 2), 8},
        {text.indexOf("z"), String::npos},
        {text.indexOf(""), 0},
        {text.indexOf("", 3), 3},
        {text.indexOf("", 12), String::npos},
        {none.indexOf('x'), String::npos},
        {text.lastIndexOf('l'), 10},
        {text.lastIndexOf('l', 9), 9},
        {text.lastIndexOf("ello", 7), 1},
        {text.lastIndexOf("z"), String::npos},
        {none.lastIndexOf("x"), String::npos},
        {String("\xC3\xA9"
                "a")
             .UTF8Length(),
         2},
    };
    for (size_t i = 0; i < sizeof(places) / sizeof(places[0]); ++i) {
        EXPECT_EQ(places[i].answer, places[i].wanted) << i;
    }
}

TEST(String, takesTextApart) {
    const struct {
        String piece;
        const char* wanted;
    } pieces[] = {
        {String("abc").substring(1), "bc"},
        {String("abc").substring(1, 1), "b"},
        {String("abc").substring(1, 99), "bc"},
        {String("abc").substring(3), ""},
        {String("abc").substring(99, 1), ""},
        {String("\t a b \n").trim(), "a b"},
        {String("   ").trim(), ""},
        {String(" a ").ltrim(), "a "},
        {String(" a ").rtrim(), " a"},
        {String("a\xC3\x89Z").toLowerCase(), "a\xC3\x89z"},
        {String("a\xC3\xA9z").toUpperCase(), "A\xC3\xA9Z"},
        {String("abc").erase(1, 1), "ac"},
        {String("abc").erase(5), "abc"},
        {String("abc").erase(), ""},
        {"a" + String("b") + 'c' + "d", "abcd"},
        {'a' + String(), "a"},
    };
    for (const auto& c : pieces) {
        EXPECT_STREQ(c.piece.c_str(), c.wanted);
    }
    const struct {
        const char* text;
        const char* delimiters;
        String::EReturnDelimitersFlag returned;
        String::EEmptyTokenReturnFlag empty;
        const char* tokens;
    } cases[] = {
        {" a b\tc ", " \t", String::E_DISCARD_DELIMITERS, String::E_SKIP_EMPTY_TOKENS, "[a][b][c]"},
        {"a,,b", ",", String::E_DISCARD_DELIMITERS, String::E_SKIP_EMPTY_TOKENS, "[a][b]"},
        {"a,,b", ",", String::E_DISCARD_DELIMITERS, String::E_RETURN_EMPTY_TOKENS, "[a][][b]"},
        {",a,", ",", String::E_DISCARD_DELIMITERS, String::E_RETURN_EMPTY_TOKENS, "[a]"},
        {"a,b", ",", String::E_RETURN_DELIMITERS, String::E_SKIP_EMPTY_TOKENS, "[a][,][b]"},
        {"a,,b", ",", String::E_RETURN_TOKENS, String::E_RETURN_EMPTY_TOKENS, "[a][,][][,][b]"},
        {"", ",", String::E_RETURN_DELIMITERS, String::E_RETURN_EMPTY_TOKENS, ""},
        {"a,b", nullptr, String::E_DISCARD_DELIMITERS, String::E_SKIP_EMPTY_TOKENS, "[a,b]"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(joined(String(c.text).tokenize(c.delimiters, c.returned, c.empty)), c.tokens) << c.text;
    }
}

TEST(String, survivesAStreamAndRefusesAShortOne) {
    std::stringstream stream;
    const String text("with\0zero", 9);
    text.writeObject(stream);
    String back("former");
    back.readObject(stream);
    EXPECT_EQ(back.length(), 9U);
    EXPECT_EQ(std::memcmp(back.c_str(), text.c_str(), 9), 0);
    for (const char* damaged : {"", "\x7F\xFF\xFF\xFFxyz"}) {
        std::istringstream input(damaged);
        EXPECT_NE(thrownBy([&] { back.readObject(input); }), "nothing");
        EXPECT_EQ(back.length(), 9U);
    }
}

TEST(String, workingWithTheCLibrary) {
    String text;
    EXPECT_EQ(text.format("%d-%s", 7, std::string(300, 'x').c_str()), 302);
    EXPECT_EQ(text.length(), 302U);
    char* copy = text.allocateCString();
    EXPECT_STREQ(copy, text.c_str());
    std::free(copy);
    std::istringstream lines("one\r\ntwo");
    EXPECT_EQ(String::getLine(lines), "one");
    EXPECT_EQ(String::getLine(lines), "two");
    EXPECT_EQ(String::getLine(lines), "");
}

} // namespace
