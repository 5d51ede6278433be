// The CIM provider of QTX_CDRService.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRService.hpp"

#define CDR_CLASS QTX_CDRService
#include "ClassProvider.ipp"
