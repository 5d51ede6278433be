#include "QTX_CDRServiceProvider.hpp"

#define CDR_CLASS QTX_CDRService
#define CDR_TABLE QTX_CDRSERVICE_TABLE
#include "ClassProviderBodies.ipp"
