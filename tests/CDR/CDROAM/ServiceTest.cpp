// What is particular to the service settings and the statistics.
#include "ModuleTest.hpp"
#include "QTX_CDRPushStatistics.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string kSent = "After notifyCDRService()############################## \n";

class ServiceTest : public ModuleTest {
  protected:
    ServiceTest() {
        platform.forget();
        (void)output();
    }
    void changeLanguage() { EXPECT_EQ(set(kService, "Language", value("uint8", "1")).text(), ""); }
    std::vector<std::string> sent() const { return platform.calls("osQueueSend"); }
};

TEST_F(ServiceTest, TellsTheServiceThroughTheQueueOfTheMoment) {
    changeLanguage(); // there is none yet
    EXPECT_EQ(output(), "");
    platform.queues["CDRService"] = 7;
    changeLanguage();
    platform.queues["CDRService"] = 8; // the service was started again
    changeLanguage();
    platform.queues.clear(); // a queue that is not found any more is still the one
    invoke(path(kService), "ClipFile");
    invoke(path(kService), "Refresh"); // sends nothing
    EXPECT_THAT(sent(), ElementsAre("osQueueSend 7 0", "osQueueSend 8 0", "osQueueSend 8 1"));
    EXPECT_EQ(output(), kSent + kSent + kSent);
    platform.queues["CDRService"] = 0xFFFFFFFF; // means none
    changeLanguage();
    EXPECT_EQ(sent().size(), 3U);
    EXPECT_THAT(platform.log, IsEmpty());
}

TEST_F(ServiceTest, LogsAFailedNotificationAndSucceeds) {
    platform.queues["CDRService"] = 7;
    platform.fail("osQueueSend", 0x30ABCD);
    changeLanguage();
    EXPECT_THAT(platform.log, ElementsAre("2 1 -1 Notifying CDRService QueueSend failed rc =30abcd"));
    EXPECT_EQ(output(), "");
}

TEST_F(ServiceTest, TracesAnswerSupervision) {
    platform.put("CDR/CDRService/SUPERVISE", "bytes 05");
    get(kService);
    EXPECT_EQ(output(), "theAnswerSupervision = 1\n");
    platform.fail("ZpoGetRegEntryBinary", 17, "SUPERVISE");
    get(kService);
    EXPECT_EQ(output(), " get AnswerSupervision error = 17\n");
}

TEST_F(ServiceTest, RefreshingClearsThePullStatisticsInOrder) {
    platform.fail("ZpoSetRegEntryBinary", 5, "Pull-NumFailures"); // no failure stops it
    invoke(path(kPullStatistics), "Refresh");
    const std::string number = "ZpoSetRegEntryBinary CDR/CDRPull/";
    const std::string text = "ZpoSetRegEntryString CDR/CDRPull/";
    const std::string zero = " bytes 00000000";
    EXPECT_THAT(platform.calls(),
                ElementsAre(text + "Pull-MostRecentSuccess text ", number + "Pull-NumSuccesses" + zero,
                            text + "Pull-MostRecentFailure text ", text + "Pull-MostRecentFailureReason text ",
                            number + "Pull-NumFailures" + zero, number + "Pull-LargestFile" + zero,
                            number + "Pull-SmallestFile" + zero, number + "Pull-NumberOfBytes" + zero,
                            number + "Pull-NumberOfFiles" + zero));
}

TEST_F(ServiceTest, ThePullStatisticsApplyWhenTheTransferTypeIsUnknown) {
    platform.put("CDR/CDRPull/Pull-NumFailures", "bytes 09000000");
    for (const char* type : {"", "text 1"}) { // absent, and of another kind
        platform.put("CDR/CDRPush/TransferType", type);
        const OpenWBEM::CIMInstance instance = get(kPullStatistics);
        EXPECT_EQ(shown(instance, "NumberOfFailedTransfers"), "9");
        EXPECT_EQ(qualifier(instance, "NumberOfFailedTransfers", "Applicable"), "true");
    }
    platform.put("CDR/CDRPush/TransferType", "bytes 00"); // the flag can be set all the same
    EXPECT_EQ(set(kPullStatistics, "IncludeMetricsFlag", value("boolean", "true")).text(), "");
    EXPECT_EQ(platform.entry("CDR/CDRPull/Pull-IncludeMetricsFlag"), "bytes 01");
}

TEST_F(ServiceTest, AnUnreadableOrAbsentTransferTimeIsATextOfOneNul) {
    QTX_CDRPushStatistics& object = *QTX_CDRPushStatistics::getInstanceManager()->get("CDRPushStatistic");
    QualifierArray qualifiers;
    std::string text = "kept";
    EXPECT_EQ(object.getLastTransferTime(text, qualifiers), 0);
    EXPECT_EQ(text, std::string(1, '\0'));
    platform.fail("ZpoGetRegEntryString", 5);
    EXPECT_EQ(object.getLastTransferTime(text = "kept", qualifiers), 100);
    EXPECT_EQ(text, std::string(1, '\0'));
    platform.put("CDR/CDRPush/TransferType", "bytes 03");
    EXPECT_EQ(object.getLastTransferTime(text = "kept", qualifiers), 0);
    EXPECT_EQ(text, "kept");
    platform.forget();
    invoke(path(kPushStatistics), "Refresh");
    EXPECT_THAT(platform.calls(), ElementsAre("ZpoGetRegEntryString CDR/CDRPush/LastTransferTime 512"));
}

TEST_F(ServiceTest, AStoredTextThatIsNoDateTimeFailsTheRequest) {
    platform.put("CDR/CDRPush/LastTransferTime", "text yesterday");
    EXPECT_EQ(failure([&] { get(kPushStatistics); }).line, 357);
    EXPECT_EQ(logger->entries.size(), 1U);
}

} // namespace
