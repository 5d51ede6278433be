// The CIM provider of QTX_CDRPushSetting.
#ifndef QTX_CDRPUSHSETTINGPROVIDER_HPP
#define QTX_CDRPUSHSETTINGPROVIDER_HPP

#include "ClassProvider.hpp"
#include "QTX_CDRPushSetting.hpp"

#define CDR_CLASS QTX_CDRPushSetting
#include "ClassProvider.ipp"

#endif
