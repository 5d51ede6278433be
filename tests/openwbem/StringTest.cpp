#include "LibraryTest.hpp"
#include "OW_CaseFolding.hpp"

#include <cstdlib>
#include <map>

using namespace OpenWBEM;

static_assert(std::is_convertible<const char*, String>::value, "");
static_assert(!std::is_convertible<int, String>::value && !std::is_convertible<char, String>::value, "");
static_assert(!std::is_convertible<double, String>::value && !std::is_convertible<Bool, String>::value, "");
static_assert(!std::is_convertible<String, const char*>::value && !std::is_convertible<std::string, String>::value, "");
static_assert(std::is_constructible<String, long long>::value == std::is_same<Int64, long long>::value,
              "ambiguous where 64 bits are long");

namespace {

std::string joined(const StringArray& tokens) {
    std::string text;
    for (const String& token : tokens) {
        text += "[" + std::string(token.c_str()) + "]";
    }
    return text;
}

TEST(String, isMadeOfTextsAndNumbers) {
    const std::pair<String, const char*> cases[] = {{String(), ""},
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
                                                    {String(Real64(0.5)), "0.5"}};
    for (const auto& [made, text] : cases) {
        EXPECT_STREQ(made.c_str(), text);
        EXPECT_EQ(made.length(), std::strlen(text));
    }
    const String owned(String::E_TAKE_OWNERSHIP, new char[4]{'a', 'b', '\0', '\0'}, 3);
    EXPECT_TRUE(owned.length() == 3 && owned.charAt(1) == 'b' && owned.charAt(2) == '\0');
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
    EXPECT_EQ(copy.concat(String("\0x", 2)).length(), 12U) << "what is added may hold a NUL";
}

TEST(String, indexingStaysInside) {
    String text("ab");
    const String& readOnly = text;
    text[99] = 'x';
    EXPECT_TRUE(readOnly[1] == 'b' && readOnly[2] == '\0' && readOnly[99] == '\0' && text[99] == '\0');
    String none;
    EXPECT_TRUE(none.charAt(0) == '\0' && text.charAt(99) == '\0');
    EXPECT_EQ(thrownBy([&] { static_cast<void>(none[0]); }), nullUse);
    EXPECT_EQ(thrownBy([] { static_cast<void>(static_cast<const String&>(String())[0]); }), nullUse);
    EXPECT_EQ(String("")[0], '\0');
}

/// What the text gives as a number of the type, or the message of what is thrown.
std::string converted(const std::string& type, const String& text) {
    const std::map<std::string, std::function<String()>> conversions = {
        {"UInt8", [&] { return String(text.toUInt8()); }},
        {"Int8", [&] { return String(text.toInt8()); }},
        {"UInt16", [&] { return String(text.toUInt16()); }},
        {"Int16", [&] { return String(text.toInt16()); }},
        {"UInt32", [&] { return String(text.toUInt32()); }},
        {"Int32", [&] { return String(text.toInt32()); }},
        {"UInt64", [&] { return String(text.toUInt64()); }},
        {"Int64", [&] { return String(text.toInt64()); }},
        {"unsigned int", [&] { return String(text.toUnsignedInt()); }},
        {"int", [&] { return String(text.toInt()); }},
        {"Real32", [&] { return String(static_cast<Real64>(text.toReal32())); }},
        {"Real64", [&] { return String(text.toReal64()); }},
        {"bool", [&] { return Bool(text.toBool()).toString(); }}};
    return resultOf(conversions.at(type));
}

TEST(String, convertsToNumbersOrSaysWhyNot) {
    typedef std::vector<std::pair<const char*, const char*>> Pairs; // text and number; null: cannot be converted
    const std::map<std::string, Pairs> cases = {
        {"UInt8", {{"12", "12"}, {"300", nullptr}, {"-1", nullptr}, {"", "0"}}},
        {"Int8", {{"-128", "-128"}, {"-129", nullptr}}},
        {"UInt16", {{"0x10", nullptr}, {"-1", nullptr}}},
        {"Int16", {{"32768", nullptr}}},
        {"UInt32", {{"+5", "5"}, {"12 ", nullptr}, {"12x", nullptr}, {"-1", nullptr}}},
        {"Int32", {{" 12", "12"}, {"010", "10"}, {"2147483648", nullptr}}},
        {"UInt64", {{"-1", "18446744073709551615"}, {"18446744073709551616", nullptr}}},
        {"Int64", {{"2147483648", "2147483648"}, {"9223372036854775808", nullptr}, {"", "0"}}},
        {"unsigned int", {{"-1", nullptr}}},
        {"int", {{"2147483648", nullptr}}},
        {"Real32", {{"1e39", nullptr}}},
        {"Real64", {{"1.5", "1.5"}, {"1.5x", nullptr}, {"1e309", nullptr}, {"", "0"}}},
        {"bool", {{"TrUe", "true"}, {"false", "false"}, {"1", nullptr}, {"", nullptr}}}};
    const auto refusal = [](const std::string& text, const std::string& type) {
        return "StringConversionException: Unable to convert \"" + text + "\" into " + type;
    };
    for (const auto& type : cases) {
        for (const auto& pair : type.second) {
            EXPECT_EQ(converted(type.first, pair.first), pair.second ? pair.second : refusal(pair.first, type.first));
        }
        EXPECT_EQ(converted(type.first, String()), refusal("", type.first)) << "without a buffer";
    }
    EXPECT_EQ(String("0x10").toUInt32(16), 16U);
}

TEST(String, comparesAndSearches) {
    const String text("Hello, hello");
    const String none;
    EXPECT_TRUE(text.startsWith("Hello") && text.startsWith(text) && text.endsWith(text) && text.startsWith('H') &&
                none.startsWith(""));
    EXPECT_TRUE(text.startsWith("hello", String::E_CASE_INSENSITIVE));
    EXPECT_FALSE(text.startsWith("hello") || text.startsWith("") || none.startsWith('H'));
    EXPECT_FALSE(text.startsWith("Hello, hello, hello") || text.endsWith(""));
    EXPECT_TRUE(text.endsWith("hello") && text.endsWith("HELLO", String::E_CASE_INSENSITIVE) && text.endsWith('o'));
    EXPECT_TRUE(String("").endsWith("") && none == String("") && none.isSpaces() && String(" \t\n").isSpaces());
    EXPECT_FALSE(String(" x").isSpaces() || String("caf\xC3\xA9").equals("CAF\xC3\x89"));
    EXPECT_TRUE(String("caf\xC3\xA9").equalsIgnoreCase("CAF\xC3\x89"));
    EXPECT_TRUE(String("a") < String("b") && !("b" < String("a")) && String("a") < "\xC3");
    const size_t places[][2] = {{text.indexOf('l'), 2},
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
                                {String("\xC3\xA9z").UTF8Length(), 2}};
    for (const auto& place : places) {
        EXPECT_EQ(place[0], place[1]) << &place - places;
    }
}

// The sum is that of Python 3.11's str.casefold (Unicode 14): FNV-1a over three code points, padded with 0, for each
// code point but the surrogates.
TEST(String, foldsEveryCodePoint) {
    UInt64 sum = 0xCBF29CE484222325U;
    for (UInt32 codePoint = 0; codePoint < 0x110000; ++codePoint) {
        if (codePoint < 0xD800 || codePoint >= 0xE000) {
            for (const UInt32 folded : foldCase(codePoint)) {
                sum = (sum ^ folded) * 0x100000001B3U;
            }
        }
    }
    EXPECT_EQ(sum, 0xDDD5D266BF9A888DU);
}

TEST(String, takesTextApart) {
    const std::pair<String, const char*> pieces[] = {{String("abc").substring(1), "bc"},
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
                                                     {'a' + String(), "a"}};
    for (const auto& [piece, wanted] : pieces) {
        EXPECT_STREQ(piece.c_str(), wanted);
    }
    constexpr auto kDiscard = String::E_DISCARD_DELIMITERS;
    constexpr auto kReturn = String::E_RETURN_DELIMITERS;
    constexpr auto kSkip = String::E_SKIP_EMPTY_TOKENS;
    constexpr auto kEmpty = String::E_RETURN_EMPTY_TOKENS;
    typedef std::tuple<const char*, const char*, String::EReturnDelimitersFlag, String::EEmptyTokenReturnFlag,
                       const char*>
        Case;
    const Case cases[] = {{" a b\tc ", " \t", kDiscard, kSkip, "[a][b][c]"},
                          {"a,,b", ",", kDiscard, kSkip, "[a][b]"},
                          {"a,,b", ",", kDiscard, kEmpty, "[a][][b]"},
                          {",a,", ",", kDiscard, kEmpty, "[a]"},
                          {"a,b", ",", kReturn, kSkip, "[a][,][b]"},
                          {"a,,b", ",", String::E_RETURN_TOKENS, kEmpty, "[a][,][][,][b]"},
                          {"", ",", kReturn, kEmpty, ""},
                          {"a,b", nullptr, kDiscard, kSkip, "[a,b]"}};
    for (const auto& [text, delimiters, returned, empty, tokens] : cases) {
        EXPECT_EQ(joined(String(text).tokenize(delimiters, returned, empty)), tokens) << text;
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
}

} // namespace
