// The CIM provider of QTX_Example.
#pragma once

// [declare-provider]
#include "ClassProvider.hpp"
#include "QTX_Example.hpp"

#define CDR_CLASS QTX_Example
#include "ClassProvider.ipp"
// [declare-provider]
