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
    EXPECT_EQ(read("127.0.0.9"), "http://127.0.0.9:5988/cimom local");
    EXPECT_EQ(read("http://[fe80::1]"), "http://[fe80::1]:5988/cimom");
    for (const char* bad : {"", "ftp://device", "device:", "device:http", "http://:80", "user:secret@device"}) {
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
    for (const std::string& bad :
         {std::string(), std::string("<CIM>"), std::string("<CIM></CIM>"), reply("<CLASS/>"),
          std::string("<!DOCTYPE x [<!ENTITY e \"e\">]><CIM>&e;</CIM>"), std::string(99, '<')}) {
        EXPECT_THROW(readClass(bad), ConnectError) << bad;
    }
    EXPECT_THROW(requireSuccess(reply("<ERROR CODE=\"4\" DESCRIPTION=\"no\"/>")), CimFault);
}

TEST(Text, IsSafeForATerminal) {
    EXPECT_EQ(printable("gr\xC3\xBC\xC3\x9F\n\x1b[2J\xC2\x9B\xFF\xE2\x80\xAE"),
              "gr\xC3\xBC\xC3\x9F \xEF\xBF\xBD[2J\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
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
