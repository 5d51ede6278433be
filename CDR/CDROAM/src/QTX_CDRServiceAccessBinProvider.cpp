#include "QTX_CDRServiceAccessBinProvider.hpp"

#define CDR_CLASS QTX_CDRServiceAccessBin
#define CDR_TABLE QTX_CDRSERVICEACCESSBIN_TABLE
#include "ClassProviderBodies.ipp"
