#include "QTX_CDRPullStatistics.hpp"

#define CDR_CLASS QTX_CDRPullStatistics
#define CDR_TABLE QTX_CDRPULLSTATISTICS_TABLE
#define CDR_BASE_READ_STATUS 0
#include "ManagedClassBodies.ipp"
