// What a person meets: reading, changing, restarting, restoring, mistakes, damage, users.
#include "Lab.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace {

using namespace lab;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const char kServiceName[] = "root/cimv2:QTX_CDRService.SystemCreationClassName=QTX_System,SystemName=QTX,"
                            "CreationClassName=QTX_CDRService,Name=CDRService";

TEST(Service, IsReadChangedAndKept) {
    Lab lab(Registry::Factory);
    lab.start();
    const std::string name = kServiceName;
    Lab::play({
        {"wbemcli ein ${CIM}QTX_CDRService", name + "\n"},
        {"show $SERVICE | grep '=$'", ""},
        {"show $SERVICE DigitsLimit,DNISInfo,FeatureCode", "-FeatureCode=85\n-DNISInfo=TRUE\n-DigitsLimit=10\n"},
        {"wbemcli gc ${CIM}QTX_CDRPushStatistics", "root/cimv2:QTX_CDRPushStatistics Name=,LastTransferTime=\n"},
        {"wbemcli mi $SERVICE DigitsLimit=12", ""},
        {"wbemcli mi $SERVICE DigitsLimit=12", ""},
        {"wbemcli mi $SERVICE DigitLimit=12", HasSubstr("DigitLimit")},
        {"zporeg get CDR CDRService DIGITSLIMIT", "00 0c\n"},
        {"wbemcli cm $SERVICE Refresh", name + " Refresh: 1\n"},
        {"wbemcli cm $SERVICE Refresh", name + " Refresh: 2\n"},
        {"wbemcli cm $SERVICE ClipFile", name + " ClipFile: 1\n"},
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

TEST(Bins, KeepEachRow) {
    Lab lab(Registry::Factory);
    lab.start();
    const std::string empty = "0c 0c 0c 0c 0c 0c 0c 0c ";
    Lab::play({
        {"wbemcli ei ${CIM}QTX_CDRServicePrefixBin | grep -c PrefixBin_", "8\n"},
        {"wbemcli ei ${CIM}QTX_CDRServiceAccessBin | grep -c AccessBin_", "5\n"},
        {"wbemcli mi $PREFIX3 PrefixBin=12345678", ""},
        {"zporeg get CDR CDRService 'PREFIX BIN'", "09 0c 0c 0c 0c 0c 0c 0c 00 01 01 0c 0c 0c 0c 0c " + empty +
                                                       "01 02 03 04 05 06 07 08 " + empty + empty + empty +
                                                       "0c 0c 0c 0c 0c 0c 0c 0c\n"},
        {"wbemcli gi ${CIM}QTX_CDRServicePrefixBin.InstanceID=CDRServicePrefixBin_8", HasSubstr("Cim: (6)")},
    });
}

TEST(Push, IsScheduledAndFollowsARestore) {
    Lab lab(Registry::Factory);
    lab.start();
    const std::string sunday = "30 8 * * 7 /qv/bin/CDRTransfer\n";
    const std::string name = "root/cimv2:QTX_CDRPushSetting.InstanceID=CDRPushSetting";
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
        {"wbemcli cm $PUSH PushFileNow", name + " PushFileNow: 1\n"},
        {"wbemcli cm $PUSH PushFileNow", name + " PushFileNow: 2\n"},
        {"wbemcli cm $PUSH PushFileNow", name + " PushFileNow: 3\n"},
    });
    EXPECT_EQ(lab.crontab(), "");
}

TEST(Push, FollowsARestoreBeforeTheFirstRequest) {
    Lab lab(Registry::Factory);
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

TEST(Push, KeepsOneTaskThroughRestoresBesideAClient) {
    Lab lab(Registry::Factory);
    lab.start();
    Lab::run("wbemcli mi $PUSH TransferType=0; zporeg backup $LAB/daily");
    const auto tasks = [&lab] {
        const std::string text = lab.crontab();
        return std::count(text.begin(), text.end(), '\n');
    };
    std::ptrdiff_t most = 0;
    const auto isOne = [&] {
        most = std::max(most, tasks());
        return tasks() == 1;
    };
    {
        const Background client("while :; do wbemcli mi $PUSH TransferTime=1:00; wbemcli mi $PUSH TransferTime=2:00;"
                                "done >$LAB/failed 2>&1");
        for (int round = 0; round < 60; ++round) {
            EXPECT_THAT(Lab::run("zporeg restore $LAB/daily"), EndsWith(" entries restored\n"));
            EXPECT_TRUE(support::waitUntil(isOne)) << lab.crontab();
        }
    }
    EXPECT_TRUE(support::waitUntil(isOne)) << lab.crontab();
    EXPECT_EQ(most, 1);
    EXPECT_EQ(support::contentOf(lab / "failed"), "");
}

TEST(Statistics, ApplyByTheTypeOfTransfer) {
    Lab lab(Registry::Factory);
    lab.start();
    Lab::play({
        {"zporeg set CDR CDRPull Pull-NumFailures --binary 02000000", ""},
        {"zporeg set CDR CDRPull Pull-MostRecentFailureReason --text 'no route'", ""},
        {"zporeg set CDR CDRPush LastTransferTime --text 20260102030405.000000+060", ""},
        {"wbemcli mi $PUSH TransferType=3", ""},
        {"show $PULLED NumberOfFailedTransfers,ReasonForFailure",
         "-ReasonForFailure=no route\n-NumberOfFailedTransfers=2\n"},
        {"wbemcli mi $PUSH TransferType=0", ""},
        {"show $PUSHED LastTransferTime", "-LastTransferTime=20260102030405.000000+060\n"},
        {"wbemcli cm $PULLED Refresh", HasSubstr("Refresh: 1\n")},
        {"zporeg get CDR CDRPull Pull-NumFailures", "00 00 00 00\n"},
    });
}

TEST(Registry, IsSharedWithAWriterThatDiesAtAnyMoment) {
    Lab lab(Registry::Factory);
    lab.start();
    const std::string get = "show $SERVICE DigitsLimit";
    std::set<std::string> seen;
    for (int round = 0; round < 5; ++round) {
        const Background writer("while :; do zporeg set CDR CDRService DIGITSLIMIT --binary 0003;"
                                "zporeg set CDR CDRService DIGITSLIMIT --binary 0018; done");
        for (int reading = 0; reading < 10; ++reading) {
            seen.insert(Lab::run(get));
        }
        EXPECT_EQ(Lab::run("wbemcli mi $SERVICE Language=" + std::to_string(round + 1)), "");
    }
    seen.erase("-DigitsLimit=10\n"); // before the writer's first
    EXPECT_THAT(seen, testing::UnorderedElementsAre("-DigitsLimit=3\n", "-DigitsLimit=24\n"));
    Lab::play({
        {"wbemcli mi $SERVICE DigitsLimit=11", ""},
        {get, "-DigitsLimit=11\n"},
        {"zporeg get CDR CDRService LANG", "05\n"},
    });
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
    Lab lab(Registry::Factory);
    lab.start();
    Lab::run("zporeg backup $LAB/good");
    const auto damage = [&lab](const std::string& content) {
        support::writeFile(lab / "garbage", content);
        std::filesystem::rename(lab / "garbage", lab / "state/registry.mdb");
    };
    damage(std::string(65536, 'x'));
    expectUnreadable(lab, std::to_string(0x20000A));
    EXPECT_THAT(lab.diagnostics(), HasSubstr("registry.mdb"));
    damage("short");
    expectUnreadable(lab, std::to_string(0x20000A));
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

TEST(Registry, ReadOnlyIsRead) {
    Lab lab(Registry::Factory);
    Lab::run("chmod 0400 $ZPO_STATE_DIR/registry.mdb; chmod 0500 $ZPO_STATE_DIR");
    lab.start("", geteuid() == 0 ? "setpriv --bounding-set=-dac_override,-dac_read_search" : "");
    Lab::play({
        {"show $SERVICE DigitsLimit", "-DigitsLimit=10\n"},
        {"wbemcli mi $SERVICE DigitsLimit=12", AllOf(HasSubstr("Cim: (1)"), HasSubstr("(101)"))},
        {"zporeg get CDR CDRService DIGITSLIMIT", "00 0a\n"},
    });
    EXPECT_THAT(lab.diagnostics(), HasSubstr(std::to_string(0x200009)));
    EXPECT_EQ(lab.heard(), "") << "what was not stored is not told";
    Lab::run("chmod 0700 $ZPO_STATE_DIR");
}

TEST(Server, HoldsAnotherProviderBesideTheModule) {
    Lab lab(Registry::Factory);
    lab.start("--mof " TEST_PROVIDER_MOF " --provider-dir " TEST_PROVIDER_FOLDER);
    Lab::play({
        {"wbemcli ein ${CIM}ACME_Slot", "root/cimv2:ACME_Slot.Number=1\nroot/cimv2:ACME_Slot.Number=2\n"},
        {"show $SERVICE DigitsLimit", "-DigitsLimit=10\n"},
        {"show ${CIM}ACME_Slot.Number=2", "-Number=2\n-Label=slot 2\n"},
        {"wbemcli cm ${CIM}ACME_Thing.Name=\\\"full\\\" Count", HasSubstr("Count: 4\n")},
        {"wbemcli ain ${CIM}ACME_Thing.Name=\\\"full\\\"", HasSubstr("/root/cimv2:ACME_Slot.Number=1\n")},
        {"wbemcli ain $SERVICE", ""},
        {"wbemcli mi $SERVICE DigitsLimit=13", ""},
        {"wbemcli mi ${CIM}ACME_Thing.Name=\\\"empty\\\" U16=7", ""},
        {"show ${CIM}ACME_Thing.Name=\\\"empty\\\" U16 | tail -n 1", "-U16=7\n"},
        {"wbemcli cm ${CIM}ACME_Thing.Name=\\\"full\\\" Fail", HasSubstr("Cim: (1)")},
        {"zporeg get CDR CDRService DIGITSLIMIT", "00 0d\n"},
    });
}

TEST(Access, NeedsTheRightUserOverTls) {
    Lab lab(Registry::Factory);
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
        {as("cm", "viewer:look", "ClipFile"), HasSubstr("Cim: (2) CIM_ERR_ACCESS_DENIED")},
        {as("mi", "operator:correct horse", "DigitsLimit=12"), ""},
        {as("gi", "operator:wrong", "DigitsLimit"), HasSubstr("Invalid username/password")},
        {as("gi", "nobody:look", "DigitsLimit"), HasSubstr("Invalid username/password")},
        {"wbemcli -cacert $LAB/cert.pem gi \"https://$HOST/${SERVICE#*//*/}\"",
         HasSubstr("Username/password required")},
        {"wbemcli gi \"https://viewer:look" + object + "\"", HasSubstr("Http Exception")},
        {"wbemcli gi \"http://viewer:look" + object + "\"", HasSubstr("Http Exception")},
        {"zporeg get CDR CDRService DIGITSLIMIT", "00 0c\n"},
    });
    EXPECT_EQ(lab.heard(), "0\n");
    EXPECT_THAT(lab.serverLog(), AllOf(HasSubstr("user=viewer"), HasSubstr("for 'nobody'"), HasSubstr("for 'operator'"),
                                       Not(HasSubstr("horse"))));
}

} // namespace
