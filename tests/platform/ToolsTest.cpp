// The tools, run as a person runs them.

#include "Home.hpp"

#include <sys/msg.h>
#include <sys/stat.h>

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
    play(ZPOREG,
         {{{"set", "T", "S", "text", "--text", "two words"}, 0, ""},
          {{"get", "T", "S", "text"}, 0, "two words\n"},
          {{"set", "T", "S", "empty", "--text="}, 0, ""},
          {{"set", "T", "S", "int", "--int", "0x10"}, 0, ""},
          {{"list", "T"}, 0, "T S empty text \"\"\nT S int int 16\nT S text text \"two words\"\n"},
          {{"set", "T", "Other", "int", "--int", "1"}, 0, ""},
          {{"list", "T", "Other"}, 0, "T Other int int 1\n"},
          {{"set", "T", "S", "longest", "--text", std::string(511, 'x')}, 0, ""},
          {{"get", "T", "S", "longest"}, 0, std::string(511, 'x') + "\n"},
          {{"delete", "T", "S", "int"}, 0, ""},
          {{"get", "T", "S", "int"}, 1, "zporeg: T S int: no such entry (0x20000d)\n"},
          {{"delete", "T", "S", "int"}, 1, "zporeg: T S int: no such entry (0x20000d)\n"},
          {{"set", "T", "S", "bin", "--binary", "000C"}, 0, ""},
          {{"get", "T", "S", "bin"}, 0, "00 0c\n"},
          {{}, 2, "zporeg: ..."},
          {{"set", "T", "S", "bin", "--binary", "0"}, 1, "zporeg: '0' is not..."},
          {{"set", "T", "S", "text", "--text", std::string(512, 'x')}, 1, "zporeg: T S text: the text..."},
          {{"set", "T", "S", "bin"}, 2, "zporeg: ..."},
          {{"set", "T", "S", "bin", "--int", "1", "--text", "x"}, 2, "zporeg: ..."},
          {{"frobnicate"}, 2, "zporeg: there is no command 'frobnicate'..."},
          {{"--version"}, 0, "zporeg 1..."},
          {{"set", "T", "S", "text", "--int", "1"}, 1, "zporeg: T S text: the entry is of another kind: T S..."},
          {{"set", "T", "S", "text", "--int", "1", "--change-kind"}, 0, ""},
          {{"get", "T", "S", "text"}, 0, "1\n"}});
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
          {{"load", "--keep-existing", good}, 0, "1 entries loaded\n"},
          {{"load", "--if-empty", good}, 0, "0 entries loaded\n"},
          {{"set", "L", "S", "later", "--int", "3"}, 0, ""},
          {{"list", "L"}, 0, "L S a int 5\nL S b int 2\nL S later int 3\n"}});
    std::filesystem::create_symlink("saved", kHome.dir / "device");
    play(ZPOREG,
         {{{"backup", kHome.dir / "device"}, 1, "zporeg: " + kHome.dir / "device" + ": not a regular file..."}});
    EXPECT_TRUE(std::filesystem::is_symlink(kHome.dir / "device")); // as /dev/stdout is one
    EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(saved).permissions());
    const std::string content = support::contentOf(saved);
    support::writeFile(bad, content.substr(0, content.size() / 2));
    EXPECT_THAT(run({ZPOREG, "restore", bad}).output, HasSubstr("the registry is as it was"));
    play(ZPOREG, {{{"list", "L"}, 0, "L S a int 5\nL S b int 2\nL S later int 3\n"},
                  {{"restore", saved}, 0, "..."},
                  {{"list", "L"}, 0, "L S a int 1\nL S b int 2\n"}});
}

