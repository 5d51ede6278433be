// The tools, run as a person runs them.

#include "Home.hpp"

namespace {

using support::run;
using ::testing::EndsWith;
using ::testing::HasSubstr;

struct Step {
    std::vector<std::string> arguments;
    int exitCode;
    std::string output; ///< the whole output, or its start when it ends in "..."
};

void play(const char* tool, const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        std::vector<std::string> command{tool};
        command.insert(command.end(), step.arguments.begin(), step.arguments.end());
        const support::Result result = run(command);
        const std::string shown = ::testing::PrintToString(step.arguments);
        EXPECT_EQ(step.exitCode, result.exitCode) << shown << result.output;
        if (::testing::Matches(EndsWith("..."))(step.output)) {
            EXPECT_EQ(0U, result.output.find(step.output.substr(0, step.output.size() - 3))) << shown << result.output;
        } else {
            EXPECT_EQ(step.output, result.output) << shown;
        }
    }
}

TEST(Zporeg, ShowsEachKindAndRefusesWrongValues) {
    play(ZPOREG, {{{"set", "T", "S", "text", "--text", "two words"}, 0, ""},
                  {{"get", "T", "S", "text"}, 0, "two words\n"},
                  {{"set", "T", "S", "empty", "--text", ""}, 0, ""},
                  {{"set", "T", "S", "int", "--int", "0x10"}, 0, ""},
                  {{"list", "T"}, 0, "T S empty text \"\"\nT S int int 16\nT S text text \"two words\"\n"},
                  {{"set", "T", "Other", "int", "--int", "1"}, 0, ""},
                  {{"list", "T", "Other"}, 0, "T Other int int 1\n"},
                  {{"set", "T", "S", "longest", "--text", std::string(511, 'x')}, 0, ""},
                  {{"get", "T", "S", "longest"}, 0, std::string(511, 'x') + "\n"},
                  {{"delete", "T", "S", "int"}, 0, ""},
                  {{"get", "T", "S", "int"}, 1, "zporeg: T S int: no such entry (0x20000d)\n"},
                  {{"delete", "T", "S", "int"}, 1, "zporeg: T S int: no such entry (0x20000d)\n"},
                  {{"set", "T", "S", "bin", "--binary", "0"}, 1, "zporeg: '0' is not..."},
                  {{"set", "T", "S", "text", "--text", std::string(512, 'x')}, 1, "zporeg: T S text: the text..."},
                  {{"set", "T", "S", "bin"}, 2, "zporeg: ..."},
                  {{"set", "T", "S", "bin", "--int", "1", "--text", "x"}, 2, "zporeg: ..."},
                  {{"frobnicate"}, 2, "zporeg: ..."}});
}

TEST(Zporeg, LoadsAndRestoresAllOrNothing) {
    const std::string good = kHome.dir / "good";
    const std::string bad = kHome.dir / "bad";
    const std::string saved = kHome.dir / "saved";
    support::writeFile(good, "L S a int 1\nL S b int 2\n");
    support::writeFile(bad, "L S a int 9\nL S c int nine\n");
    play(ZPOREG,
         {{{"load", good}, 0, "2 entries loaded\n"},
          {{"load", bad}, 1, "zporeg: " + bad + ": line 2: the value is not a 32-bit number; nothing was loaded\n"},
          {{"list", "L"}, 0, "L S a int 1\nL S b int 2\n"},
          {{"backup", saved}, 0, "..."},
          {{"backup", kHome.dir / "no/such/dir"}, 1, "zporeg: ..."},
          {{"set", "L", "S", "a", "--int", "5"}, 0, ""},
          {{"delete", "L", "S", "b"}, 0, ""},
          {{"load", "--keep-existing", good}, 0, "2 entries loaded\n"},
          {{"set", "L", "S", "later", "--int", "3"}, 0, ""},
          {{"list", "L"}, 0, "L S a int 5\nL S b int 2\nL S later int 3\n"}});
    const std::string content = support::contentOf(saved);
    support::writeFile(bad, content.substr(0, content.size() / 2));
    EXPECT_THAT(run({ZPOREG, "restore", bad}).output, HasSubstr("the registry is as it was"));
    play(ZPOREG, {{{"list", "L"}, 0, "L S a int 5\nL S b int 2\nL S later int 3\n"},
                  {{"restore", saved}, 0, "..."},
                  {{"list", "L"}, 0, "L S a int 1\nL S b int 2\n"}});
}

TEST(Zporeg, SaysThatADamagedEntryIsLeftOut) {
    const std::string store = kHome.dir / "damaged/registry.mdb";
    const std::string copy = kHome.dir / "damaged.backup";
    const std::string state = "ZPO_STATE_DIR=" + kHome.dir / "damaged";
    run({"env", state, ZPOREG, "set", "D", "S", "bad", "--text", "findme"});
    run({"env", state, ZPOREG, "set", "D", "S", "good", "--text", "fine"});
    std::string bytes = support::contentOf(store);
    for (auto at = bytes.find("tfindme"); at != std::string::npos; at = bytes.find("tfindme", at + 1)) {
        bytes[at] = '?'; // the kind
    }
    support::writeFile(store, bytes);
    play("env", {{{state, ZPOREG, "get", "D", "S", "bad"}, 1, "zporeg: D S bad: the entry's record is damaged..."},
                 {{state, ZPOREG, "list"}, 1, "zporeg: damaged entries: 1; they are not shown\nD S good text fine\n"},
                 {{state, ZPOREG, "backup", copy}, 1, "zporeg: damaged entries: 1; no backup was written\n"}});
    EXPECT_EQ("", support::contentOf(copy));
}

TEST(Osqueue, CarriesMessages) {
    play(OSQUEUE, {{{"create", "Tool"}, 0, "..."},
                   {{"send", "Tool", "0"}, 0, ""},
                   {{"send", "Tool", "1"}, 0, ""},
                   {{"listen", "Tool", "--count", "2", "--timeout", "10000"}, 0, "0\n1\n"},
                   {{"listen", "Tool", "--timeout", "1"}, 1, "osqueue: Tool: no message in time (0x300005)\n"},
                   {{"delete", "Tool"}, 0, ""},
                   {{"send", "Tool", "0"}, 1, "osqueue: Tool: no such queue (0x300003)\n"}});
}

} // namespace
