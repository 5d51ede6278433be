#include "QTX_CDRPullStatisticsProvider.hpp"

#define CDR_CLASS QTX_CDRPullStatistics
#define CDR_TABLE QTX_CDRPULLSTATISTICS_TABLE
#include "ClassProviderBodies.ipp"
