// The digit bins: what a change of one row leaves alone, and the encoding operations.
#include "ModuleTest.hpp"
#include "QTX_CDRServiceAccessBinImpl.hpp"
#include "QTX_CDRServicePrefixBinImpl.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DigitBinTest : public ModuleTest {
  protected:
    // Objects of their own, past the provider's checks.
    QTX_CDRServicePrefixBinImpl prefix{"p", 0};
    QTX_CDRServiceAccessBinImpl access{"a", 4};
    QualifierArray qualifiers;
    std::string text;
};

TEST_F(DigitBinTest, ChangesOneRowAndLogsRefusals) {
    constexpr const char* kAccess = "09080706050f";
    const std::string prefixPath = binPath("CDRServicePrefixBin", 7);
    const std::string accessPath = binPath("CDRServiceAccessBin", 0);
    platform.put("CDR/CDRService/PREFIX BIN", binEntry(8, "0102030405060708", 7, "0102030405060708"));
    platform.put("CDR/CDRService/ACCESS BIN", binEntry(5, kAccess, 0, kAccess));
    EXPECT_EQ(set(prefixPath, "PrefixBin", "90"), "");
    EXPECT_EQ(platform.entry("CDR/CDRService/PREFIX BIN"), binEntry(8, "0102030405060708", 7, "09000c0c0c0c0c0c"));
    EXPECT_EQ(set(accessPath, "AccessBin", "1"), "");
    EXPECT_EQ(platform.entry("CDR/CDRService/ACCESS BIN"), binEntry(5, kAccess, 0, "010c0c0c0c0f"));
    EXPECT_EQ(set(accessPath, "SuppressBin", "2"), "");
    EXPECT_EQ(platform.entry("CDR/CDRService/ACCESS BIN"), binEntry(5, kAccess, 0, "010c0c0c0c02"));
    set(prefixPath, "PrefixBin", "x");
    set(accessPath, "AccessBin", "x");
    set(accessPath, "SuppressBin", "17");
    const std::string digits = "2 4 -1 CheckAllDigits error";
    EXPECT_THAT(platform.log, ElementsAre(digits, digits, "2 4 -1 AssignDigits error"));
    // After a failed read a set starts from an empty table, without a word in the log.
    platform.forget();
    platform.fail("ZpoGetRegEntryBinary", ZPO_REG_DEVICE_ERROR);
    EXPECT_EQ(set(accessPath, "SuppressBin", "2"), "");
    EXPECT_EQ(platform.entry("CDR/CDRService/ACCESS BIN"), binEntry(5, kEmptyAccess, 0, "0c0c0c0c0c02"));
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
    platform.put("CDR/CDRService/ACCESS BIN", "");
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
    EXPECT_EQ(access.AssignDigits(digits, 124, 200, &number), -1);
    EXPECT_EQ(number, 200);
    EXPECT_EQ(access.AssignDigits(digits, 123, 123, &number), 0);
    EXPECT_EQ(number, 123);
}

} // namespace
