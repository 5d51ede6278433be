#include "CDROAMWrap.hpp"

#include "DiagnosticLog.hpp"
#include "QTX_CDRPullStatisticsImpl.hpp"
#include "QTX_CDRPushSettingImpl.hpp"
#include "QTX_CDRPushStatisticsImpl.hpp"
#include "QTX_CDRServiceAccessBinImpl.hpp"
#include "QTX_CDRServiceImpl.hpp"
#include "QTX_CDRServicePrefixBinImpl.hpp"
#include "RequestLock.hpp"

#include <cstdio>

namespace {

constexpr int kAccessBins = QTX_CDRServiceAccessBinImpl::MAX_ACCESS_BIN_ENTRIES_VALUE;
constexpr int kPrefixBins = QTX_CDRServicePrefixBinImpl::MAX_PREFIX_ENTRIES_VALUE;

// Makes bin i under the key prefix followed by i, and traces it.
template <class Bin>
Bin* createBin(const char* keyPrefix, const char* className, int i) {
    Bin* bin = new Bin(std::string(keyPrefix) + std::to_string(i), i);
    (void)std::printf("finish to create %s---%i\n", className, i);
    return bin;
}

} // namespace

CDROAMWrap* CDROAMWrap::globalPtr = nullptr;

// The traces on standard output are fixed: support staff searches for them.
CDROAMWrap::CDROAMWrap() {
    const cdroam::RequestLock lock;
    cdroam::registerDiagnostics();
    pullStatistics_ = new QTX_CDRPullStatisticsImpl("CDRPullStatistic");
    pushSetting_ = new QTX_CDRPushSettingImpl("CDRPushSetting");
    (void)std::printf("before to push sta\n");
    pushStatistics_ = new QTX_CDRPushStatisticsImpl("CDRPushStatistic");
    (void)std::printf("after to push sta\n");
    accessBins_ = new QTX_CDRServiceAccessBin*[kAccessBins];
    for (int i = 0; i < kAccessBins; ++i) {
        accessBins_[i] =
            createBin<QTX_CDRServiceAccessBinImpl>("CDRServiceAccessBin_", "QTX_CDRServiceAccessBinImpl", i);
    }
    service_ = new QTX_CDRServiceImpl("QTX_System", "QTX", "QTX_CDRService", "CDRService");
    (void)std::printf(" finish to create QTX_CDRService\n");
    prefixBins_ = new QTX_CDRServicePrefixBin*[kPrefixBins];
    for (int i = 0; i < kPrefixBins; ++i) {
        prefixBins_[i] =
            createBin<QTX_CDRServicePrefixBinImpl>("CDRServicePrefixBin_", "QTX_CDRServicePrefixBinImpl", i);
    }
}

CDROAMWrap::~CDROAMWrap() {
    const cdroam::RequestLock lock;
    const cdroam::ChangeLock change(cdroam::ChangeLock::Sharing::Alone); // a paused restore still uses its object
    delete pullStatistics_;
    delete pushSetting_;
    delete pushStatistics_;
    delete service_;
    for (int i = 0; i < kAccessBins; ++i) {
        delete accessBins_[i];
    }
    for (int i = 0; i < kPrefixBins; ++i) {
        delete prefixBins_[i];
    }
    cdroam::deregisterDiagnostics();
    // The two arrays of pointers are deliberately not freed.
}

CDROAMWrap* createCDROAMInstances() {
    CDROAMWrap::globalPtr = new CDROAMWrap;
    return CDROAMWrap::globalPtr;
}

void releaseCDROAMInstances() {
    delete CDROAMWrap::globalPtr;
}
