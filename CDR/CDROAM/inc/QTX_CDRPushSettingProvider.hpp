// The CIM provider of QTX_CDRPushSetting.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRPushSetting.hpp"

#define CDR_CLASS QTX_CDRPushSetting
#include "ClassProvider.ipp"
