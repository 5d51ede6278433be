// [define-provider]
#include "QTX_ExampleProvider.hpp"

#define CDR_CLASS QTX_Example
#define CDR_TABLE QTX_EXAMPLE_TABLE
#include "ClassProviderBodies.ipp"
// [define-provider]
