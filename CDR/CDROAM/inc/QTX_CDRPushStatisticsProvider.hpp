// The CIM provider of QTX_CDRPushStatistics.
#ifndef QTX_CDRPUSHSTATISTICSPROVIDER_HPP
#define QTX_CDRPUSHSTATISTICSPROVIDER_HPP

#include "ClassProvider.hpp"
#include "QTX_CDRPushStatistics.hpp"

#define CDR_CLASS QTX_CDRPushStatistics
#include "ClassProvider.ipp"

#endif
