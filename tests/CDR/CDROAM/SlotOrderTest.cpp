// The order of the virtual functions, which callers that were compiled against the headers rely on.
#include "CDRProvider.hpp"
#include "QTX_CDRPullStatisticsProvider.hpp"
#include "QTX_CDRPushSettingImpl.hpp"
#include "QTX_CDRPushStatistics.hpp"
#include "QTX_CDRService.hpp"
#include "QTX_CDRServiceAccessBin.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

#include <gmock/gmock.h>

#include <cstring>
#include <numeric>
#include <vector>

namespace {

// The slot of a virtual function: its member pointer holds 1 + the slot's offset in bytes (Itanium C++ ABI).
template <class Member>
int slot(Member member) {
    std::ptrdiff_t pointer[2];
    static_assert(sizeof member == sizeof pointer);
    std::memcpy(pointer, &member, sizeof pointer);
    EXPECT_EQ(pointer[0] & 1, 1) << "not virtual";
    EXPECT_EQ(pointer[1], 0) << "not in the primary table";
    return static_cast<int>(pointer[0] / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

// Slots 0 and 1 are the destructor's.
template <class... Members>
void expectSlots(Members... members) {
    std::vector<int> expected(sizeof...(members));
    std::iota(expected.begin(), expected.end(), 2);
    EXPECT_EQ((std::vector<int>{slot(members)...}), expected);
}

#define GET(NAME) &C::get##NAME
#define GET_SET(NAME) &C::get##NAME, &C::set##NAME

TEST(SlotOrder, Service) {
    using C = QTX_CDRService;
    expectSlots(&C::startChange, &C::endChange, GET_SET(Format), GET_SET(ReportType), GET_SET(Language),
                GET_SET(ReportFilter), GET_SET(FeatureCode), GET_SET(DateFormat), GET_SET(HeaderFormat),
                GET_SET(DNISInfo), GET_SET(ConnectChar), GET_SET(DigitsSuppress), GET_SET(DigitsLimit),
                GET_SET(ClipFileSchedule), GET_SET(ClipFileSize_100K), GET_SET(CDRDiskSpaceLimit_MB),
                GET_SET(CLIDWithName), GET_SET(LongCLIDSupport), GET_SET(CLIDWithCallType), GET_SET(SupportCallCharge),
                GET_SET(AnswerSupervision), GET_SET(CallFilterDuration), GET_SET(HospitalityRecords),
                GET(SystemCreationClassName), GET(SystemName), GET(CreationClassName), GET(Name), &C::Refresh,
                &C::ClipFile);
}

TEST(SlotOrder, Bins) {
    {
        using C = QTX_CDRServicePrefixBin;
        expectSlots(&C::startChange, &C::endChange, GET_SET(PrefixBin), GET(InstanceID));
    }
    using C = QTX_CDRServiceAccessBin;
    expectSlots(&C::startChange, &C::endChange, GET_SET(AccessBin), GET_SET(SuppressBin), GET(InstanceID));
}

TEST(SlotOrder, PushSetting) {
    using C = QTX_CDRPushSetting;
    using Impl = QTX_CDRPushSettingImpl;
    expectSlots(&C::startChange, &C::endChange, GET_SET(TransferType), GET_SET(IPAddress), GET_SET(UserName),
                GET_SET(Password), GET_SET(DestFolder), GET_SET(NumRetry), GET_SET(DeleteFlag), GET_SET(CompressFlag),
                GET_SET(IncludeMetricsFlag), GET_SET(TransferTime), GET_SET(TransferDayOfMonth),
                GET_SET(TransferDayOfWeek), GET(InstanceID), &C::PushFileNow, &Impl::setPushSchedule,
                &Impl::removePushSchedule);
}

TEST(SlotOrder, Statistics) {
    {
        using C = QTX_CDRPushStatistics;
        expectSlots(&C::startChange, &C::endChange, GET(Name), GET(LastTransferTime), &C::Refresh);
    }
    using C = QTX_CDRPullStatistics;
    expectSlots(&C::startChange, &C::endChange, GET(Name), GET(MostRecentSuccessfulTransfer),
                GET_SET(IncludeMetricsFlag), GET(NumberOfSuccessfulTransfers), GET(MostRecentFailedTransfer),
                GET(ReasonForFailure), GET(NumberOfFailedTransfers), GET(LargestFileTransferred),
                GET(SmallestFileTransferred), GET(TotalNumberOfBytesTransferred), GET(TotalNumberOfFileTransferred),
                &C::Refresh);
}

TEST(SlotOrder, InstanceManager) {
    using M = QTX_CDRServiceInstanceManager;
    expectSlots(&M::init, &M::createQTX_CDRService, &M::destroyQTX_CDRService, &M::add, &M::remove, &M::get,
                &M::startIteration, &M::hasNext, &M::next, &M::endIteration);
}

// The providers' own slots follow those of their first base, in this order and without gaps.
template <class... Members>
void expectSuccessive(int first, Members... members) {
    std::vector<int> expected(sizeof...(members));
    std::iota(expected.begin(), expected.end(), first);
    EXPECT_EQ((std::vector<int>{slot(members)...}), expected);
}

TEST(SlotOrder, Providers) {
    using P = QTX_CDRPullStatisticsProvider;
    EXPECT_LT(slot(&P::invokeMethod), slot(&P::initialize));
    expectSuccessive(slot(&P::initialize) + 1, &P::enumInstanceNames, &P::enumInstances, &P::getInstance,
                     &P::createInstance, &P::deleteInstance);
    using U = CDRProvider;
    EXPECT_LT(slot(&U::invokeMethod), slot(&U::initialize));
    expectSuccessive(slot(&U::initialize) + 1, &U::enumInstanceNames, &U::enumInstances, &U::getInstance,
                     &U::createInstance, &U::deleteInstance, &U::modifyInstance, &U::associators, &U::associatorNames,
                     &U::references, &U::referenceNames);
}

} // namespace
