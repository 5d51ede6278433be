#include "QTX_CDRPushStatisticsProvider.hpp"

#define CDR_CLASS QTX_CDRPushStatistics
#define CDR_TABLE QTX_CDRPUSHSTATISTICS_TABLE
#include "ClassProviderBodies.ipp"
