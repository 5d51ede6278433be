// A row of the prefix bins.
#pragma once

#include "ManagedClass.hpp"

// ManagedClass.hpp tells what the columns mean.
// clang-format off
#define QTX_CDRSERVICEPREFIXBIN_TABLE(RW, RO, KEY, METHOD)                                                             \
    RW(PrefixBin, string, Own, "PREFIX BIN", Check::maxLength(8))                                                      \
    KEY(InstanceID)
// clang-format on

#define CDR_CLASS QTX_CDRServicePrefixBin
#define CDR_TABLE QTX_CDRSERVICEPREFIXBIN_TABLE
#include "ManagedClass.ipp"
