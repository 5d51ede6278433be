#include "QTX_CDRPushStatisticsImpl.hpp"

#include "Qualifiers.hpp"
#include "Statistics.hpp"

using namespace cdroam;

namespace {

constexpr Entry kLastTransferTime{kPushSection, "LastTransferTime"};

// Counter of the method; counts from 1 as long as the module is loaded.
unsigned int RefreshReturn = 0;

} // namespace

QTX_CDRPushStatisticsImpl::QTX_CDRPushStatisticsImpl(const std::string& name) : QTX_CDRPushStatistics(name), cache_{} {}

int QTX_CDRPushStatisticsImpl::setQulifier(QualifierArray& qualifiers) const {
    unsigned char type = 0;
    const bool unused = Byte::load(kTransferType, type) == 0 && (type == Pull || type == NoTransfer);
    return appendApplicable(qualifiers, !unused) ? 1 : 0;
}

int QTX_CDRPushStatisticsImpl::getLastTransferTime(std::string& value, QualifierArray& qualifiers) const {
    if (setQulifier(qualifiers) == 0) {
        return Success;
    }
    const TextStatistic statistic{kLastTransferTime, "getLastTransferTime", "Push-LastTransferTime",
                                  std::string(1, '\0')};
    return readStatistic(statistic, cache_.LastTransferTime, value);
}

unsigned int QTX_CDRPushStatisticsImpl::Refresh() {
    (void)readRawText(kLastTransferTime, cache_.LastTransferTime);
    return ++RefreshReturn;
}
