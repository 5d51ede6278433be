// The CIM provider of QTX_Example.
#ifndef QTX_EXAMPLEPROVIDER_HPP
#define QTX_EXAMPLEPROVIDER_HPP

// [declare-provider]
#include "ClassProvider.hpp"
#include "QTX_Example.hpp"

#define CDR_CLASS QTX_Example
#include "ClassProvider.ipp"
// [declare-provider]

#endif
