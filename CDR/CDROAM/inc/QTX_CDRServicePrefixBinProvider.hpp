// The CIM provider of QTX_CDRServicePrefixBin.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

#define CDR_CLASS QTX_CDRServicePrefixBin
#include "ClassProvider.ipp"
