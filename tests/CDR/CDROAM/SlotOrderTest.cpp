// The slots of the managed classes, their instance managers and the providers.
#include "../../Slot.hpp"
#include "CDRProvider.hpp"
#include "QTX_CDRPullStatisticsProvider.hpp"
#include "QTX_CDRPushSettingImpl.hpp"
#include "QTX_CDRPushStatistics.hpp"
#include "QTX_CDRService.hpp"
#include "QTX_CDRServiceAccessBin.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

namespace {

// Properties stand in the order of the schema, then come the methods.
// clang-format off
TEST(SlotOrder, Service) {
    using C = QTX_CDRService;
    expectSlotsFrom(2, &C::startChange, &C::endChange, &C::getFormat, &C::setFormat, &C::getReportType, &C::setReportType,
        &C::getLanguage, &C::setLanguage, &C::getReportFilter, &C::setReportFilter, &C::getFeatureCode, &C::setFeatureCode,
        &C::getDateFormat, &C::setDateFormat, &C::getHeaderFormat, &C::setHeaderFormat, &C::getDNISInfo, &C::setDNISInfo,
        &C::getConnectChar, &C::setConnectChar, &C::getDigitsSuppress, &C::setDigitsSuppress,
        &C::getDigitsLimit, &C::setDigitsLimit, &C::getClipFileSchedule, &C::setClipFileSchedule,
        &C::getClipFileSize_100K, &C::setClipFileSize_100K, &C::getCDRDiskSpaceLimit_MB, &C::setCDRDiskSpaceLimit_MB,
        &C::getCLIDWithName, &C::setCLIDWithName, &C::getLongCLIDSupport, &C::setLongCLIDSupport,
        &C::getCLIDWithCallType, &C::setCLIDWithCallType, &C::getSupportCallCharge, &C::setSupportCallCharge,
        &C::getAnswerSupervision, &C::setAnswerSupervision, &C::getCallFilterDuration, &C::setCallFilterDuration,
        &C::getHospitalityRecords, &C::setHospitalityRecords, &C::getSystemCreationClassName, &C::getSystemName,
        &C::getCreationClassName, &C::getName, &C::Refresh, &C::ClipFile);
    using P = QTX_CDRServicePrefixBin;
    expectSlotsFrom(2, &P::startChange, &P::endChange, &P::getPrefixBin, &P::setPrefixBin, &P::getInstanceID);
    using A = QTX_CDRServiceAccessBin;
    expectSlotsFrom(2, &A::startChange, &A::endChange, &A::getAccessBin, &A::setAccessBin, &A::getSuppressBin,
        &A::setSuppressBin, &A::getInstanceID);
}

TEST(SlotOrder, PushSetting) {
    using C = QTX_CDRPushSetting;
    expectSlotsFrom(2, &C::startChange, &C::endChange, &C::getTransferType, &C::setTransferType,
        &C::getIPAddress, &C::setIPAddress, &C::getUserName, &C::setUserName, &C::getPassword, &C::setPassword,
        &C::getDestFolder, &C::setDestFolder, &C::getNumRetry, &C::setNumRetry, &C::getDeleteFlag, &C::setDeleteFlag,
        &C::getCompressFlag, &C::setCompressFlag, &C::getIncludeMetricsFlag, &C::setIncludeMetricsFlag,
        &C::getTransferTime, &C::setTransferTime, &C::getTransferDayOfMonth, &C::setTransferDayOfMonth,
        &C::getTransferDayOfWeek, &C::setTransferDayOfWeek, &C::getInstanceID, &C::PushFileNow,
        &QTX_CDRPushSettingImpl::setPushSchedule, &QTX_CDRPushSettingImpl::removePushSchedule);
}

TEST(SlotOrder, Statistics) {
    using S = QTX_CDRPushStatistics;
    expectSlotsFrom(2, &S::startChange, &S::endChange, &S::getName, &S::getLastTransferTime, &S::Refresh);
    using C = QTX_CDRPullStatistics;
    expectSlotsFrom(2, &C::startChange, &C::endChange, &C::getName, &C::getMostRecentSuccessfulTransfer,
        &C::getIncludeMetricsFlag, &C::setIncludeMetricsFlag, &C::getNumberOfSuccessfulTransfers,
        &C::getMostRecentFailedTransfer, &C::getReasonForFailure, &C::getNumberOfFailedTransfers,
        &C::getLargestFileTransferred, &C::getSmallestFileTransferred, &C::getTotalNumberOfBytesTransferred,
        &C::getTotalNumberOfFileTransferred, &C::Refresh);
}

// In a provider its first base's functions come first.
TEST(SlotOrder, ManagersAndProviders) {
    using M = QTX_CDRServiceInstanceManager;
    expectSlotsFrom(2, &M::init, &M::createQTX_CDRService, &M::destroyQTX_CDRService, &M::add, &M::remove, &M::get,
        &M::startIteration, &M::hasNext, &M::next, &M::endIteration);
    using P = QTX_CDRPullStatisticsProvider;
    EXPECT_LT(slot(&P::invokeMethod), slot(&P::initialize));
    expectSlotsFrom(slot(&P::initialize), &P::initialize, &P::enumInstanceNames, &P::enumInstances, &P::getInstance,
        &P::createInstance, &P::deleteInstance);
    using U = CDRProvider;
    EXPECT_LT(slot(&U::invokeMethod), slot(&U::initialize));
    expectSlotsFrom(slot(&U::initialize), &U::initialize, &U::enumInstanceNames, &U::enumInstances, &U::getInstance,
        &U::createInstance, &U::deleteInstance, &U::modifyInstance, &U::associators, &U::associatorNames, &U::references,
        &U::referenceNames);
}
// clang-format on

} // namespace
