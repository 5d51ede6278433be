// The module as it is when it has just been loaded. The tests of this program run in their order.
#include "CDROAMWrap.hpp"
#include "DiagnosticLog.hpp"
#include "ModuleTest.hpp"
#include "QTX_CDRPushSettingImpl.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string populationTrace() {
    std::string trace =
        " QTX_CDRPushSettingImpl created !!!!!!!!!!!!!!!!!!!!!!!!!\nbefore to push sta\nafter to push sta\n";
    const auto bins = [&](const std::string& name, const std::string& numbers) {
        for (const char number : numbers) {
            trace += "finish to create QTX_CDRService" + name + "---" + number + "\n";
        }
    };
    bins("AccessBinImpl", "01234");
    trace += " finish to create QTX_CDRService\n";
    bins("PrefixBinImpl", "01234567");
    return trace;
}

TEST(Load, ShowsTheInterfaceVersionAndHasDoneNothingYet) {
    EXPECT_STREQ(getOWVersion(), "3.0.3");
    EXPECT_EQ(myInstance, nullptr);
    EXPECT_EQ(CDROAMWrap::globalPtr, nullptr);
    EXPECT_EQ(zpoHandle, 0U);
    releaseCDROAMInstances();
    C_RestoreCallBackHdlr(2);
    EXPECT_THAT(fakes::FakePlatform::get().calls(), IsEmpty());
}

TEST(Load, PopulatesWithoutAnObjectManager) {
    fakes::FakePlatform& platform = fakes::FakePlatform::get();
    testing::internal::CaptureStdout();
    CDROAMWrap* const holder = createCDROAMInstances();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), populationTrace());
    EXPECT_EQ(holder, CDROAMWrap::globalPtr);
    EXPECT_EQ(myInstance, nullptr);
    // No provider has installed a manager: the default one has the objects.
    EXPECT_NO_THROW(QTX_CDRPushSetting::getInstanceManager()->get("CDRPushSetting"));
    const std::uint32_t handle = zpoHandle;
    EXPECT_NE(handle, 0U);

    releaseCDROAMInstances();
    EXPECT_EQ(CDROAMWrap::globalPtr, holder);
    EXPECT_FALSE(QTX_CDRPushSetting::getInstanceManager()->hasNext());
    EXPECT_THAT(platform.calls("ZpoDiagDeregisterModule"),
                ElementsAre("ZpoDiagDeregisterModule " + std::to_string(handle)));
    platform.put("CDR/CDRPush/TransferType", "bytes 00");
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
    EXPECT_NE(myInstance, nullptr);
}

TEST_F(ModuleTest, CountsMethodCallsFromOne) {
    platform.queues["CDRService"] = 7;
    for (unsigned int count : {1U, 2U}) {
        for (const auto& [object, method] : {std::pair(kService, "Refresh"),
                                             {kService, "ClipFile"},
                                             {kPushSetting, "PushFileNow"},
                                             {kPushStatistics, "Refresh"},
                                             {kPullStatistics, "Refresh"}}) {
            EXPECT_EQ(invoke(path(object), method), count) << object << method;
        }
    }
}

TEST_F(ModuleTest, LivesWithPlatformServicesThatFail) {
    platform.reset();
    for (const char* function :
         {"ZpoDiagRegisterModule", "ZpoNotifyRegBackupAndRestore", "osQueueGetId", "ZpoDiagAddLogEntry"}) {
        platform.fail(function, 5);
    }
    CDROAMWrap* const first = myInstance;
    provider->initialize(environment);
    EXPECT_NE(myInstance, first) << "a second initialisation makes a second set";
    EXPECT_EQ(names("QTX_CDRServicePrefixBin").size(), 8U);
    EXPECT_EQ(shown(get(kService), "Format"), "-");
    EXPECT_EQ(set(kService, "Format", value("uint8", "1")), "");
    delete first;
}

} // namespace
