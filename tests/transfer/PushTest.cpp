// Pushes to a real server: what arrives, what is told when it does not.
#include "FarEndServer.hpp"
#include "Files.hpp"
#include "Records.hpp"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace {

using namespace transfer_testing;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class Push : public testing::Test {
  protected:
    PushLab* const lab = &PushLab::started();
};

struct Way {
    bool tls, compress, deletes, metrics;
};

class Sending : public Push, public testing::WithParamInterface<Way> {};

TEST_P(Sending, BringsEachFinishedFileOnceAndWhole) {
    const Way way = GetParam();
    const std::string odd = "a 'quoted\" \\ % # name.csv";
    const std::vector<std::string> names = {"CDR-1.csv", odd, "empty.csv"};
    const auto contentOf = [](const std::string& name) {
        return name == "empty.csv" ? "" : name + std::string(200000, 'x') + "\n";
    };
    lab->set("IpAddr", way.tls ? lab->ftps() : lab->sftp());
    lab->setByte("CompressFlag", way.compress ? 1 : 0);
    lab->setByte("DeleteFlag", way.deletes ? 1 : 0);
    lab->setByte("IncludeMetricsFlag", way.metrics ? 1 : 0);
    for (const std::string& name : names) {
        lab->record(name, contentOf(name));
    }
    for (const char* const name : {"current.part", "x.csv.tmp", ".hidden.csv"}) {
        lab->record(name, "unfinished");
    }
    std::filesystem::create_symlink("/etc/passwd", lab->local("link.csv"));
    EXPECT_THAT(lab->run("CDRTransfer --dry-run").output, HasSubstr("3 files to be sent"));
    const auto first = lab->run("CDRTransfer --verbose");
    EXPECT_EQ(0, first.exitCode) << first.output;
    lab->run("gzip -d " + lab->far("in") + "/*.gz");
    for (const std::string& name : names) {
        EXPECT_TRUE(contentOf(name) == support::contentOf(lab->far("in/" + name))) << name;
        EXPECT_EQ(!way.deletes, std::filesystem::exists(lab->local(name)));
    }
    EXPECT_THAT(lab->run("ls " + lab->far("in")).output,
                testing::MatchesRegex((way.metrics ? "CDR-1.csv\nCDR-metrics-[-0-9]+.txt\na.*csv\nempty.csv\n"
                                                   : "CDR-1.csv\na.*csv\nempty.csv\n")));
    EXPECT_EQ(way.metrics, lab->run("grep files=3 " + lab->far("in") + "/CDR-metrics-*").exitCode == 0);
    EXPECT_EQ("3\n", lab->run("cd " + lab->local("") + " && cat *.part *.tmp .h* | grep -o unfinished | wc -l").output);
    EXPECT_THAT(lab->run("zporeg get CDR CDRPush LastTransferTime").output,
                testing::MatchesRegex("20[0-9]{12}.000000[+-][0-9]{3}\n"));
    EXPECT_THAT(lab->run("CDRTransfer --verbose").output, HasSubstr("0 of 0 files sent"));
    EXPECT_THAT(lab->log(), AllOf(HasSubstr("push begins: 3 files"), HasSubstr("push succeeded: 3 of 3"),
                                  Not(HasSubstr(lab->password()))));
}

INSTANTIATE_TEST_SUITE_P(Ways, Sending,
                         testing::Values(Way{false, false, false, false}, Way{false, true, true, true},
                                         Way{true, false, true, false}, Way{true, true, false, true}));

struct Refusal {
    std::string setting, value, reason;
    int tries = 1;
};

TEST(Transfer, PrintsWhatTheTranscriptHas) {
    const PushLab lab; // with an empty registry; this process stays with that of the other tests
    setenv("STATE", lab.state("").c_str(), 1);
    setenv("TZ", "UTC", 1);
    support::expectTranscript(TRANSCRIPT);
    unsetenv("TZ");
}

TEST_F(Push, PrintsWhatTheTranscriptHas) {
    setenv("STATE", lab->state("").c_str(), 1);
    setenv("FAR", lab->far("").c_str(), 1);
    setenv("SFTP", lab->sftp().c_str(), 1);
    setenv("FTPS", lab->ftps().c_str(), 1);
    support::expectTranscript(PUSHES);
}

TEST_F(Push, ThatFailsTellsWhyAndLosesNothing) {
    const std::vector<Refusal> refusals = {
        {"Password", "wrong secret", "the server refuses UserName or Password"},
        {"UserName", "nobody' OR 1=1", "the server refuses UserName or Password"},
        {"UserName", "", "UserName is empty", 0},
        {"DestFolder", "nowhere", "DestFolder \"nowhere\", or there is none"},
        {"DestFolder", "$(touch in/shell);`touch in/shell`|x", "or there is none"},
        {"DestFolder", std::string(511, 'x'), "given up after 3 tries", 3},
        {"DestFolder", "in\r\nDELE x", "DestFolder holds a control character", 0},
        {"Password", "two\nlines", "Password holds a control character", 0},
        {"IpAddr", "localhost:" + lab->sftp().substr(10), "is not known; it is ecdsa-sha2-nistp256 SHA256:"},
        {"IpAddr", "ftps://localhost" + lab->ftps().substr(16), "certificate is not trusted"},
    };
    for (const Refusal& refusal : refusals) {
        lab->reset();
        lab->setByte("NumRetry", 2);
        lab->setByte("DeleteFlag", 1);
        lab->record("CDR-1.csv", "kept");
        lab->set(refusal.setting, refusal.value);
        const auto result = lab->run("cd " + lab->far("") + " && CDRTransfer --wait");
        EXPECT_EQ(1, result.exitCode) << refusal.value;
        const std::string status = lab->run("CDRTransfer --status; CDRTransfer --status --json").output;
        EXPECT_THAT(status,
                    AllOf(HasSubstr(refusal.reason), HasSubstr("\"tries\": " + std::to_string(refusal.tries) + ",")));
        EXPECT_THAT(status + result.output + lab->log(),
                    AllOf(Not(HasSubstr(lab->password())), Not(HasSubstr("wrong secret"))));
        EXPECT_THAT(lab->log(), HasSubstr("push failed"));
        EXPECT_EQ("kept", support::contentOf(lab->local("CDR-1.csv")));
        EXPECT_EQ("in\n", lab->run("cd " + lab->far("") + " && find * | sort").output) << refusal.value;
    }
}

