#include "QTX_CDRServicePrefixBin.hpp"

#define CDR_CLASS QTX_CDRServicePrefixBin
#define CDR_TABLE QTX_CDRSERVICEPREFIXBIN_TABLE
#include "ManagedClassBodies.ipp"
