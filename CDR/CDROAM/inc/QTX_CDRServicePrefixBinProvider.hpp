// The CIM provider of QTX_CDRServicePrefixBin.
#ifndef QTX_CDRSERVICEPREFIXBINPROVIDER_HPP
#define QTX_CDRSERVICEPREFIXBINPROVIDER_HPP

#include "ClassProvider.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

#define CDR_CLASS QTX_CDRServicePrefixBin
#include "ClassProvider.ipp"

#endif
