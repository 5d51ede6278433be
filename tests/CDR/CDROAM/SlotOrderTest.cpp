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

// The members have successive slots.
template <class... Members>
void expectSlotsFrom(int first, Members... members) {
    std::vector<int> expected(sizeof...(members));
    std::iota(expected.begin(), expected.end(), first);
    EXPECT_EQ((std::vector<int>{slot(members)...}), expected);
}

// Slots 0 and 1 are the destructor's; those of properties stand in the order of the schema, then come the methods.
// clang-format off
TEST(SlotOrder, ManagedClasses) {
    {
        using C = QTX_CDRService;
        expectSlotsFrom(2, &C::startChange, &C::endChange,
            &C::getFormat, &C::setFormat,
            &C::getReportType, &C::setReportType,
            &C::getLanguage, &C::setLanguage,
            &C::getReportFilter, &C::setReportFilter,
            &C::getFeatureCode, &C::setFeatureCode,
            &C::getDateFormat, &C::setDateFormat,
            &C::getHeaderFormat, &C::setHeaderFormat,
            &C::getDNISInfo, &C::setDNISInfo,
            &C::getConnectChar, &C::setConnectChar,
            &C::getDigitsSuppress, &C::setDigitsSuppress,
            &C::getDigitsLimit, &C::setDigitsLimit,
            &C::getClipFileSchedule, &C::setClipFileSchedule,
            &C::getClipFileSize_100K, &C::setClipFileSize_100K,
            &C::getCDRDiskSpaceLimit_MB, &C::setCDRDiskSpaceLimit_MB,
            &C::getCLIDWithName, &C::setCLIDWithName,
            &C::getLongCLIDSupport, &C::setLongCLIDSupport,
            &C::getCLIDWithCallType, &C::setCLIDWithCallType,
            &C::getSupportCallCharge, &C::setSupportCallCharge,
            &C::getAnswerSupervision, &C::setAnswerSupervision,
            &C::getCallFilterDuration, &C::setCallFilterDuration,
            &C::getHospitalityRecords, &C::setHospitalityRecords,
            &C::getSystemCreationClassName,
            &C::getSystemName,
            &C::getCreationClassName,
            &C::getName,
            &C::Refresh,
            &C::ClipFile);
    }
    {
        using C = QTX_CDRServicePrefixBin;
        expectSlotsFrom(2, &C::startChange, &C::endChange,
            &C::getPrefixBin, &C::setPrefixBin,
            &C::getInstanceID);
    }
    {
        using C = QTX_CDRServiceAccessBin;
        expectSlotsFrom(2, &C::startChange, &C::endChange,
            &C::getAccessBin, &C::setAccessBin,
            &C::getSuppressBin, &C::setSuppressBin,
            &C::getInstanceID);
    }
    {
        using C = QTX_CDRPushSetting;
        expectSlotsFrom(2, &C::startChange, &C::endChange,
            &C::getTransferType, &C::setTransferType,
            &C::getIPAddress, &C::setIPAddress,
            &C::getUserName, &C::setUserName,
            &C::getPassword, &C::setPassword,
            &C::getDestFolder, &C::setDestFolder,
            &C::getNumRetry, &C::setNumRetry,
            &C::getDeleteFlag, &C::setDeleteFlag,
            &C::getCompressFlag, &C::setCompressFlag,
            &C::getIncludeMetricsFlag, &C::setIncludeMetricsFlag,
            &C::getTransferTime, &C::setTransferTime,
            &C::getTransferDayOfMonth, &C::setTransferDayOfMonth,
            &C::getTransferDayOfWeek, &C::setTransferDayOfWeek,
            &C::getInstanceID,
            &C::PushFileNow,
            &QTX_CDRPushSettingImpl::setPushSchedule, &QTX_CDRPushSettingImpl::removePushSchedule);
    }
    {
        using C = QTX_CDRPushStatistics;
        expectSlotsFrom(2, &C::startChange, &C::endChange,
            &C::getName,
            &C::getLastTransferTime,
            &C::Refresh);
    }
    {
        using C = QTX_CDRPullStatistics;
        expectSlotsFrom(2, &C::startChange, &C::endChange,
            &C::getName,
            &C::getMostRecentSuccessfulTransfer,
            &C::getIncludeMetricsFlag, &C::setIncludeMetricsFlag,
            &C::getNumberOfSuccessfulTransfers,
            &C::getMostRecentFailedTransfer,
            &C::getReasonForFailure,
            &C::getNumberOfFailedTransfers,
            &C::getLargestFileTransferred,
            &C::getSmallestFileTransferred,
            &C::getTotalNumberOfBytesTransferred,
            &C::getTotalNumberOfFileTransferred,
            &C::Refresh);
    }
}
// clang-format on

TEST(SlotOrder, InstanceManager) {
    using M = QTX_CDRServiceInstanceManager;
    expectSlotsFrom(2, &M::init, &M::createQTX_CDRService, &M::destroyQTX_CDRService, &M::add, &M::remove, &M::get,
                    &M::startIteration, &M::hasNext, &M::next, &M::endIteration);
}

// Their first base's functions come before.
TEST(SlotOrder, Providers) {
    using P = QTX_CDRPullStatisticsProvider;
    EXPECT_LT(slot(&P::invokeMethod), slot(&P::initialize));
    expectSlotsFrom(slot(&P::initialize), &P::initialize, &P::enumInstanceNames, &P::enumInstances, &P::getInstance,
                    &P::createInstance, &P::deleteInstance);
    using U = CDRProvider;
    EXPECT_LT(slot(&U::invokeMethod), slot(&U::initialize));
    expectSlotsFrom(slot(&U::initialize), &U::initialize, &U::enumInstanceNames, &U::enumInstances, &U::getInstance,
                    &U::createInstance, &U::deleteInstance, &U::modifyInstance, &U::associators, &U::associatorNames,
                    &U::references, &U::referenceNames);
}

} // namespace
