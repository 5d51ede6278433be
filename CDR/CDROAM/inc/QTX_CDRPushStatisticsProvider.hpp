// The CIM provider of QTX_CDRPushStatistics.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRPushStatistics.hpp"

#define CDR_CLASS QTX_CDRPushStatistics
#include "ClassProvider.ipp"
