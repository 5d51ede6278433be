// The CIM provider of QTX_CDRServiceAccessBin.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRServiceAccessBin.hpp"

#define CDR_CLASS QTX_CDRServiceAccessBin
#include "ClassProvider.ipp"
