// The CIM provider of QTX_CDRServiceAccessBin.
#ifndef QTX_CDRSERVICEACCESSBINPROVIDER_HPP
#define QTX_CDRSERVICEACCESSBINPROVIDER_HPP

#include "ClassProvider.hpp"
#include "QTX_CDRServiceAccessBin.hpp"

#define CDR_CLASS QTX_CDRServiceAccessBin
#include "ClassProvider.ipp"

#endif
