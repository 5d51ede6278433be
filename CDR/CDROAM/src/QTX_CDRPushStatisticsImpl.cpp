#include "QTX_CDRPushStatisticsImpl.hpp"

#include "Qualifiers.hpp"

using namespace cdroam;

namespace {

// Counts the calls of the method while the module is loaded.
unsigned int RefreshReturn = 0;

} // namespace

int QTX_CDRPushStatisticsImpl::setQulifier(QualifierArray& qualifiers) const {
    return appendApplicable(qualifiers, isPushed(storedTransferType(Daily))) ? 1 : 0;
}

int QTX_CDRPushStatisticsImpl::getLastTransferTime(std::string& value, QualifierArray& qualifiers) const {
    return setQulifier(qualifiers) == 0 ? Success : lastTransferTime_.get(value, std::string(1, '\0'));
}

unsigned int QTX_CDRPushStatisticsImpl::Refresh() {
    (void)lastTransferTime_.load();
    return ++RefreshReturn;
}
