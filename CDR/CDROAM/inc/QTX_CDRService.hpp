// The report settings of the CDR service.
#pragma once

#include "ManagedClass.hpp"

// ManagedClass.hpp tells what the columns mean.
// clang-format off
#define QTX_CDRSERVICE_TABLE(RW, RO, KEY, METHOD)                                                                      \
    RW(Format, uint8, Byte, "FORMAT", Check::any())                                                                    \
    RW(ReportType, uint8, OwnByte, "TYPE", Check::any())                                                               \
    RW(Language, uint8, Byte, "LANG", Check::any())                                                                    \
    RW(ReportFilter, uint8, Byte, "FILTER", Check::any())                                                              \
    RW(FeatureCode, string, PackedDigits, "FEATURE CODE", Check::maxLength(3))                                         \
    RW(DateFormat, uint8, Byte, "DATE", Check::any())                                                                  \
    RW(HeaderFormat, uint8, Byte, "HEADER", Check::any())                                                              \
    RW(DNISInfo, boolean, Byte, "DNIS", Check::any())                                                                  \
    RW(ConnectChar, uint8, Byte, "CONNECT", Check::any())                                                              \
    RW(DigitsSuppress, uint8, Byte, "DIGITSSUPP", Check::any())                                                        \
    RW(DigitsLimit, uint16, Word, "DIGITSLIMIT", Check::range(3, 24))                                                  \
    RW(ClipFileSchedule, uint8, Byte, "SCHEDULE", Check::any())                                                        \
    RW(ClipFileSize_100K, uint32, Byte, "FILESIZE", Check::any())                                                      \
    RW(CDRDiskSpaceLimit_MB, uint32, Integer, "DISKLIMIT", Check::any())                                               \
    RW(CLIDWithName, boolean, Byte, "NAME", Check::any())                                                              \
    RW(LongCLIDSupport, boolean, Byte, "LONGID", Check::any())                                                         \
    RW(CLIDWithCallType, boolean, Byte, "CALLTYPE", Check::any())                                                      \
    RW(SupportCallCharge, boolean, Byte, "CHARGE", Check::any())                                                       \
    RW(AnswerSupervision, boolean, OwnByte, "SUPERVISE", Check::any())                                                 \
    RW(CallFilterDuration, uint32, Byte, "TIME", Check::any())                                                         \
    RW(HospitalityRecords, boolean, Byte, "HOSPITAL", Check::any())                                                    \
    KEY(SystemCreationClassName)                                                                                       \
    KEY(SystemName)                                                                                                    \
    KEY(CreationClassName)                                                                                             \
    KEY(Name)                                                                                                          \
    METHOD(Refresh)                                                                                                    \
    METHOD(ClipFile)
// clang-format on

#define CDR_CLASS QTX_CDRService
#define CDR_TABLE QTX_CDRSERVICE_TABLE
#include "ManagedClass.ipp"
