#include "QTX_CDRPushSetting.hpp"

#define CDR_CLASS QTX_CDRPushSetting
#define CDR_TABLE QTX_CDRPUSHSETTING_TABLE
#include "ManagedClassBodies.ipp"
