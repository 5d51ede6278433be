// Checks of what must hold, compiled in with OW_DEBUG.

#pragma once

#include "OW_Exception.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// Thrown for a failed assertion; the message is the condition.
OW_DECLARE_APIEXCEPTION(Assertion, OW_COMMON_API)

} // namespace OpenWBEM

/// Throw AssertionException when the condition is false. Without OW_DEBUG it is not even evaluated.
#ifdef OW_DEBUG
#define OW_ASSERT(CON) OW_ASSERTMSG(CON, #CON)
#define OW_ASSERTMSG(CON, MSG)                                                                                         \
    do {                                                                                                               \
        if (!(CON)) {                                                                                                  \
            throw ::OpenWBEM::AssertionException(__FILE__, __LINE__, (MSG));                                           \
        }                                                                                                              \
    } while (0)
#else
#define OW_ASSERT(CON)
#define OW_ASSERTMSG(CON, MSG)
#endif
