// The CIM provider of QTX_CDRPullStatistics.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRPullStatistics.hpp"

#define CDR_CLASS QTX_CDRPullStatistics
#include "ClassProvider.ipp"
