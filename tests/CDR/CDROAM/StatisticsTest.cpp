// What is particular to the statistics.
#include "ModuleTest.hpp"
#include "PropertyCases.hpp"
#include "QTX_CDRPushStatistics.hpp"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST_F(ModuleTest, RefreshingClearsThePullStatisticsInOrder) {
    for (const PropertyCase& c : propertyCases()) {
        if (c.isPullStatistic()) {
            c.store(platform);
        }
    }
    platform.forget();
    platform.fail("ZpoSetRegEntryBinary", 5, "Pull-NumFailures"); // no failure stops it
    invoke(path(kPullStatistics), "Refresh");
    const std::string number = "ZpoSetRegEntryBinary CDR/CDRPull/";
    const std::string text = "ZpoSetRegEntryString CDR/CDRPull/";
    const std::string zero = " bytes 00000000";
    const std::string empty = " text ";
    EXPECT_THAT(platform.calls(),
                ElementsAre(text + "Pull-MostRecentSuccess" + empty, number + "Pull-NumSuccesses" + zero,
                            text + "Pull-MostRecentFailure" + empty, text + "Pull-MostRecentFailureReason" + empty,
                            number + "Pull-NumFailures" + zero, number + "Pull-LargestFile" + zero,
                            number + "Pull-SmallestFile" + zero, number + "Pull-NumberOfBytes" + zero,
                            number + "Pull-NumberOfFiles" + zero));
    EXPECT_EQ(platform.entry("CDR/CDRPull/Pull-IncludeMetricsFlag"), "bytes 01");
}

TEST_F(ModuleTest, ThePullStatisticsApplyWhenTheTransferTypeIsUnknown) {
    platform.put("CDR/CDRPull/Pull-NumFailures", "bytes 09000000");
    for (const char* type : {"", "text 1"}) { // absent, and of another kind
        platform.put("CDR/CDRPush/TransferType", type);
        const OpenWBEM::CIMInstance instance = get(kPullStatistics);
        EXPECT_EQ(shown(instance, "NumberOfFailedTransfers"), "9");
        EXPECT_EQ(qualifier(instance, "NumberOfFailedTransfers", "Applicable"), "true");
        EXPECT_EQ(qualifier(instance, "Name", "Applicable"), "-");
    }
}

TEST_F(ModuleTest, TheMetricsFlagIsSetWhateverTheTransferType) {
    platform.put("CDR/CDRPush/TransferType", "bytes 00");
    EXPECT_EQ(set(kPullStatistics, "IncludeMetricsFlag", value("boolean", "true")).text(), "");
    EXPECT_EQ(platform.entry("CDR/CDRPull/Pull-IncludeMetricsFlag"), "bytes 01");
}

TEST_F(ModuleTest, RefreshingThePushStatisticsOnlyReads) {
    platform.fail("ZpoGetRegEntryString", 5);
    platform.forget();
    invoke(path(kPushStatistics), "Refresh");
    EXPECT_THAT(platform.calls(), ElementsAre("ZpoGetRegEntryString CDR/CDRPush/LastTransferTime 512"));
}

TEST_F(ModuleTest, AnUnreadableOrAbsentTransferTimeIsATextOfOneNul) {
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
}

TEST_F(ModuleTest, AStoredTextThatIsNoDateTimeFailsTheRequest) {
    platform.put("CDR/CDRPush/LastTransferTime", "text yesterday");
    EXPECT_EQ(failure([&] { get(kPushStatistics); }).line, 357);
    EXPECT_EQ(logger->entries.size(), 1U);
}

} // namespace
