// What the service settings tell the CDR service process.
#include "ModuleTest.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string kSent = "After notifyCDRService()############################## \n";

class NotificationTest : public ModuleTest {
  protected:
    NotificationTest() {
        platform.forget();
        (void)output();
    }
    void changeLanguage() { EXPECT_EQ(set(kService, "Language", value("uint8", "1")).text(), ""); }
    std::vector<std::string> sent() const { return platform.calls("osQueueSend"); }
};

TEST_F(NotificationTest, SendsNothingWithoutAQueue) {
    changeLanguage();
    invoke(path(kService), "ClipFile");
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(platform.log, IsEmpty());
    EXPECT_EQ(output(), "");
}

TEST_F(NotificationTest, FollowsTheQueue) {
    platform.queues["CDRService"] = 7;
    changeLanguage();
    platform.queues["CDRService"] = 8; // the service was started again
    changeLanguage();
    platform.queues.clear(); // a queue that is not found any more is still the one
    invoke(path(kService), "ClipFile");
    EXPECT_THAT(sent(), ElementsAre("osQueueSend 7 0", "osQueueSend 8 0", "osQueueSend 8 1"));
    EXPECT_EQ(output(), kSent + kSent + kSent);
}

TEST_F(NotificationTest, LogsAFailedSendAndSucceeds) {
    platform.queues["CDRService"] = 7;
    platform.fail("osQueueSend", 0x30ABCD);
    changeLanguage();
    EXPECT_THAT(platform.log, ElementsAre("2 1 -1 Notifying CDRService QueueSend failed rc =30abcd"));
    EXPECT_EQ(output(), "");
}

TEST_F(NotificationTest, TakesAllOnesForNoQueue) {
    platform.queues["CDRService"] = 0xFFFFFFFF;
    changeLanguage();
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(NotificationTest, RefreshesWithoutReadingOrSending) {
    platform.queues["CDRService"] = 7;
    invoke(path(kService), "Refresh");
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_F(NotificationTest, TracesAnswerSupervision) {
    platform.put("CDR/CDRService/SUPERVISE", "bytes 05");
    get(kService);
    EXPECT_EQ(output(), "theAnswerSupervision = 1\n");
    platform.fail("ZpoGetRegEntryBinary", 17, "SUPERVISE");
    get(kService);
    EXPECT_EQ(output(), " get AnswerSupervision error = 17\n");
}

} // namespace
