#include "QTX_CDRPushSettingProvider.hpp"

#define CDR_CLASS QTX_CDRPushSetting
#define CDR_TABLE QTX_CDRPUSHSETTING_TABLE
#include "ClassProviderBodies.ipp"
