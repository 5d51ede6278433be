// The digit bins: how texts lie in the tables' rows.
#include "ModuleTest.hpp"
#include "QTX_CDRServiceAccessBinImpl.hpp"
#include "QTX_CDRServicePrefixBinImpl.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kPrefixEntry = "CDR/CDRService/PREFIX BIN";
constexpr const char* kAccessEntry = "CDR/CDRService/ACCESS BIN";
constexpr const char* kPrefix = "QTX_CDRServicePrefixBin.InstanceID=\"CDRServicePrefixBin_7\"";
constexpr const char* kAccess = "QTX_CDRServiceAccessBin.InstanceID=\"CDRServiceAccessBin_2\"";
constexpr const char* kOtherPrefixes = "0102030405060708";
constexpr const char* kOtherAccess = "09080706050f";

class DigitBinTest : public ModuleTest {
  protected:
    void fill(const std::string& prefixRow, const std::string& accessRow) {
        platform.put(kPrefixEntry, prefixes(prefixRow));
        platform.put(kAccessEntry, accesses(accessRow));
    }
    static std::string prefixes(const std::string& row) { return binEntry(8, kOtherPrefixes, 7, row); }
    static std::string accesses(const std::string& row) { return binEntry(5, kOtherAccess, 2, row); }

    // Objects of their own, past the provider's checks.
    QTX_CDRServicePrefixBinImpl prefix{"p", 0};
    QTX_CDRServiceAccessBinImpl access{"a", 4};
    QualifierArray qualifiers;
    std::string text;
};

TEST_F(DigitBinTest, SetsARowAndLeavesTheOthers) {
    const std::string prefixRefused = "1 304 QTX_CDRServicePrefixBinProvider 301";
    const std::string accessRefused = "1 304 QTX_CDRServiceAccessBinProvider 301";
    struct {
        const char *path, *property, *value;
        std::string row; ///< what the row then holds
        std::string ended = "";
        std::vector<std::string> log = {};
    } const cases[] = {
        {kPrefix, "PrefixBin", "", "0c0c0c0c0c0c0c0c"},
        {kPrefix, "PrefixBin", "12345678", "0102030405060708"},
        {kPrefix, "PrefixBin", "90", "09000c0c0c0c0c0c"},
        {kPrefix, "PrefixBin", "12a", kOtherPrefixes, prefixRefused, {"2 4 -1 CheckAllDigits error"}},
        {kPrefix, "PrefixBin", "1234567\xc3", kOtherPrefixes, prefixRefused, {"2 4 -1 CheckAllDigits error"}},
        {kAccess, "AccessBin", "123", "0102030c0c0f"},
        {kAccess, "AccessBin", "", "0c0c0c0c0c0f"},
        {kAccess, "AccessBin", "1234x", kOtherAccess, accessRefused, {"2 4 -1 CheckAllDigits error"}},
        {kAccess, "SuppressBin", "16", "090807060510"},
        {kAccess, "SuppressBin", "", "090807060500"},
        {kAccess, "SuppressBin", "17", kOtherAccess, accessRefused, {"2 4 -1 AssignDigits error"}},
        {kAccess, "SuppressBin", "-1", kOtherAccess, accessRefused, {"2 4 -1 AssignDigits error"}},
    };
    for (const auto& c : cases) {
        fill(kOtherPrefixes, kOtherAccess);
        platform.forget();
        EXPECT_EQ(set(c.path, c.property, c.value).text(), c.ended) << c.property << c.value;
        EXPECT_EQ(platform.entry(kPrefixEntry), prefixes(c.path == kPrefix ? c.row : kOtherPrefixes)) << c.value;
        EXPECT_EQ(platform.entry(kAccessEntry), accesses(c.path == kAccess ? c.row : kOtherAccess)) << c.value;
        EXPECT_EQ(platform.log, c.log);
        EXPECT_THAT(platform.calls("osQueue"), IsEmpty());
    }
}

TEST_F(DigitBinTest, ShowsTheDigitsUpToTheFirstThatIsNone) {
    for (const auto& [row, digits] : {std::pair("0c01020304050607", ""),
                                      {"01ff030405060708", "1"},
                                      {"0a0b0c0101010101", ":;"},
                                      {"0908070605040302", "98765432"}}) {
        fill(row, "0908070605ff");
        EXPECT_EQ(shown(get(kPrefix), "PrefixBin"), digits);
    }
    EXPECT_EQ(shown(get(kAccess), "AccessBin"), "98765");
    EXPECT_EQ(shown(get(kAccess), "SuppressBin"), "255");
}

// After a failed read a set starts from an empty table, without a word in the log.
TEST_F(DigitBinTest, RebuildsTheTableAfterAFailedRead) {
    fill(kOtherPrefixes, kOtherAccess);
    platform.fail("ZpoGetRegEntryBinary", ZPO_REG_DEVICE_ERROR, kAccessEntry);
    EXPECT_EQ(set(kAccess, "AccessBin", "1").text(), "");
    EXPECT_EQ(platform.entry(kAccessEntry), binEntry(5, kEmptyAccess, 2, "010c0c0c0c00"));
    EXPECT_EQ(set(kAccess, "SuppressBin", "2").text(), "");
    EXPECT_EQ(platform.entry(kAccessEntry), binEntry(5, kEmptyAccess, 2, "0c0c0c0c0c02"));
    EXPECT_THAT(platform.log, IsEmpty());
}

TEST_F(DigitBinTest, CutsATextThatIsTooLong) {
    EXPECT_EQ(prefix.setPrefixBin("123456789"), 0);
    EXPECT_EQ(prefix.getPrefixBin(text, qualifiers), 0);
    EXPECT_EQ(text, "12345678");
    EXPECT_EQ(access.setAccessBin("12345x"), 0) << "only the first five characters are looked at";
    EXPECT_EQ(access.setSuppressBin("272"), 0) << "272 is 16 in its low 8 bits";
    EXPECT_EQ(access.getSuppressBin(text, qualifiers), 0);
    EXPECT_EQ(text, "16");
    EXPECT_EQ(access.setSuppressBin("99999999999999999999"), 301);
    platform.put(kAccessEntry, "");
    EXPECT_EQ(access.getSuppressBin(text, qualifiers), 100);
    EXPECT_EQ(text, std::string(1, '\0'));
}

TEST_F(DigitBinTest, EncodesAndDecodesRows) {
    char row[64] = {9, 9, 9, 9, 9, 9};
    EXPECT_EQ(access.SetBinDigit(row, "1x234567", 5), 8);
    EXPECT_EQ(std::string(row, 6), "\1\14\14\14\14\11");
    EXPECT_STREQ(access.GetBinDigit(row, 5), "1");
    std::fill_n(row, 64, '\1');
    EXPECT_EQ(std::string(prefix.GetBinDigit(row, 64)).size(), 19U) << "no more than the buffer takes";

    char digits[] = "12345";
    EXPECT_EQ(prefix.CheckAllDigits(digits, 3), 1);
    EXPECT_STREQ(digits, "123");
    unsigned char number = 200;
    EXPECT_EQ(access.AssignDigits(nullptr, 0, 16, &number), -1);
    EXPECT_EQ(access.AssignDigits(digits, 0, 255, nullptr), -1);
    EXPECT_EQ(access.AssignDigits(digits, 124, 200, &number), -1);
    EXPECT_EQ(number, 200);
    EXPECT_EQ(access.AssignDigits(digits, 123, 123, &number), 0);
    EXPECT_EQ(number, 123);
}

} // namespace
