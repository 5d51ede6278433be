// The digit bins: how texts lie in the tables' rows.
#include "ModuleTest.hpp"
#include "PropertyCases.hpp"
#include "QTX_CDRServiceAccessBinImpl.hpp"
#include "QTX_CDRServicePrefixBinImpl.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kPrefixEntry = "CDR/CDRService/PREFIX BIN";
constexpr const char* kAccessEntry = "CDR/CDRService/ACCESS BIN";
const std::string kPrefix = "QTX_CDRServicePrefixBin.InstanceID=\"CDRServicePrefixBin_7\"";
const std::string kAccess = "QTX_CDRServiceAccessBin.InstanceID=\"CDRServiceAccessBin_2\"";
const std::string kOtherPrefixes = "0102030405060708";
const std::string kOtherAccess = "09080706050f";

struct SetCase {
    const char* property;
    const char* value;
    const char* row;   ///< what the row then holds; "" when the value is refused
    const char* ended; ///< the request's failure
};

TEST_F(ModuleTest, SetsARowOfABinAndLeavesTheOthers) {
    const std::vector<SetCase> cases = {
        {"PrefixBin", "", "0c0c0c0c0c0c0c0c", ""},
        {"PrefixBin", "12345678", "0102030405060708", ""},
        {"PrefixBin", "90", "09000c0c0c0c0c0c", ""},
        {"PrefixBin", "12a", "", "1 304 QTX_CDRServicePrefixBinProvider 301"},
        {"PrefixBin", "1234567\xc3", "", "1 304 QTX_CDRServicePrefixBinProvider 301"},
        {"AccessBin", "123", "0102030c0c0f", ""}, // the suppress count stays
        {"AccessBin", "", "0c0c0c0c0c0f", ""},
        {"AccessBin", "1234x", "", "1 304 QTX_CDRServiceAccessBinProvider 301"},
        {"SuppressBin", "16", "090807060510", ""},
        {"SuppressBin", "", "090807060500", ""},
        {"SuppressBin", "7", "090807060507", ""},
        {"SuppressBin", "17", "", "1 304 QTX_CDRServiceAccessBinProvider 301"},
        {"SuppressBin", "-1", "", "1 304 QTX_CDRServiceAccessBinProvider 301"},
    };
    for (const SetCase& c : cases) {
        platform.put(kPrefixEntry, binEntry(8, kOtherPrefixes, -1, ""));
        platform.put(kAccessEntry, binEntry(5, kOtherAccess, -1, ""));
        platform.forget();
        const bool prefix = c.property == std::string("PrefixBin");
        EXPECT_EQ(set(prefix ? kPrefix : kAccess, c.property, c.value).text(), c.ended) << c.property << c.value;
        const std::string expected = prefix ? binEntry(8, kOtherPrefixes, *c.row != '\0' ? 7 : -1, c.row)
                                            : binEntry(5, kOtherAccess, *c.row != '\0' ? 2 : -1, c.row);
        EXPECT_EQ(platform.entry(prefix ? kPrefixEntry : kAccessEntry), expected) << c.property << c.value;
        const bool suppress = c.property == std::string("SuppressBin");
        const std::vector<std::string> refusal = {suppress ? "2 4 -1 AssignDigits error"
                                                           : "2 4 -1 CheckAllDigits error"};
        EXPECT_EQ(platform.log, *c.row != '\0' ? std::vector<std::string>() : refusal) << c.property << c.value;
        EXPECT_THAT(platform.calls("osQueue"), IsEmpty());
    }
}

TEST_F(ModuleTest, ShowsTheDigitsOfABinUpToTheFirstThatIsNone) {
    struct {
        const char* row;
        const char* shown;
    } const cases[] = {{"0c01020304050607", ""},
                       {"01ff030405060708", "1"},
                       {"0a0b0c0101010101", ":;"},
                       {"0908070605040302", "98765432"}};
    for (const auto& c : cases) {
        platform.put(kPrefixEntry, binEntry(8, kOtherPrefixes, 7, c.row));
        EXPECT_EQ(shown(get(kPrefix), "PrefixBin"), c.shown);
    }
    platform.put(kAccessEntry, binEntry(5, kOtherAccess, 2, "0908070605ff"));
    EXPECT_EQ(shown(get(kAccess), "AccessBin"), "98765");
    EXPECT_EQ(shown(get(kAccess), "SuppressBin"), "255");
}

