// The settings of the push transfer.
#pragma once

#include "ManagedClass.hpp"

// ManagedClass.hpp tells what the columns mean.
// clang-format off
#define QTX_CDRPUSHSETTING_TABLE(RW, RO, KEY, METHOD)                                                                  \
    RW(TransferType, uint8, OwnByte, "TransferType", Check::any())                                                     \
    RW(IPAddress, string, Latin1Text, "IpAddr", Check::any())                                                          \
    RW(UserName, string, Latin1Text, "UserName", Check::any())                                                         \
    RW(Password, string, Latin1Text, "Password", Check::any())                                                         \
    RW(DestFolder, string, Latin1Text, "DestFolder", Check::any())                                                     \
    RW(NumRetry, uint32, Byte, "NumRetry", Check::any())                                                               \
    RW(DeleteFlag, boolean, Byte, "DeleteFlag", Check::any())                                                          \
    RW(CompressFlag, boolean, Byte, "CompressFlag", Check::any())                                                      \
    RW(IncludeMetricsFlag, boolean, Byte, "IncludeMetricsFlag", Check::any())                                          \
    RW(TransferTime, string, OwnText, "TranTime", Check::any())                                                        \
    RW(TransferDayOfMonth, string, OwnText, "TranDateOfMonth", Check::any())                                           \
    RW(TransferDayOfWeek, string, OwnText, "TranDateOfWeek", Check::any())                                             \
    KEY(InstanceID)                                                                                                    \
    METHOD(PushFileNow)
// clang-format on

#define CDR_CLASS QTX_CDRPushSetting
#define CDR_TABLE QTX_CDRPUSHSETTING_TABLE
#include "ManagedClass.ipp"
