#include "QTX_CDRPushStatistics.hpp"

#define CDR_CLASS QTX_CDRPushStatistics
#define CDR_TABLE QTX_CDRPUSHSTATISTICS_TABLE
#include "ManagedClassBodies.ipp"
