// The CIM provider of QTX_CDRService.
#ifndef QTX_CDRSERVICEPROVIDER_HPP
#define QTX_CDRSERVICEPROVIDER_HPP

#include "ClassProvider.hpp"
#include "QTX_CDRService.hpp"

#define CDR_CLASS QTX_CDRService
#include "ClassProvider.ipp"

#endif
