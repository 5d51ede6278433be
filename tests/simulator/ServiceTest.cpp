// The simulator in the place of the device's CDR service: settings and methods reach it through server and module.
#include "Lab.hpp"

namespace {

using namespace lab;
using namespace ::testing;

/// The last line of the current file, once it has one.
std::string latest() {
    std::string line;
    support::waitUntil([&] { return !(line = Lab::run("tail -n 1 $LAB/records/current.part 2>/dev/null")).empty(); });
    return line;
}

class Simulator : public Test {
  protected:
    Simulator() {
        lab_.start();
        setenv("CDR_RECORD_DIR", (lab_ / "records").c_str(), 1);
    }
    void start() {
        process_ = support::startChild([this] {
            return support::become({"cdrsim", "--calls-per-minute", "6000", "--seed", "1"}, log_);
        });
        EXPECT_NE("", latest());
    }
    int end(int signal) const {
        kill(process_, signal);
        return support::waitForChild(process_);
    }
    void expectSaid(const std::string& line) const {
        const auto log = [this] { return support::contentOf(log_); };
        EXPECT_TRUE(support::waitUntil([&] { return log().find(line) != std::string::npos; })) << line << '\n' << log();
    }

    Lab lab_;
    std::string log_ = lab_ / "cdrsim.log";
    pid_t process_ = -1;
};

TEST_F(Simulator, PlaysTheServiceOfADevice) {
    Lab::run("zporeg set CDR CDRService LONGID --text hostile --change-kind; zporeg delete CDR CDRService TIME;"
             "zporeg set CDR CDRService FILTER --binary ff;"
             "zporeg set CDR CDRService DIGITSLIMIT --binary 0102");
    start();
    expectSaid("ConnectChar has no effect");
    expectSaid("LongCLIDSupport cannot be read");
    expectSaid("ReportFilter is 255: the simulator knows 0 to 3 and takes it as 0");
    EXPECT_THAT(Lab::run("cdrsim --once 1 2>&1 >/dev/null"), HasSubstr("another simulator"));
    EXPECT_EQ("640\n", Lab::run("stat -c %a $LAB/records/current.part")) << "records tell who called whom";

    Lab::run("zporeg backup $LAB/backup");
    Lab::run("wbemcli mi $SERVICE ReportFilter=2,DigitsLimit=3,DateFormat=3,CLIDWithName=FALSE");
    expectSaid("CLIDWithName is 0, it was 1");
    Lab::run("wbemcli mi $PREFIX3 PrefixBin=123; wbemcli cm $SERVICE ClipFile");
    expectSaid("finished CDR-");
    EXPECT_THAT(support::contentOf(log_), Not(HasSubstr("no record to clip")));
    EXPECT_THAT(latest(), MatchesRegex("[0-9]+,[0-9]{8},[0-9:]{8},OUT,2[0-9]+,[1-8],2[0-9]+,,,[0-9]{3},9,(9|011|123|),"
                                       ",[0-9]*,[0-9]+,\n"));
    Lab::run("zporeg restore $LAB/backup");
    expectSaid("DigitsLimit is 258, it was 3");
    Lab::run("osqueue delete CDRService");
    EXPECT_TRUE(support::waitUntil([] { return Lab::run("osqueue send CDRService 0").empty(); })) << "made anew";

    EXPECT_NE("", latest());
    Lab::run("osqueue send CDRService xyz");
    expectSaid("an unknown message of 3 bytes came");
    end(SIGKILL);
    start();
    expectSaid("left behind by a simulator that was killed");
    EXPECT_EQ(0, end(SIGTERM));
    EXPECT_THAT(Lab::run("ls $LAB/records/current.part; osqueue send CDRService 0"),
                AllOf(HasSubstr("No such file"), HasSubstr("no such queue")));
}

TEST_F(Simulator, PrintsWhatTheTranscriptHas) {
    support::expectTranscript(TRANSCRIPT);
}

TEST_F(Simulator, CountsWhatAClientPulls) {
    const std::string show =
        "show ${CIM}QTX_CDRPullStatistics.Name=\\\"CDRPullStatistic\\\" | grep -v Metrics | tr -dc 'a-z0-9\n' ";
    Lab::play({
        {"cdrsim --pull", HasSubstr("TransferType of the push settings is not 3")},
        {"wbemcli mi $PUSH TransferType=3", ""},
        {"cdrsim --once 5 | tail -n 1; cdrsim --once 40 | tail -n 1", MatchesRegex(".* 5 records\n.* 40 records\n")},
        {"cd $LAB/records && wc -c *.csv | sort -n | awk '{print $1}' >$LAB/sizes; cdrsim --pull", "files pulled: 2\n"},
        {"cdrsim --pull; ls $LAB/records", MatchesRegex("files pulled: 0\n(CDR-[-0-9]{15}-00.[.]csv[.]pulled\n){2}")},
        {"cdrsim --pull-failure cut; " + show,
         MatchesRegex(".*uccessfulransfer20[0-9]+\n.*ransfers1\n.*ransfer20[0-9]+\n.*cut\n.*ransfers1\n.*2\n")},
        {show + "| grep -E 'argest|mallest|ytes' | tr -dc '0-9\n' | sort -n | diff - $LAB/sizes", ""},
    });
}

} // namespace
