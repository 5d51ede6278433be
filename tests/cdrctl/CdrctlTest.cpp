// cdrctl against the real server: what a person types and sees.
#include "Lab.hpp"

namespace {

using namespace lab;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

void pointAtServer(const std::string& scheme) {
    const char* const host = getenv("HOST");
    setenv("CDRCTL_SERVER", (scheme + (host == nullptr ? "" : host)).c_str(), 1);
}

TEST(Cdrctl, ShowsChangesAndExplains) {
    Lab lab;
    lab.start();
    pointAtServer("http://");
    Lab::play({
        {"cdrctl show service", AllOf(HasSubstr("DigitsLimit           10   3 to 24"), HasSubstr("100 KiloBytes"))},
        {"cdrctl set DigitsLimit=12 ClipFileSize_100K=300",
         "DigitsLimit: 10 -> 12\nClipFileSize_100K: 10 -> 44 (asked for 300)\n"},
        {"cdrctl set Language=1 DigitsLimit=99 DateFormat=2; echo $?",
         AllOf(HasSubstr("Language: 0 -> 1\n"), HasSubstr("DigitsLimit=99: refused: "),
               HasSubstr("DigitsLimit must be <= 24"), HasSubstr("DateFormat: not tried"), HasSubstr("\n1\n"))},
        {"cdrctl set DigitLimit=1 DNISInfo=yes; echo $?", HasSubstr("is it DigitsLimit?\n2\n")},
        {"cdrctl --json show service", HasSubstr("units: 100 KiloBytes")},
        {"cdrctl --json show push", AllOf(HasSubstr("label: No transfer,"), HasSubstr("applies: false"))},
        {"cdrctl bins set access 2 91 --suppress 1", "AccessBin: (empty) -> 91\nSuppressBin: 0 -> 1\n"},
        {"cdrctl bins set prefix 3 12a; echo $?", AllOf(HasSubstr("(301)"), HasSubstr("\n1\n"))},
        {"cdrctl bins", HasSubstr("2            91      1\n")},
        {"cdrctl push why; echo $?",
         AllOf(HasSubstr("as it should: the transfer type is 4 (No transfer)"), HasSubstr("\n5\n"))},
        {"cdrctl --json push why", AllOf(HasSubstr("running: false"), HasSubstr("reason: the transfer type"))},
        {"cdrctl set TransferType=weekly TransferDayOfWeek=Wednesday TransferTime=8:30 IPAddress=h",
         HasSubstr("4 -> 1")},
        {"cdrctl push now", HasSubstr("was started")},
        {"cdrctl push why", AllOf(HasSubstr("a push runs every Wednesday at 08:30"),
                                  HasSubstr("30 8 * * 3 /qv/bin/CDRTransfer"), HasSubstr("CdrOAM.log: "))},
        {"echo >$LAB/crontabs/$(id -un); cdrctl push why", HasSubstr("has no line that runs /qv/bin/CDRTransfer")},
        {"cdrctl set TransferTime=8:30 >/dev/null; cat $LAB/crontabs/$(id -un)", HasSubstr("30 8 * * 3 /qv/bin/")},
        {"cdrctl statistics --watch --count 2 --interval 0.1",
         AllOf(HasSubstr("last success"), Not(HasSubstr("\x1b")))},
        {"cdrctl show QTX_None; echo $?", HasSubstr("(CIM error 6)\n1\n")},
        {"cdrctl --server $CDRCTL_SERVER/other bins; echo $?",
         HasSubstr("status 404: the server has nothing under this path (the path is /cimom)")},
        {"cdrctl --server 127.0.0.1:1 bins; echo $?", HasSubstr("Connection refused\n3\n")},
    });
    EXPECT_EQ(lab.heard(), "0\n0\n0\n") << "three changes of the service";
}

TEST(Cdrctl, PrintsWhatTheTranscriptHas) {
    Lab lab;
    lab.start();
    pointAtServer("http://");
    support::expectTranscript(TRANSCRIPT);
}

TEST(Cdrctl, LogsInOverTls) {
    Lab lab;
    Lab::run(
        "cd $LAB && openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=lab "
        "-addext subjectAltName=IP:127.0.0.1 -keyout key.pem -out cert.pem; printf 'open\\n' >pass; printf 'x\\n' >bad;"
        "chmod 600 pass bad; cimserver-passwd users viewer --role read --stdin <pass");
    lab.start("--tls-certificate cert.pem --tls-key key.pem --user-file users");
    pointAtServer("https://");
    const std::string trust = "cd $LAB && cdrctl --cacert cert.pem ";
    const std::string viewer = trust + "-u viewer --password-file ";
    Lab::play({
        {"cdrctl bins; echo $?", AllOf(HasSubstr("not trusted: self-signed certificate"), HasSubstr("\n3\n"))},
        {trust + "-s ${CDRCTL_SERVER%127.0.0.1*}localhost:${HOST#*:} bins",
         HasSubstr("not trusted: hostname mismatch")},
        {trust + "-s http://$HOST bins; echo $?", HasSubstr("end of stream (does it want https://?)\n3\n")},
        {trust + "--cert pass -u viewer --password-file pass bins", HasSubstr("cannot use the certificate pass: ")},
        {trust + "--cert cert.pem --key pass -u viewer --password-file pass bins",
         HasSubstr("cannot use the key pass: ")},
        {"cd $LAB && cdrctl --cacert pass bins", HasSubstr("cannot use the authorities' certificates pass: ")},
        {trust + "--cert cert.pem --key key.pem -u viewer --password-file pass bins", HasSubstr("011")},
        {trust + "bins; echo $?", AllOf(HasSubstr("a user is needed"), HasSubstr("\n4\n"))},
        {viewer + "bad bins; echo $?", AllOf(HasSubstr("wrong password"), HasSubstr("\n4\n"))},
        {viewer + "pass set DigitsLimit=12; echo $?",
         AllOf(HasSubstr("the role of viewer is read"), HasSubstr("\n1\n"))},
        {"cd $LAB && cdrctl --insecure -u viewer --password-file pass bins",
         AllOf(HasSubstr("WARNING"), HasSubstr("011"))},
        {"cdrctl -s http://192.0.2.1 -u viewer bins; echo $?", AllOf(HasSubstr("in the clear"), HasSubstr("2\n"))},
    });
    EXPECT_THAT(lab.serverLog(), Not(HasSubstr("open\n")));
}

} // namespace
