// [define]
#include "QTX_Example.hpp"

#define CDR_CLASS QTX_Example
#define CDR_TABLE QTX_EXAMPLE_TABLE
#include "ManagedClassBodies.ipp"
// [define]
