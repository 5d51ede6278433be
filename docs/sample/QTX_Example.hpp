// An example of a managed class.
#pragma once

// [declare]
#include "ManagedClass.hpp"

// clang-format off
#define QTX_EXAMPLE_TABLE(RW, RO, KEY, METHOD)                                                                         \
    RW(Limit, uint16, Word, "LIMIT", Check::range(3, 24))                                                              \
    RO(Count, uint32, Counter, "COUNT")                                                                                \
    KEY(InstanceID)                                                                                                    \
    METHOD(Reset)
// clang-format on

#define CDR_CLASS QTX_Example
#define CDR_TABLE QTX_EXAMPLE_TABLE
#include "ManagedClass.ipp"
// [declare]
