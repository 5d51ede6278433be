// The statistics of pulled transfers. Its own getters return 0 and leave the value alone.
#pragma once

#include "ManagedClass.hpp"

// ManagedClass.hpp tells what the columns mean.
// clang-format off
#define QTX_CDRPULLSTATISTICS_TABLE(RW, RO, KEY, METHOD)                                                               \
    KEY(Name)                                                                                                          \
    RO(MostRecentSuccessfulTransfer, string, Latin1Text, "Pull-MostRecentSuccess")                                     \
    RW(IncludeMetricsFlag, boolean, OwnByte, "Pull-IncludeMetricsFlag", Check::any())                                  \
    RO(NumberOfSuccessfulTransfers, uint32, Counter, "Pull-NumSuccesses")                                              \
    RO(MostRecentFailedTransfer, string, Latin1Text, "Pull-MostRecentFailure")                                         \
    RO(ReasonForFailure, string, Latin1Text, "Pull-MostRecentFailureReason")                                           \
    RO(NumberOfFailedTransfers, uint32, Counter, "Pull-NumFailures")                                                   \
    RO(LargestFileTransferred, uint32, Counter, "Pull-LargestFile")                                                    \
    RO(SmallestFileTransferred, uint32, Counter, "Pull-SmallestFile")                                                  \
    RO(TotalNumberOfBytesTransferred, uint32, Counter, "Pull-NumberOfBytes")                                           \
    RO(TotalNumberOfFileTransferred, uint32, Counter, "Pull-NumberOfFiles")                                            \
    METHOD(Refresh)
// clang-format on

#define CDR_CLASS QTX_CDRPullStatistics
#define CDR_TABLE QTX_CDRPULLSTATISTICS_TABLE
#include "ManagedClass.ipp"
