#include "LibraryTest.hpp"
#include "OW_UTF8Utils.hpp"

using namespace OpenWBEM;

static_assert(std::is_convertible<bool, Bool>::value && !std::is_convertible<const char*, Bool>::value, "");
static_assert(std::is_convertible<UInt16, Char16>::value && !std::is_convertible<String, Char16>::value, "");
static_assert(std::is_same<UInt64, unsigned long>::value || sizeof(long) == 4, "");

namespace {

template <class T>
std::string printed(const T& value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

// The binary form of a value, read back from it.
template <class T>
std::string writtenAndReadBack(const T& value) {
    std::stringstream stream;
    value.writeObject(stream);
    T back;
    back.readObject(stream);
    EXPECT_TRUE(back == value);
    EXPECT_NE(thrownBy([&] { back.readObject(stream); }), "nothing") << "the stream is at its end";
    return stream.str();
}

TEST(Bool, behavesLikeATruthValue) {
    EXPECT_FALSE(Bool());
    EXPECT_TRUE(Bool(true) == true && Bool(false) != true && Bool(false) < Bool(true));
    EXPECT_EQ(printed(Bool(true)), "true");
    EXPECT_EQ(Bool(false).toString(), "false");
    EXPECT_EQ(writtenAndReadBack(Bool(true)) + writtenAndReadBack(Bool()), std::string("\1\0", 2));
}

TEST(Char16, countsComparesAndPrints) {
    const std::tuple<Char16, unsigned, const char*, const char*> cases[] = {
        {Char16(), 0, "\\x0000", ""},
        {Char16('A'), 65, "A", "A"},
        {Char16('\xE9'), 0xFFE9, "\\xFFE9", "\xEF\xBF\xA9"},
        {Char16(UInt8(0xE9)), 0xE9, "\\x00E9", "\xC3\xA9"},
        {Char16(String("\xE2\x82\xAC tail")), 0x20AC, "\\x20AC", "\xE2\x82\xAC"},
        {Char16(String("\xF0\x9F\x98\x80")), 0xFFFF, "\\xFFFF", "\xEF\xBF\xBF"},
        {Char16(Int32(0x10041)), 65, "A", "A"},
        {Char16(Real64(65.9)), 65, "A", "A"},
        {Char16(Real64(1e10)), 0, "\\x0000", ""}};
    for (const auto& [made, value, printedAs, utf8] : cases) {
        EXPECT_EQ(made.getValue(), value);
        EXPECT_EQ(made.toString(), utf8);
        EXPECT_EQ(printed(made), printedAs);
    }
    Char16 c('a');
    c += 2;
    EXPECT_TRUE(c == 'c' && 'c' == c && 99 == c && c == Char16('c') && c > Char16('b') && 'b' < c && c && !Char16());
    EXPECT_EQ((c - Char16('a')).getValue(), 2);
    EXPECT_EQ((c * Char16('a') / Char16('a') + Char16(UInt16(1))).getValue(), 'd');
    EXPECT_EQ(writtenAndReadBack(Char16(UInt16(0x20AC))), "\x20\xAC");
}

TEST(UTF8Utils, decodesWhatIsWellFormedOnly) {
    const std::pair<const char*, UInt32> cases[] = {{"A", 'A'},
                                                    {"\xC3\xA9", 0xE9},
                                                    {"\xE2\x82\xAC", 0x20AC},
                                                    {"\xF0\x9F\x98\x80", 0x1F600},
                                                    {"\xF4\x8F\xBF\xBF", 0x10FFFF},
                                                    {"\xF4\x90\x80\x80", 0xFFFFFFFF}, // beyond the last code point
                                                    {"\xC0\x80", 0xFFFFFFFF},         // longer than needed
                                                    {"\xE0\x80\x80", 0xFFFFFFFF},
                                                    {"\xED\xA0\x80", 0xFFFFFFFF}, // half of a pair
                                                    {"\x80", 0xFFFFFFFF},         // begins nothing
                                                    {"\xE2\x82", 0xFFFFFFFF},     // ends too soon
                                                    {"\xFF", 0xFFFFFFFF}};
    for (const auto& [text, codePoint] : cases) {
        EXPECT_EQ(UTF8Utils::UTF8toUCS4(text), codePoint) << text;
        if (codePoint != 0xFFFFFFFF) {
            EXPECT_EQ(UTF8Utils::UCS4toUTF8(codePoint), text);
        }
    }
    EXPECT_EQ(UTF8Utils::UTF8toUCS2("\xF0\x9F\x98\x80"), 0xFFFF);
    EXPECT_EQ(UTF8Utils::UCS4toUTF8(0x110000), "");
    EXPECT_EQ(UTF8Utils::charCount("a\xC3\xA9\xE2\x82\xAC"), 3U);
}

TEST(UTF8Utils, comparesWithoutCase) {
    const std::tuple<const char*, const char*, int> cases[] = {
        {"abc", "ABC", 0},
        {"abc", "ABD", 'c' - 'D'}, // of the unfolded bytes
        {"ab", "abc", -'c'},
        {"_", "a", '_' - 'a'},
        {"A", "_", 'A' - '_'},
        {"STRASSE", "stra\303\237e", 0}, // sharp s
        {"\xEF\xAC\x83", "FFI", 0},      // a ligature of three
        {"k", "\xE2\x84\xAA", 0},        // the Kelvin sign
        {"\xC3\xA9", "e", 0xC3 - 'e'},
        {"\xC3\xA9", "\xC3\xA8", 1},
        {"", "", 0},
        {"\xC3\xA9", "\xC3\x89", 0},                 // e acute
        {"\xD0\xB6", "\xD0\x96", 0},                 // Cyrillic zhe
        {"\xCF\x82", "\xCE\xA3", 0},                 // final sigma
        {"\xC3\x97", "\xC3\xB7", 0x97 - 0xB7},       // multiplication and division signs lie among letters
        {"\xC4\x80", "\xC4\x81", 0},                 // paired letters
        {"\xC4\x81", "\xC4\x82", -1},                // neighbours of two pairs
        {"\xF0\x90\x90\x80", "\xF0\x90\x90\xA8", 0}, // Deseret
        {"a\xFF", "A\xFF", 0},
        {"a\xFF", "a\xFE", 1},
        {"\xE2\x82", "\xE2\x82\xAC", -0xAC}, // cut short
    };
    for (const auto& [x, y, difference] : cases) {
        EXPECT_EQ(UTF8Utils::compareToIgnoreCase(x, y), difference) << x << " " << y;
        EXPECT_EQ(UTF8Utils::compareToIgnoreCase(y, x), -difference) << x << " " << y;
    }
}

TEST(UTF8Utils, convertsWholeTexts) {
    const Array<UInt16> units = UTF8Utils::StringToUCS2("a\xE2\x82\xAC");
    ASSERT_EQ(units.size(), 2U);
    EXPECT_EQ(units[1], 0x20AC);
    EXPECT_EQ(UTF8Utils::UCS2ToString(units), "a\xE2\x82\xAC");
    const char* bytes = reinterpret_cast<const char*>(&units[0]);
    EXPECT_EQ(UTF8Utils::UCS2ToString(Array<char>(bytes, bytes + 4)), "a\xE2\x82\xAC");
    EXPECT_EQ(UTF8Utils::UCS2ToString(bytes, 3), "a");
    EXPECT_EQ(UTF8Utils::StringToUCS2("").size(), 0U);
    for (const char* bad : {"a\xFF", "\xF0\x9F\x98\x80", "\xE2\x82"}) {
        EXPECT_EQ(thrownBy([&] { UTF8Utils::StringToUCS2(bad); }).find("InvalidUTF8Exception: "), 0U);
    }
}

TEST(Format, insertsItsArguments) {
    const std::pair<Format, const char*> cases[] = {
        {Format("%2 and %1, %2 again", "one", 2), "2 and one, 2 again"},
        {Format("%1%% %1", String("x")), "x% x"},
        {Format("%1", true), "1"},
        {Format("%1", UInt8(65)), "A"},
        {Format("%1", static_cast<const char*>(nullptr)), ""},
        {Format("%1%2%3%4%5%6%7%8%9", 1, 2, 3, 4, 5, 6, 7, 8, "9"), "123456789"},
        {Format("%10", "ten"), "ten0"},
        {Format("%1", String("%1")), "%1"},
        {Format("%1 %2 %3|", 1, "b"),
         "1 b \n*** Parameter specifier too large.\n*** Error in format string at \"3|\".\n"},
        {Format("a %zb%1", 1), "a \n*** Error in format string at \"zb%1\".\n"},
        {Format("%0", 1), "\n*** Error in format string at \"0\".\n"},
        {Format("a %", 1), "a \n*** Error in format string at \"%\".\n"}};
    for (const auto& [format, text] : cases) {
        EXPECT_STREQ(format.c_str(), text);
    }
    const String converted = cases[0].first;
    EXPECT_EQ(printed(cases[0].first), converted.c_str());
}

} // namespace
