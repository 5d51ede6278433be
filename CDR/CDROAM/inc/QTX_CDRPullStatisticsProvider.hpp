// The CIM provider of QTX_CDRPullStatistics.
#ifndef QTX_CDRPULLSTATISTICSPROVIDER_HPP
#define QTX_CDRPULLSTATISTICSPROVIDER_HPP

#include "ClassProvider.hpp"
#include "QTX_CDRPullStatistics.hpp"

#define CDR_CLASS QTX_CDRPullStatistics
#include "ClassProvider.ipp"

#endif
