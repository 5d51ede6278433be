// What is particular to the service settings and the statistics.
#include "ModuleTest.hpp"
#include "QTX_CDRPushStatistics.hpp"
#include "QTX_CDRServiceImpl.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ServiceTest : public ModuleTest {
  protected:
    ServiceTest() {
        platform.forget();
        (void)output();
    }
    void changeLanguage() { EXPECT_EQ(set(kService, "Language", value("uint8", "1")), ""); }
};

TEST_F(ServiceTest, NotifiesTheServiceThroughItsCurrentQueue) {
    const std::string traced = "After notifyCDRService()############################## \n";
    changeLanguage(); // there is none yet
    platform.queues["CDRService"] = 7;
    changeLanguage();
    platform.queues["CDRService"] = 8; // the service was started again
    changeLanguage();
    platform.queues.clear(); // a queue that is not found any more is still the one
    invoke(path(kService), "ClipFile");
    invoke(path(kService), "Refresh");          // sends nothing
    platform.queues["CDRService"] = 0xFFFFFFFF; // means none
    changeLanguage();
    EXPECT_THAT(platform.calls("osQueueSend"), ElementsAre("osQueueSend 7 0", "osQueueSend 8 0", "osQueueSend 8 1"));
    EXPECT_EQ(output(), traced + traced + traced);
    platform.queues["CDRService"] = 7;
    platform.fail("osQueueSend", 0x30ABCD);
    changeLanguage();
    EXPECT_THAT(platform.log, ElementsAre("2 1 -1 Notifying CDRService QueueSend failed rc =30abcd"));
    EXPECT_EQ(output(), "");
}

TEST_F(ServiceTest, KnowsTheQueueFromItsBeginning) {
    platform.queues["CDRService"] = 9;
    QTX_CDRServiceImpl service("QTX_System", "QTX", "QTX_CDRService", "CDRService");
    platform.queues.clear();
    service.ClipFile();
    EXPECT_THAT(platform.calls("osQueueSend"), ElementsAre("osQueueSend 9 1"));
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
    std::vector<std::string> expected;
    for (const PropertyCase& c : propertyCases()) {
        if (c.isPullStatistic() && !c.writable) {
            expected.push_back(c.type == "string" ? "ZpoSetRegEntryString " + c.entry() + " text "
                                                  : "ZpoSetRegEntryBinary " + c.entry() + " bytes 00000000");
        }
    }
    EXPECT_EQ(platform.calls(), expected);
}

TEST_F(ServiceTest, ThePullStatisticsApplyWhenTheTransferTypeIsUnknown) {
    platform.put("CDR/CDRPull/Pull-NumFailures", counterEntry(9));
    for (const char* type : {"", "text 1"}) { // absent, and of another kind
        platform.put("CDR/CDRPush/TransferType", type);
        EXPECT_EQ(shown(get(kPullStatistics), "NumberOfFailedTransfers"), "9");
    }
    platform.put("CDR/CDRPush/TransferType", "bytes 00"); // the flag can be set all the same
    EXPECT_EQ(set(kPullStatistics, "IncludeMetricsFlag", value("boolean", "true")), "");
    EXPECT_EQ(platform.entry("CDR/CDRPull/Pull-IncludeMetricsFlag"), "bytes 01");
}

TEST_F(ServiceTest, AnUnreadableOrAbsentTransferTimeIsATextOfOneNul) {
    const QTX_CDRPushStatistics& object = *QTX_CDRPushStatistics::getInstanceManager()->get("CDRPushStatistic");
    QualifierArray qualifiers;
    for (const int status : {0, 100}) {
        std::string text = "kept";
        EXPECT_EQ(object.getLastTransferTime(text, qualifiers), status);
        EXPECT_EQ(text, std::string(1, '\0'));
        platform.fail("ZpoGetRegEntryString", 5);
    }
    platform.forget();
    invoke(path(kPushStatistics), "Refresh");
    EXPECT_THAT(platform.calls(), ElementsAre("ZpoGetRegEntryString CDR/CDRPush/LastTransferTime 512"));
}

TEST_F(ServiceTest, AStoredTextThatIsNotADateTimeFailsTheRequest) {
    platform.put("CDR/CDRPush/LastTransferTime", "text yesterday");
    EXPECT_THAT(failure([&] { get(kPushStatistics); }), testing::StartsWith("1 357 CDRProvider "));
    EXPECT_EQ(logged.size(), 1U);
}

} // namespace
