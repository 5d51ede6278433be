// What a dump shows of bodies with secrets in them.
#include "cimserver/cimxml/Masking.hpp"

#include <gtest/gtest.h>

using namespace cimserver;

namespace {

http::ShownBodies masked(const std::string& request, const std::string& response = "") {
    http::Request asked;
    asked.body = request;
    http::Response answer;
    answer.body = response;
    return cimxml::maskedBodies(asked, answer, cimxml::XmlLimits());
}

std::string nested(std::size_t depth) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) {
        text = "<A>" + text + "</A>";
    }
    return text;
}

TEST(Masking, TakesSecretsOutAndLeavesTheRest) {
    const std::string secret = "<PROPERTY NAME=\"Password\"><VALUE>x</VALUE></PROPERTY>";
    const std::string gone = "<PROPERTY NAME=\"Password\">***</PROPERTY>";
    // clang-format off
    const std::pair<std::string, std::string> cases[] = {
        {"<A>http:&#47;/ann:x@h</A>", "<A>http://ann:x@h</A>"}, // as the dump recognizes it
        {"<A B='c>d'>text &amp; <B/></A>", "<A B='c>d'>text &amp; <B/></A>"},
        {"<A>" + secret + "<VALUE>y</VALUE></A>", "<A>" + gone + "<VALUE>y</VALUE></A>"},
        {"<PROPERTY NAME=\"UserName\"><VALUE>x</VALUE></PROPERTY>", "<PROPERTY NAME=\"UserName\"><VALUE>x</VALUE></PROPERTY>"},
        {"<property NAME='oldPASSWORD'>x</property>", "<property NAME=\"oldPASSWORD\">***</property>"},
        {"<PROPERTY NAME=\"P&#97;ssword\"><VALUE>x</VALUE></PROPERTY>", gone},
        {"<PROPERTY.ARRAY NAME=\"Passwords\"><VALUE>x</VALUE></PROPERTY.ARRAY>", "<PROPERTY.ARRAY NAME=\"Passwords\">***</PROPERTY.ARRAY>"},
        {"<PARAMVALUE NAME=\"password\"><VALUE>x</VALUE></PARAMVALUE>", "<PARAMVALUE NAME=\"password\">***</PARAMVALUE>"},
        {"<KEYBINDING NAME=\"Password\"><KEYVALUE>x</KEYVALUE></KEYBINDING>", "<KEYBINDING NAME=\"Password\">***</KEYBINDING>"},
        {"<VALUE>&lt;PROPERTY NAME=\"Password\"&gt;x</VALUE>", "<VALUE>***</VALUE>"},
        {"<VALUE><![CDATA[<PROPERTY NAME=\"P&#97;ssword\">x]]></VALUE>", "<VALUE>***</VALUE>"},
        {"<VALUE>&lt;V&gt;&amp;lt;P NAME='P&amp;amp;#97;ssword'&gt;x&lt;/V&gt;</VALUE>", "<VALUE>***</VALUE>"}, // inside another one
        {"<VALUE>&lt;V&gt;&amp;lt;P NAME='Pass&lt;!---->word'&gt;x&lt;/V&gt;</VALUE>", "<VALUE>***</VALUE>"},
        {"<?xml version=\"1.0\"?><A><!-- don't " + secret + " --><?x " + secret + "?>" + secret + "</A>", "<A>" + gone + "</A>"},
        {"<A><!-- " + secret + " --><B/></A>", "<A><B/></A>"},
        {"<PROPERTY NAME=\"Password\"><VALUE><![CDATA[</PROPERTY>x]]></VALUE></PROPERTY>", gone},
        // Not well-formed: nobody can tell where the secret ends.
        {"<PROPERTY NAME=\"Password\"><VALUE>a<b</VALUE>", "***"},
        {"<PROPERTY NAME=\"Password x", "***"},
        {"Password=x", "***"},
        {std::string("<\0V\0>\0x\0", 8), "***"},
        {nested(64), nested(64)},
        {"", ""},
    };
    // clang-format on
    EXPECT_EQ(masked(nested(65)).request, "***") << "deeper than the limit";
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(masked(text).request, expected);
        EXPECT_EQ(masked("<A/>", text).response, text == "Password=x" ? text : expected)
            << "plain texts are the server's";
    }
}

TEST(Masking, FollowsAPropertyThatIsNamedApartFromItsValue) {
    const auto request = [](const std::string& parameter, const std::string& name) {
        return "<A><IPARAMVALUE NAME=\"" + parameter + "\"><VALUE>" + name +
               "</VALUE></IPARAMVALUE><IPARAMVALUE NAME=\"newvalue\"><VALUE>secret</VALUE></IPARAMVALUE></A>";
    };
    const std::string reply = "<IRETURNVALUE><VALUE>secret</VALUE></IRETURNVALUE>";
    const std::tuple<std::string, std::string, bool> cases[] = {
        {"PropertyName", "Password", true},
        {"Property&#78;ame", "OldPassword", true},
        {"PropertyName", "Pass<!-- -->word", true},
        {"PropertyName", "User", false},
        {"Other", "Password", false},
    };
    for (const auto& [parameter, name, hidden] : cases) {
        const auto bodies = masked(request(parameter, name), reply);
        EXPECT_EQ(bodies.request.find("secret") == std::string::npos, hidden) << name;
        EXPECT_EQ(bodies.response, hidden ? "<IRETURNVALUE>***</IRETURNVALUE>" : reply) << name;
    }
    EXPECT_EQ(masked("<A>", reply).response, "<IRETURNVALUE>***</IRETURNVALUE>") << "unknown what was asked for";
}

} // namespace
