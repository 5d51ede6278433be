#include "QTX_CDRServiceAccessBin.hpp"

#define CDR_CLASS QTX_CDRServiceAccessBin
#define CDR_TABLE QTX_CDRSERVICEACCESSBIN_TABLE
#include "ManagedClassBodies.ipp"
