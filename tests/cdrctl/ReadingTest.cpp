// What is understood and what is shown: addresses, codes, replies, texts.
#include "Support.hpp"
#include "cdrctl/Errors.hpp"
#include "cdrctl/Http.hpp"
#include "cdrctl/Model.hpp"
#include "cdrctl/Reply.hpp"
#include "cdrctl/StatusCodes.hpp"
#include "cdrctl/Text.hpp"

#include <regex>

namespace {

using namespace cdrctl;
using ::testing::ContainsRegex;

TEST(Address, IsReadInEachForm) {
    const auto read = [](const std::string& text) {
        const Address address = Address::parse(text);
        return address.url() + address.target + (address.isLoopback() ? " local" : "");
    };
    EXPECT_EQ(read("device"), "http://device:5988/cimom");
    EXPECT_EQ(read("HTTPS://device/"), "https://device:5989/cimom");
    EXPECT_EQ(read("https://device:1/other"), "https://device:1/other");
    EXPECT_EQ(read("[::1]:80"), "http://[::1]:80/cimom local");
    EXPECT_EQ(read("LocalHost:5"), "http://LocalHost:5/cimom local");
    EXPECT_EQ(read("device:12345"), "http://device:12345/cimom");
    EXPECT_EQ(read("127.0.0.9"), "http://127.0.0.9:5988/cimom local");
    EXPECT_EQ(read("http://[fe80::1]"), "http://[fe80::1]:5988/cimom");
    for (const char* bad : {"", "ftp://device", "device:", "device:http", "http://:80", "device:123456", "device:1x",
                            "user:secret@device"}) {
        EXPECT_THROW(Address::parse(bad), std::invalid_argument) << bad;
    }
}

TEST(StatusCodes, AreExplained) {
    const auto text = [](const char* code) {
        std::string all;
        for (const StatusMeaning& meaning : meaningsOf(code)) {
            all += meaning.source + " " + meaning.name + " " + meaning.text + ";";
        }
        return all;
    };
    const std::string full =
        "platform ZPO_REG_STORE_FULL the registry has reached its largest size, or the disk is full;";
    for (const char* code : {"0x20000B", "0X20000b", "2097163", "zpo_reg_store_full"}) {
        EXPECT_EQ(text(code), full) << code;
    }
    EXPECT_EQ(text("0x300003"), "platform OSA_QUEUE_NOT_FOUND no such queue;");
    EXPECT_EQ(text("4"), "CIM CIM_ERR_INVALID_PARAMETER invalid parameter passed to method;");
    for (const char* none : {"", "0x", "-1", "99999999999", "0x20000Bx", "NO_NAME"}) {
        EXPECT_EQ(text(none), "") << none;
    }
    std::size_t named = 0;
    for (const std::uint32_t group : {0x200000U, 0x210000U, 0x220000U, 0x230000U, 0x300000U}) {
        for (std::uint32_t number = group; number < group + 100; ++number) {
            const auto meanings = meaningsOf(std::to_string(number));
            if (!meanings.empty()) {
                ++named;
                EXPECT_EQ(number, meaningsOf(meanings.front().name).at(0).number);
            }
        }
    }
    EXPECT_GT(named, 20U);
    EXPECT_EQ(moduleStatusIn("general error (301)")->number, 301U);
    EXPECT_FALSE(moduleStatusIn("general error (1301)").has_value());
}

std::string reply(const std::string& content) {
    return R"(<CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLERSP>)"
           R"(<IMETHODRESPONSE NAME="X">)" +
           content + "</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>";
}

TEST(Reply, IsReadWhateverComes) {
    const auto instances = readInstances(
        reply(R"(<IRETURNVALUE><VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME="C"><KEYBINDING NAME="K">)"
              "<KEYVALUE VALUETYPE=\"string\">a\"\n</KEYVALUE></KEYBINDING></INSTANCENAME><INSTANCE CLASSNAME=\"C\">"
              R"(<PROPERTY NAME="k" TYPE="string"><VALUE>a</VALUE></PROPERTY><PROPERTY NAME="N" TYPE="uint8">)"
              R"(<QUALIFIER NAME="Applicable" TYPE="boolean"><VALUE>FALSE</VALUE></QUALIFIER></PROPERTY></INSTANCE>)"
              "</VALUE.NAMEDINSTANCE></IRETURNVALUE>"));
    ASSERT_EQ(instances.size(), 1U);
    EXPECT_EQ(instances[0].nameText, "C.K=\"a\\\"%0A\"") << "fit for a header field";
    EXPECT_TRUE(instances[0].find("K")->is("Key"));
    EXPECT_FALSE(instances[0].find("n")->applies());
    EXPECT_EQ(instances[0].find("n")->value, std::nullopt);
    const std::string name =
        R"(<INSTANCENAME CLASSNAME="C"><KEYBINDING NAME="A"><KEYVALUE VALUETYPE="numeric">1</KEYVALUE>)"
        R"(</KEYBINDING><KEYBINDING NAME="B"><KEYVALUE VALUETYPE="string">%~\</KEYVALUE>)"
        "</KEYBINDING></INSTANCENAME>";
    const auto several = readInstances(reply(
        "<IRETURNVALUE><VALUE.NAMEDINSTANCE>" + name +
        R"(<INSTANCE CLASSNAME="C"><PROPERTY.ARRAY NAME="L" TYPE="string">)"
        "<VALUE.ARRAY><VALUE>a</VALUE><VALUE>b</VALUE></VALUE.ARRAY></PROPERTY.ARRAY></INSTANCE></VALUE.NAMEDINSTANCE>"
        "<VALUE.NAMEDINSTANCE>" +
        name + R"(<INSTANCE CLASSNAME="D"/></VALUE.NAMEDINSTANCE></IRETURNVALUE>)"));
    ASSERT_EQ(several.size(), 2U);
    EXPECT_EQ(several[1].nameText, "C.A=1,B=\"%25~\\\\\"");
    EXPECT_EQ(several[1].nameXml, name);
    EXPECT_EQ(several[0].value("l"), "a, b");
    for (const std::string& bad :
         {std::string(), std::string("<CIM>"), std::string("<CIM></CIM>"), reply("<CLASS/>"),
          std::string("<!DOCTYPE x [<!ENTITY e \"e\">]><CIM>&e;</CIM>"), std::string(99, '<')}) {
        EXPECT_THROW(readClass(bad), ConnectError) << bad;
    }
    EXPECT_THROW(requireSuccess(reply("<ERROR CODE=\"4\" DESCRIPTION=\"no\"/>")), CimFault);
}

TEST(Labels, AreThoseThatTheClassGives) {
    Property property;
    property.qualifiers = {{"ValueMap", {"5", "7", "9"}}, {"Values", {"Five pieces", "Seven"}}};
    EXPECT_EQ(labelOf(property, "7"), "Seven");
    EXPECT_EQ(labelOf(property, "9") + labelOf(property, "1"), "") << "no label, no such value";
    EXPECT_EQ(valueMeant(property, "FIVE"), "5");
    EXPECT_EQ(valueMeant(property, "pieces"), "pieces");
}

TEST(Text, IsSafeForATerminal) {
    EXPECT_EQ(printable("gr\xC3\xBC\xC3\x9F\n\x1b[2J\xC2\x9B\xFF\xE2\x80\xAE"),
              "gr\xC3\xBC\xC3\x9F \xEF\xBF\xBD[2J\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    const auto isShown = [](const char* character) { return printable(character) == character; };
    // the marks of direction, the controls, and what stands just outside of each range
    for (const char* control :
         {"\x01", "\x1F", "\x7F", "\u0080", "\u009F", "\u200E", "\u200F", "\u202A", "\u202E", "\u2066", "\u2069"}) {
        EXPECT_FALSE(isShown(control)) << control;
    }
    for (const char* shown : {" ", "~", "\u00A0", "\u200D", "\u2010", "\u2029", "\u202F", "\u2065", "\u206A"}) {
        EXPECT_TRUE(isShown(shown)) << shown;
    }
}

TEST(Text, IsLaidOutAndCounted) {
    Table table;
    EXPECT_TRUE(table.empty());
    table.row({"gr\xC3\xBC\xC3\x9F", "x", ""});
    table.row({"a", "", "y"});
    table.row({"longer"});
    EXPECT_EQ(" gr\xC3\xBC\xC3\x9F    x\n a          y\n longer\n", table.text(" "));
    const std::pair<double, const char*> sizes[] = {
        {0, "0"},        {999, "999"},      {1000, "1.0 kB"},   {999900, "999.9 kB"},
        {1e6, "1.0 MB"}, {2.5e9, "2.5 GB"}, {5e12, "5000.0 GB"}};
    for (const auto& [bytes, text] : sizes) {
        EXPECT_EQ(text, bytesText(bytes));
    }
    const std::pair<double, const char*> bars[] = {
        {-1, "░░░░"}, {0.12, "░░░░"}, {0.13, "█░░░"}, {0.5, "██░░"}, {2, "████"}};
    for (const auto& [share, text] : bars) {
        EXPECT_EQ(text, bar(share, 4));
    }
    const std::tuple<const char*, const char*, std::size_t> distances[] = {
        {"", "", 0},    {"abc", "ABC", 0}, {"abc", "abxc", 1}, {"abc", "ac", 1}, {"kitten", "sitting", 3},
        {"", "abc", 3}, {"ab", "ba", 2}};
    for (const auto& [one, other, distance] : distances) {
        EXPECT_EQ(distance, editDistance(one, other)) << one << other;
        EXPECT_EQ(distance, editDistance(other, one)) << one << other;
    }
}

/// A new setting of the schema is to be offered by the shell, too.
TEST(Completion, KnowsEachSetting) {
    const std::string schema = support::contentOf(SCHEMA);
    const std::regex setting("\\[Write,[^\\]]*\\]\\s+\\w+ (\\w+);");
    const std::vector<std::string> names(std::sregex_token_iterator(schema.begin(), schema.end(), setting, 1), {});
    EXPECT_EQ(names.size(), support::countOf("[Write,", schema));
    for (const std::string& name : names) {
        EXPECT_THAT(support::contentOf(COMPLETION), ContainsRegex("[ \n]" + name + "= "));
    }
}

} // namespace
