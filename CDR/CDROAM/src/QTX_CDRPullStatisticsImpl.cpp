#include "QTX_CDRPullStatisticsImpl.hpp"

#include "Qualifiers.hpp"

using namespace cdroam;

namespace {

// Counts the calls of the method for as long as the module is loaded.
unsigned int RefreshReturn = 0;

} // namespace

int QTX_CDRPullStatisticsImpl::setQulifier(QualifierArray& qualifiers) const {
    unsigned char type = 0;
    const bool unused = Byte::load(kTransferType, type) == 0 && type != Pull;
    return appendApplicable(qualifiers, !unused) ? 1 : 0;
}

unsigned int QTX_CDRPullStatisticsImpl::Refresh() {
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
