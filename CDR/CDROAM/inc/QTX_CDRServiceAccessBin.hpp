// A row of the access/suppress bins.
#pragma once

#include "ManagedClass.hpp"

// ManagedClass.hpp tells what the columns mean.
// clang-format off
#define QTX_CDRSERVICEACCESSBIN_TABLE(RW, RO, KEY, METHOD)                                                             \
    RW(AccessBin, string, Own, "ACCESS BIN", Check::maxLength(5))                                                      \
    RW(SuppressBin, string, Own, "ACCESS BIN", Check::maxLength(2))                                                    \
    KEY(InstanceID)
// clang-format on

#define CDR_CLASS QTX_CDRServiceAccessBin
#define CDR_TABLE QTX_CDRSERVICEACCESSBIN_TABLE
#include "ManagedClass.ipp"