// After a failed read a set starts from an empty table, without a word in the log.
TEST_F(ModuleTest, RebuildsTheTableAfterAFailedRead) {
    platform.put(kAccessEntry, binEntry(5, kOtherAccess, -1, ""));
    platform.fail("ZpoGetRegEntryBinary", ZPO_REG_DEVICE_ERROR, kAccessEntry);
    EXPECT_EQ(set(kAccess, "AccessBin", "1").text(), "");
    EXPECT_EQ(platform.entry(kAccessEntry), binEntry(5, kEmptyAccess, 2, "010c0c0c0c00"));
    EXPECT_EQ(set(kAccess, "SuppressBin", "2").text(), "");
    EXPECT_EQ(platform.entry(kAccessEntry), binEntry(5, kEmptyAccess, 2, "0c0c0c0c0c02"));
    EXPECT_THAT(platform.log, IsEmpty());
}

TEST_F(ModuleTest, KeepsTheFirstOfTwoBinChangesWhenTheSecondIsRefused) {
    const OpenWBEM::CIMInstance both =
        changed(kAccess, {{"AccessBin", value("string", "55")}, {"SuppressBin", value("string", "100")}});
    EXPECT_EQ(failure([&] { modify(both); }).code, 4);
    EXPECT_EQ(shown(get(kAccess), "AccessBin"), "55");
}

// Objects of their own, past the provider's checks.
class BinObjectTest : public ModuleTest {
  protected:
    QTX_CDRServicePrefixBinImpl prefix{"p", 0};
    QTX_CDRServiceAccessBinImpl access{"a", 4};
    QualifierArray qualifiers;
    std::string text;
};

TEST_F(BinObjectTest, CutsATextThatIsTooLong) {
    EXPECT_EQ(prefix.setPrefixBin("123456789"), 0);
    EXPECT_EQ(prefix.getPrefixBin(text, qualifiers), 0);
    EXPECT_EQ(text, "12345678");
    EXPECT_EQ(access.setAccessBin("12345x"), 0) << "only the first five characters are looked at";
    EXPECT_EQ(access.setSuppressBin("272"), 0) << "272 is 16 in its low 8 bits";
    EXPECT_EQ(access.getSuppressBin(text, qualifiers), 0);
    EXPECT_EQ(text, "16");
    EXPECT_EQ(access.setSuppressBin("99999999999999999999"), 301);
    EXPECT_TRUE(qualifiers.empty());
}

TEST_F(BinObjectTest, GivesAOneCharacterTextOfCodeZeroWhenUnreadable) {
    EXPECT_EQ(prefix.getPrefixBin(text, qualifiers), 100);
    EXPECT_EQ(text, std::string(1, '\0'));
    EXPECT_EQ(access.getSuppressBin(text = "", qualifiers), 100);
    EXPECT_EQ(text, std::string(1, '\0'));
}

TEST_F(BinObjectTest, EncodesAndDecodesRows) {
    char row[6] = {9, 9, 9, 9, 9, 9};
    EXPECT_EQ(access.SetBinDigit(row, "1x234567", 5), 8);
    EXPECT_THAT(row, ElementsAre(1, 12, 12, 12, 12, 9));
    EXPECT_STREQ(access.GetBinDigit(row, 5), "1");
    const std::string long_row(64, '\1');
    EXPECT_EQ(std::string(prefix.GetBinDigit(const_cast<char*>(long_row.data()), 64)).size(), 19U)
        << "no more than the buffer takes";

    char digits[] = "12345";
    EXPECT_EQ(prefix.CheckAllDigits(digits, 3), 1);
    EXPECT_STREQ(digits, "123");
    char none[] = "";
    EXPECT_EQ(prefix.CheckAllDigits(none, 3), 1);

    unsigned char number = 200;
    EXPECT_EQ(access.AssignDigits(nullptr, 0, 16, &number), -1);
    EXPECT_EQ(access.AssignDigits(digits, 0, 16, nullptr), -1);
    EXPECT_EQ(access.AssignDigits(digits, 124, 200, &number), -1);
    EXPECT_EQ(number, 200);
    EXPECT_EQ(access.AssignDigits(digits, 123, 123, &number), 0);
    EXPECT_EQ(number, 123);
}

} // namespace
