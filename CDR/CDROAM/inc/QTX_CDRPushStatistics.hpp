// When the last push transfer took place.
#pragma once

#include "ManagedClass.hpp"

// ManagedClass.hpp tells what the columns mean.
// clang-format off
#define QTX_CDRPUSHSTATISTICS_TABLE(RW, RO, KEY, METHOD)                                                               \
    KEY(Name)                                                                                                          \
    RO(LastTransferTime, datetime, OwnText, "LastTransferTime")                                                        \
    METHOD(Refresh)
// clang-format on

#define CDR_CLASS QTX_CDRPushStatistics
#define CDR_TABLE QTX_CDRPUSHSTATISTICS_TABLE
#include "ManagedClass.ipp"
