#include "QTX_CDRServicePrefixBinProvider.hpp"

#define CDR_CLASS QTX_CDRServicePrefixBin
#define CDR_TABLE QTX_CDRSERVICEPREFIXBIN_TABLE
#include "ClassProviderBodies.ipp"