TEST_F(Push, KnowsAFileThatArrivedUnheard) {
    lab->record("CDR-0.csv", "new");
    lab->record("CDR-1.csv", "arrived");
    support::writeFile(lab->far("in/CDR-1.csv"), "arrived");
    transfer::CurrentUpload current{transfer::finishedFiles(lab->local("")).at(1), "in/CDR-1.csv.1.part",
                                    "in/CDR-1.csv", "sftp://cdr@" + lab->sftp() + "/in"};
    current.save(transfer::StateFolder());
    EXPECT_THAT(lab->run("CDRTransfer --verbose").output, HasSubstr("2 of 2 files sent"));
    EXPECT_EQ(0, lab->run("cd " + lab->local("") +
                          " && mkdir away && mv CDR* away && CDRTransfer --wait && mv away/* . && "
                          "rmdir away && CDRTransfer --wait")
                     .exitCode)
        << "the records' disk was not mounted";
    lab->setByte("IncludeMetricsFlag", 1);
    support::writeFile(lab->state("outbox/m.txt"), "arrived");
    support::writeFile(lab->far("in/m.txt"), "arrived");
    current.file = transfer::finishedFiles(lab->state("outbox"), ".txt").at(0);
    current.finalPath = "in/m.txt";
    current.save(transfer::StateFolder());
    EXPECT_EQ(0, lab->run("CDRTransfer --wait").exitCode);
    lab->setByte("IncludeMetricsFlag", 0);
    EXPECT_EQ("CDR-0.csv\nCDR-1.csv\nm.txt\n", lab->run("ls " + lab->far("in")).output);
}

TEST_F(Push, WorksInTheBackgroundOneAtATime) {
    lab->record("CDR-1.csv", "1");
    {
        zpo::FileLock lock;
        ASSERT_EQ(0, lock.acquire(lab->state("lock"), std::chrono::seconds(1)));
        const auto second = lab->run("CDRTransfer");
        EXPECT_EQ(0, second.exitCode);
        EXPECT_THAT(second.output, HasSubstr("a run is under way"));
        EXPECT_THAT(lab->run("CDRTransfer --status --json").output, HasSubstr("\"under_way\": true"));
    }
    EXPECT_EQ("", lab->run("cd " + lab->local("") + " && CDRTransfer --records .").output);
    EXPECT_TRUE(
        support::waitUntil([] { return PushLab::run("CDRTransfer --status --json | grep succeeded").exitCode == 0; },
                           std::chrono::seconds(20)));
    EXPECT_EQ("1", support::contentOf(lab->far("in/CDR-1.csv")));
}

/// A listening socket as systemd passes it to the service.
TEST_F(Push, IsDoneByTheServiceWhereThereIsOne) {
    lab->record("CDR-1.csv", "1");
    sockaddr_un address{AF_UNIX, "service"}; // in the record folder
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    std::filesystem::current_path(lab->local(""));
    ASSERT_EQ(0, bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address));
    ASSERT_EQ(0, listen(listener, 8));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(0, PushLab::run("CDR_TRANSFER_SOCKET=service CDRTransfer").exitCode);
    }
    EXPECT_THAT(PushLab::run("CDRTransfer --status").output, Not(HasSubstr("succeeded")))
        << "that is the service's work";
    const pid_t service = support::startChild([listener] {
        dup2(listener, 3);
        setenv("LISTEN_FDS", "1", 1);
        setenv("LISTEN_PID", std::to_string(getpid()).c_str(), 1);
        return support::become({"CDRTransfer", "--wait"});
    });
    EXPECT_EQ(0, support::waitForChild(service));
    EXPECT_EQ("1", support::contentOf(lab->far("in/CDR-1.csv")));
    pollfd waiting{listener, POLLIN, 0};
    EXPECT_EQ(0, poll(&waiting, 1, 0)) << "one run serves all that asked";
    close(listener);
    EXPECT_EQ(0, PushLab::run("CDR_TRANSFER_SOCKET=service CDRTransfer --wait").exitCode) << "nobody listens";
}

TEST_F(Push, AsksBeforeItTrusts) {
    const std::string known = support::contentOf(lab->state("known_hosts"));
    EXPECT_THAT(lab->run("echo no | CDRTransfer --trust localhost:" + lab->sftp().substr(10)).output,
                HasSubstr("Nothing was changed"));
    EXPECT_EQ(known, support::contentOf(lab->state("known_hosts")));
    std::string changed = known;
    changed.replace(changed.rfind("AAAA") + 60, 4, "AAAA");
    support::writeFile(lab->state("known_hosts"), changed);
    lab->record("CDR-1.csv", "1");
    EXPECT_THAT(lab->run("CDRTransfer --wait").output, HasSubstr("has CHANGED"));
    EXPECT_THAT(lab->run("echo yes | CDRTransfer --trust " + lab->sftp()).output, HasSubstr("will be replaced"));
    EXPECT_EQ(known, support::contentOf(lab->state("known_hosts")));
}

} // namespace