TEST(Zporeg, WorksInPipesAndChecksTheRegistry) {
    const std::string state = "export ZPO_STATE_DIR=" + kHome.dir / "piped" + "; ";
    const auto shell = [&state](const std::string& command) {
        const auto result = run({"sh", "-c", state + command});
        return std::to_string(result.exitCode) + " " + result.output;
    };
    const std::string tool = ZPOREG;
    EXPECT_THAT(shell(tool + " check"), ::testing::MatchesRegex("1 zporeg: .*the registry is empty.*\n"));
    for (const std::string wrong : {"ZPO_STATE_DIR=here ", "ZPO_REGISTRY_MB=0 ", "ZPO_LOCK_TIMEOUT=0 "}) {
        EXPECT_THAT(shell(wrong + tool + " check"), HasSubstr("1 zporeg: registry: ZPO_STATE_DIR, "));
        EXPECT_THAT(shell(wrong + OSQUEUE " create X"), HasSubstr(wrong[4] == 'R' ? "0 " : "1 osqueue: X: the state "));
    }
    EXPECT_EQ("0 ", shell(OSQUEUE " delete X"));
    EXPECT_EQ("0 1 entries loaded\n", shell("echo P S a int 1 | " + tool + " load --if-empty -"));
    EXPECT_EQ("0 1 entries restored\n", shell(tool + " backup - 2>/dev/null | " + tool + " restore -"));
    EXPECT_EQ("0 1 entries; the registry can be read and written\n", shell(tool + " check"));
    EXPECT_THAT(shell(tool + " list >/dev/full"), HasSubstr("1 zporeg: standard output: No space left"));
    // A disk that takes no byte more: the backup is there all the same.
    EXPECT_THAT(shell("(trap '' XFSZ; ulimit -f 0; " + tool + " backup - 2>&1) | cat"),
                ::testing::AllOf(HasSubstr("# zpo "), HasSubstr("warning: the backup is complete")));
}

// What root's tools make in a state directory of another user must serve that user.
TEST(Tools, OfRootActAsTheOwnerOfTheState) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    constexpr uid_t kOwner = 65534;
    const support::TempDir home;
    std::filesystem::permissions(home.path(), std::filesystem::perms(0711));
    ASSERT_TRUE(std::filesystem::create_directory(home / "log")); // the state directory is made for its owner
    ASSERT_EQ(0, chown((home / "log").c_str(), kOwner, 0));       // files get the owner's own group
    const auto as = [&home](const std::string& user, const std::string& command) {
        // LeakSanitizer cannot look into a process that has changed its user.
        return run({"sh", "-c",
                    "umask 0; export ASAN_OPTIONS=detect_leaks=0 ZPO_STATE_DIR=" + home / "state ZPO_LOG_DIR=" +
                        home.path() + "/log; " + user + command});
    };
    const std::string owner = "setpriv --reuid 65534 --regid 65534 --clear-groups ";
    const std::string file = home / "backup"; // in a folder where only root may write
    EXPECT_EQ(0, as("", ZPOREG " set O S a --int 1").exitCode);
    EXPECT_EQ("1 entries saved\n", as("", ZPOREG " backup " + file).output);
    EXPECT_EQ(0, as("rm $ZPO_STATE_DIR/registry.mdb; ", ZPOREG " restore " + file).exitCode);
    EXPECT_EQ("1 entries; the registry can be read and written\n", as(owner, ZPOREG " check").output);
    EXPECT_EQ(0, as("", OSQUEUE " create Q").exitCode);
    EXPECT_THAT(as(owner, OSQUEUE " list").output, ::testing::MatchesRegex("Q [0-9]+ 0 0 nobody root 660 usable\n"));
    EXPECT_EQ(0, as(owner, OSQUEUE " send Q 1").exitCode);
    EXPECT_THAT(as("setpriv --reuid 54321 --regid 65534 --groups 0 ", OSQUEUE " delete Q").output,
                HasSubstr("no permission"))
        << "for one of the group";
    if (run({"unshare", "--ipc", "true"}).exitCode == 0) { // where the kernel's first id is 0
        const std::string commands = OSQUEUE " create First && " OSQUEUE " list && " OSQUEUE " delete First";
        EXPECT_THAT(as("unshare --ipc sh -c '", commands + "'").output, HasSubstr("First 0 0 0 "));
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home.path())) {
        struct stat state {};
        EXPECT_TRUE(stat(entry.path().c_str(), &state) == 0 && (state.st_uid == kOwner || entry.path() == file))
            << entry.path();
        EXPECT_TRUE(state.st_gid == kOwner || entry.path() == home / "log" || entry.path() == home / "state")
            << entry.path();
    }
    EXPECT_EQ(". 750\n./queues 755\n./queues/.lock 660\n./queues/Q 664\n./registry.lock 660\n./registry.mdb 660\n"
              "./registry.mdb-lock 660\n./registry.notify 660\n",
              as("cd " + home / "state && ", "find . -printf '%p %m\\n' | LC_ALL=C sort").output);
    // A queue of root alone, as an earlier version made them, is shown and logged.
    EXPECT_EQ(0, as("", OSQUEUE " delete Q").exitCode);
    const int id = msgget(0x51000000 + getpid(), IPC_CREAT | IPC_EXCL | 0600); // this test may run twice at once
    msqid_ds queue{};
    ASSERT_EQ(0, msgctl(id, IPC_STAT, &queue));
    queue.msg_perm.uid = queue.msg_perm.gid = 54321; // whose name nobody knows
    ASSERT_EQ(0, msgctl(id, IPC_SET, &queue) + msgctl(id, IPC_STAT, &queue));
    support::writeFile(home / "state/queues/Q", std::to_string(id) + ' ' + std::to_string(queue.msg_perm.__key) + ' ' +
                                                    std::to_string(std::int64_t{queue.msg_ctime}) + '\n');
    EXPECT_THAT(as(owner, OSQUEUE " list").output, HasSubstr(" 54321 54321 600 no-access\n"));
    EXPECT_EQ(1, as(owner, OSQUEUE " send Q 1").exitCode);
    std::filesystem::permissions(home / "state/queues/Q", std::filesystem::perms(0600));
    EXPECT_EQ("Q - - - - - - no-access\n", as(owner, OSQUEUE " list").output);
    EXPECT_THAT(support::contentOf(home / "log/ZpoShared.log"), HasSubstr("queue Q (id " + std::to_string(id)));
    EXPECT_EQ(std::filesystem::perms(0640), std::filesystem::status(home / "log/ZpoShared.log").permissions());
    EXPECT_EQ(0, msgctl(id, IPC_RMID, nullptr));
}

