// Every property of the table of cases through the server, set with wbemcli and looked for in the real registry.
#include "Lab.hpp"
#include "PropertyCases.hpp"

namespace {

using namespace lab;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// A property's value as wbemcli takes and shows it.
std::string wireText(const PropertyCase& c, std::string value) {
    if (c.type == "boolean") {
        std::transform(value.begin(), value.end(), value.begin(), [](char letter) { return std::toupper(letter); });
    }
    return value;
}

// The entry's line in "zporeg list", without quotes.
std::string entryLine(const PropertyCase& c) {
    std::string line = "CDR " + c.key + " " + c.stored;
    line[line.find('/')] = ' ';
    if (const std::size_t kind = line.find(" bytes "); kind != std::string::npos) {
        line.replace(kind, 7, " binary ");
        for (std::size_t byte = kind + 10; byte < line.size(); byte += 3) {
            line.insert(byte, 1, ' ');
        }
    }
    return line;
}

// The command that puts the entry there, or takes it away.
std::string entryCommand(const PropertyCase& c, bool put) {
    const std::size_t slash = c.key.find('/');
    const std::size_t blank = c.stored.find(' ');
    const std::string kind = c.stored[0] == 'b' ? "binary" : c.stored.substr(0, blank);
    return std::string("zporeg ") + (put ? "set" : "delete") + " CDR " + c.key.substr(0, slash) + " '" +
           c.key.substr(slash + 1) + "'" + (put ? " --" + kind + " '" + c.stored.substr(blank + 1) + "'" : "");
}

std::vector<std::string> news(const std::set<std::string>& before, const std::set<std::string>& after) {
    std::vector<std::string> result;
    std::set_difference(after.begin(), after.end(), before.begin(), before.end(), std::back_inserter(result));
    return result;
}

std::string change(const PropertyCase& c, const std::string& value) {
    return Lab::run("wbemcli mi \"${CIM}\"'" + c.path + "' '" + c.property + "=" + wireText(c, value) + "'");
}

TEST(Settings, AreStoredShownAndRefusedEachByItself) {
    Lab lab;
    lab.start();
    for (const PropertyCase& c : propertyCases()) {
        SCOPED_TRACE(c.className() + "." + c.property);
        Lab::run(std::string("zporeg set CDR CDRPush TransferType --binary 0") + c.transferType() + ";" +
                 entryCommand(c, !c.writable));
        const std::set<std::string> before = Lab::lines("zporeg list");
        EXPECT_EQ(change(c, c.shown), "");
        const std::set<std::string> after = Lab::lines("zporeg list");
        EXPECT_EQ(news(before, after), std::vector<std::string>(c.writable ? 1 : 0, entryLine(c)));
        EXPECT_THAT(news(after, before), IsEmpty()) << "other entries stay";
        EXPECT_EQ(Lab::run("show \"${CIM}\"'" + c.path + "' " + c.property),
                  "-" + c.property + "=" + wireText(c, c.shown) + "\n");
        if (!c.refused.empty()) {
            const auto& [value, message] = c.refused.front();
            EXPECT_THAT(change(c, value), HasSubstr(message.empty() ? "Cim: (1)" : "(" + message + ")"));
            EXPECT_EQ(Lab::lines("zporeg list"), after);
        }
        EXPECT_EQ(lab.heard(), c.isService() ? "0\n" : "");
        EXPECT_EQ(lab.armed(), c.isScheduled() ? 1U : 0U);
    }
}

} // namespace
