// The module as it is when it has just been loaded. The tests of this program run in their order.
#include "CDROAMWrap.hpp"
#include "CFG_Exception.hpp"
#include "DiagnosticLog.hpp"
#include "ModuleTest.hpp"
#include "QTX_CDRPushSettingImpl.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string populationTrace() {
    std::string trace =
        " QTX_CDRPushSettingImpl created !!!!!!!!!!!!!!!!!!!!!!!!!\nbefore to push sta\nafter to push sta\n";
    for (const char number : std::string("01234")) {
        trace += std::string("finish to create QTX_CDRServiceAccessBinImpl---") + number + "\n";
    }
    trace += " finish to create QTX_CDRService\n";
    for (const char number : std::string("01234567")) {
        trace += std::string("finish to create QTX_CDRServicePrefixBinImpl---") + number + "\n";
    }
    return trace;
}

TEST(Load, HasDoneNothingYetAndPopulatesWithoutAnObjectManager) {
    fakes::FakePlatform& platform = fakes::FakePlatform::get();
    EXPECT_STREQ(getOWVersion(), "3.0.3");
    releaseCDROAMInstances();
    C_RestoreCallBackHdlr(2);
    EXPECT_THAT(platform.calls(), IsEmpty());
    EXPECT_EQ(zpoHandle, 0U);

    testing::internal::CaptureStdout();
    CDROAMWrap* const holder = createCDROAMInstances();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), populationTrace());
    EXPECT_EQ(holder, CDROAMWrap::globalPtr);
    EXPECT_EQ(myInstance, nullptr);
    // No provider has installed a manager: the default one has the objects.
    EXPECT_NO_THROW(QTX_CDRPushSetting::getInstanceManager()->get("CDRPushSetting"));

    releaseCDROAMInstances();
    EXPECT_EQ(CDROAMWrap::globalPtr, holder);
    EXPECT_THROW(QTX_CDRPushSetting::getInstanceManager()->get("CDRPushSetting"), CFG_NoInstance);
    EXPECT_THAT(platform.calls("ZpoDiagDeregisterModule"), ElementsAre("ZpoDiagDeregisterModule 41"));
    platform.forget();
    platform.callbacks.at("CDROAMProvider")(2);
    EXPECT_THAT(platform.calls(), IsEmpty()) << "a restore after the release is ignored";
}

TEST_F(ModuleTest, InitialisesThePlatformInOrder) {
    EXPECT_EQ(output(), "begin to create instance in initialize() " + populationTrace() +
                            "finish to create instance in initialize() ");
    EXPECT_THAT(platform.calls(),
                ElementsAre("ZpoDiagRegisterModule CDRProvider.so CDR CDROAM CdrOAM.log",
                            "ZpoNotifyRegBackupAndRestore CDROAMProvider 2", "osQueueGetId CDRService"));
    EXPECT_EQ(platform.callbacks.at("CDROAMProvider"), &C_RestoreCallBackHdlr);
}

TEST_F(ModuleTest, CountsMethodCallsFromOne) {
    for (unsigned int count : {1U, 2U}) {
        for (const char* object : {kService, kPushStatistics, kPullStatistics}) {
            EXPECT_EQ(invoke(path(object), "Refresh"), count) << object;
        }
        EXPECT_EQ(invoke(path(kService), "ClipFile"), count);
        EXPECT_EQ(invoke(path(kPushSetting), "PushFileNow"), count);
    }
}

TEST_F(ModuleTest, LivesWithPlatformServicesThatFail) {
    for (const char* function :
         {"ZpoDiagRegisterModule", "ZpoNotifyRegBackupAndRestore", "osQueueGetId", "ZpoDiagAddLogEntry"}) {
        platform.fail(function, 5);
    }
    CDROAMWrap* const first = myInstance;
    provider->initialize(environment);
    EXPECT_NE(myInstance, first) << "a second initialisation makes a second set";
    EXPECT_EQ(shown(get(kService), "Format"), "-");
    EXPECT_EQ(set(kService, "Format", value("uint8", "1")), "");
    delete first;
}

} // namespace