// Root does not make the directory of another user where that user, or somebody else, could put another in its place.
TEST(Tools, OfRootMakeTheStateForItsOwnerOnlyInAFolderOfRoot) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    // Of the folder: owner, mode; owner of the log.
    const std::tuple<uid_t, mode_t, uid_t> cases[] = {
        {0, 0755, 0}, {65534, 0755, 65534}, {0, 0775, 65534}, {0, 0757, 65534}};
    for (const auto& [owner, mode, log] : cases) {
        const support::TempDir home;
        ASSERT_TRUE(std::filesystem::create_directory(home / "log"));
        ASSERT_EQ(0, chown((home / "log").c_str(), log, 0) + chown(home.path().c_str(), owner, 0) +
                         chmod(home.path().c_str(), mode));
        run({"env", "ZPO_STATE_DIR=" + home / "state", "ZPO_LOG_DIR=" + home / "log", ZPOREG, "set", "O", "S", "a",
             "--int", "1"});
        struct stat made {};
        EXPECT_EQ(0, stat((home / "state").c_str(), &made));
        EXPECT_EQ(0U, made.st_uid) << owner << ' ' << std::oct << mode << ' ' << log;
    }
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
                 {{state, ZPOREG, "backup", copy}, 1, "zporeg: damaged entries: 1; no backup was written\n"},
                 {{state, ZPOREG, "check"}, 1, "zporeg: " + store + ": damaged entries: 1\n"}});
    EXPECT_EQ("", support::contentOf(copy));
}

// In a user name space that does not know the group of the state directory.
TEST(Osqueue, LeavesNoQueueThatItCannotShare) {
    const support::TempDir state;
    const bool given = chown(state.path().c_str(), geteuid(), 4711) == 0;
    const auto result = run({"env", "ZPO_STATE_DIR=" + state.path(), "unshare", "--user", "--map-root-user", "--ipc",
                             "sh", "-c", OSQUEUE " create Q; wc -l </proc/sysvipc/msg"});
    if (!given || result.output.find("unshare") != std::string::npos) {
        GTEST_SKIP() << "needs the right to a name space of its own";
    }
    EXPECT_THAT(result.output, ::testing::MatchesRegex("osqueue: Q: .*\n1\n")) << "only the headline";
}

TEST(Osqueue, CarriesMessages) {
    std::filesystem::create_directories(kHome.dir / "state/queues");
    support::writeFile(kHome.dir / "state/queues/Stale", "0 0 0\n");
    EXPECT_THAT(run({OSQUEUE, "list"}).output, HasSubstr("Stale - - - - - - gone\n"));
    std::filesystem::remove(kHome.dir / "state/queues/Stale");
    play(OSQUEUE, {{{"create", "Tool"}, 0, "..."},
                   {{"send", "Tool", "0"}, 0, ""},
                   {{"send", "Tool", "1"}, 0, ""},
                   {{"listen", "Tool", "--count", "2", "--timeout", "10000"}, 0, "0\n1\n"},
                   {{"listen", "Tool", "--timeout", "1"}, 1, "osqueue: Tool: no message in time (0x300005)\n"},
                   {{"delete", "Tool"}, 0, ""},
                   {{"send", "Tool", "0"}, 1, "osqueue: Tool: no such queue (0x300003)\n"}});
}

} // namespace
