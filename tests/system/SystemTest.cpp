// What a person meets: reading, changing, restarting, restoring, mistakes, damage, users.
#include "Lab.hpp"

namespace {

using namespace lab;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string kServiceName = "root/cimv2:QTX_CDRService.SystemCreationClassName=QTX_System,SystemName=QTX,"
                                 "CreationClassName=QTX_CDRService,Name=CDRService";

TEST(Service, IsReadChangedAndKept) {
    Lab lab;
    lab.start();
    Lab::play({
        {"wbemcli ein ${CIM}QTX_CDRService", kServiceName + "\n"},
        {"show $SERVICE | grep '=$'", ""},
        {"show $SERVICE DigitsLimit,DNISInfo,FeatureCode", "-FeatureCode=85\n-DNISInfo=TRUE\n-DigitsLimit=10\n"},
        {"wbemcli gc ${CIM}QTX_CDRPushStatistics", "root/cimv2:QTX_CDRPushStatistics Name=,LastTransferTime=\n"},
        {"zporeg get CDR CDRService 'PREFIX BIN' | cut -c 1-48", "09 0c 0c 0c 0c 0c 0c 0c 00 01 01 0c 0c 0c 0c 0c \n"},
        {"wbemcli mi $PREFIX3 PrefixBin=90", ""},
        {"zporeg get CDR CDRService 'PREFIX BIN' | cut -c 70-96", "0c 09 00 0c 0c 0c 0c 0c 0c \n"},
        {"show $PUSHED LastTransferTime", "-LastTransferTime=00000000000000.000000:000\n"},
        {"wbemcli mi $SERVICE DigitsLimit=12", ""},
        {"wbemcli mi $SERVICE DigitsLimit=12", ""},
        {"wbemcli mi $SERVICE DigitLimit=12", HasSubstr("DigitLimit")},
        {"zporeg get CDR CDRService DIGITSLIMIT", "00 0c\n"},
        {"wbemcli cm $SERVICE Refresh", kServiceName + " Refresh: 1\n"},
        {"wbemcli cm $SERVICE ClipFile", kServiceName + " ClipFile: 1\n"},
        {"wbemcli cm $SERVICE clipfile", HasSubstr("Cim: (17)")},
        {"wbemcli di $SERVICE", HasSubstr("Cim: (7)")},
    });
    EXPECT_EQ(lab.heard(), "0\n1\n") << "one change, one call of ClipFile";
    lab.stop();
    lab.start();
    EXPECT_EQ(Lab::run("show $SERVICE DigitsLimit"), "-DigitsLimit=12\n");
    EXPECT_EQ(support::contentOf(lab / "server.out").find("finish to create"), std::string::npos);
    EXPECT_THAT(support::contentOf(lab / "provider.out"), HasSubstr("finish to create QTX_CDRService"));
}

TEST(Push, IsScheduledAndFollowsARestore) {
    Lab lab;
    lab.start();
    const std::string sunday = "30 8 * * 7 /qv/bin/CDRTransfer\n";
    Lab::play({
        {"wbemcli mi $PUSH TransferType=1,TransferDayOfWeek=0,TransferTime=8:30", ""},
        {"zporeg backup $LAB/sunday", EndsWith(" entries saved\n")},
    });
    EXPECT_EQ(lab.crontab(), sunday);
    Lab::play({
        {"wbemcli mi $PUSH TransferType=2", ""},
        {"wbemcli mi $SERVICE Language=7", ""},
    });
    EXPECT_EQ(lab.crontab(), "30 8 1 * * /qv/bin/CDRTransfer\n");
    EXPECT_THAT(Lab::run("zporeg restore $LAB/sunday"), EndsWith(" entries restored\n"));
    EXPECT_TRUE(support::waitUntil([&] { return lab.crontab() == sunday; })) << lab.crontab();
    Lab::play({
        {"show $PUSH TransferType,TransferDayOfWeek", "-TransferType=1\n-TransferDayOfWeek=0\n"},
        {"show $SERVICE Language", "-Language=0\n"},
        {"wbemcli mi $PUSH TransferType=4", ""},
        {"wbemcli cm $PUSH PushFileNow", EndsWith(" PushFileNow: 1\n")},
    });
    EXPECT_EQ(lab.crontab(), "");
}

TEST(Push, FollowsARestoreBeforeTheFirstRequest) {
    Lab lab;
    Lab::play({
        {"zporeg set CDR CDRPush TransferType --binary 00", ""},
        {"zporeg backup $LAB/daily", EndsWith(" entries saved\n")},
        {"zporeg set CDR CDRPush TransferType --binary 04", ""},
    });
    lab.start("--preload CDRProvider");
    EXPECT_THAT(Lab::run("zporeg restore $LAB/daily"), EndsWith(" entries restored\n"));
    EXPECT_TRUE(support::waitUntil([&] { return lab.crontab() == "0 2 * * * /qv/bin/CDRTransfer\n"; }))
        << lab.crontab();
}

/// The server lives, a change is refused, and every setting is NULL.
void expectUnreadable(Lab& lab, const std::string& status) {
    Lab::play({
        {"wbemcli mi $SERVICE DigitsLimit=20", AllOf(HasSubstr("Cim: (1)"), HasSubstr("(101)"))},
        {"show $SERVICE | grep -c '=.'", "4\n"}, // the keys
        {"wbemcli mi $PUSH TransferType=1", HasSubstr("Cim: (1)")},
    });
    EXPECT_THAT(lab.diagnostics(), HasSubstr("getDigitsLimit error = " + status));
}

TEST(Registry, DamagedIsNamedInTheLogAndRepairedWithoutARestart) {
    Lab lab;
    lab.start();
    Lab::run("zporeg backup $LAB/good");
    const auto damage = [&lab](const std::string& content) {
        support::writeFile(lab / "garbage", content);
        std::filesystem::rename(lab / "garbage", lab / "state/registry.mdb");
    };
    damage(std::string(65536, 'x'));
    expectUnreadable(lab, std::to_string(0x20000A));
    EXPECT_THAT(lab.diagnostics(), HasSubstr("registry.mdb"));
    std::filesystem::remove(lab / "state/registry.mdb");
    Lab::play({
        {"zporeg restore $LAB/good", EndsWith(" entries restored\n")},
        {"show $SERVICE DigitsLimit", "-DigitsLimit=10\n"},
        {"wbemcli mi $SERVICE DigitsLimit=12", ""},
    });
    std::filesystem::rename(lab / "state", lab / "away");
    support::writeFile(lab / "state", "in the way");
    expectUnreadable(lab, std::to_string(0x200007));
    std::filesystem::remove(lab / "state");
    std::filesystem::rename(lab / "away", lab / "state");
    EXPECT_EQ(Lab::run("show $SERVICE DigitsLimit"), "-DigitsLimit=12\n");
}

TEST(Access, NeedsTheRightUserOverTls) {
    Lab lab;
    Lab::run("cd $LAB && openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=lab "
             "-addext subjectAltName=IP:127.0.0.1 -keyout key.pem -out cert.pem");
    Lab::play({
        {"echo 'correct horse' | cimserver-passwd $LAB/users operator --role write --stdin", ""},
        {"echo look | cimserver-passwd $LAB/users viewer --stdin", ""},
    });
    lab.start("--tls-certificate cert.pem --tls-key key.pem --user-file users");
    const std::string object = "@$HOST/${SERVICE#*//*/}";
    const auto as = [&object](const std::string& operation, const std::string& user, const std::string& rest) {
        return "wbemcli -nl -cacert $LAB/cert.pem " + operation + " \"https://" + user + object + "\" " + rest;
    };
    Lab::play({
        {as("gi", "viewer:look", "DigitsLimit"), HasSubstr("\n-DigitsLimit=10\n")},
        {as("mi", "viewer:look", "DigitsLimit=12"), HasSubstr("Cim: (2) CIM_ERR_ACCESS_DENIED")},
        {as("mi", "operator:correct horse", "DigitsLimit=12"), ""},
        {as("gi", "operator:wrong", "DigitsLimit"), HasSubstr("Invalid username/password")},
        {"wbemcli gi \"http://viewer:look" + object + "\"", HasSubstr("Http Exception")},
        {"zporeg get CDR CDRService DIGITSLIMIT", "00 0c\n"},
    });
    EXPECT_EQ(lab.heard(), "0\n");
    EXPECT_THAT(lab.serverLog(), AllOf(HasSubstr("user=viewer"), HasSubstr("for 'operator'"), Not(HasSubstr("horse"))));
}

} // namespace
