#include "QTX_CDRPullStatisticsImpl.hpp"

#include "Qualifiers.hpp"
#include "RequestLock.hpp"

using namespace cdroam;

namespace {

// Counts the calls of the method while the module is loaded.
unsigned int RefreshReturn = 0;

} // namespace

int QTX_CDRPullStatisticsImpl::setQulifier(QualifierArray& qualifiers) const {
    return appendApplicable(qualifiers, storedTransferType(Pull) == Pull) ? 1 : 0;
}

unsigned int QTX_CDRPullStatisticsImpl::Refresh() {
    const ChangeLock lock(ChangeLock::Sharing::Alone); // so that reads go on during the writes
    mostRecentSuccessfulTransfer_.clear();
    numberOfSuccessfulTransfers_.clear();
    mostRecentFailedTransfer_.clear();
    reasonForFailure_.clear();
    numberOfFailedTransfers_.clear();
    largestFileTransferred_.clear();
    smallestFileTransferred_.clear();
    totalNumberOfBytesTransferred_.clear();
    totalNumberOfFileTransferred_.clear();
    return ++RefreshReturn;
}
