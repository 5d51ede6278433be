// The integer and real types of CIM under the names that the whole interface uses.

#pragma once

#include "OW_config.h"
#include <sys/types.h>

namespace OpenWBEM {

typedef unsigned char UInt8;
typedef signed char Int8;

typedef unsigned short UInt16;
typedef short Int16;
#define OW_INT16_IS_SHORT 1

typedef unsigned int UInt32;
typedef int Int32;
#define OW_INT32_IS_INT 1

// Where long has 64 bits, long long is a distinct third type: passing one to an overloaded function is ambiguous.
#if OW_SIZEOF_LONG_INT == 8
typedef unsigned long UInt64;
typedef long Int64;
#define OW_INT64_IS_LONG 1
#else
typedef unsigned long long UInt64;
typedef long long Int64;
#define OW_INT64_IS_LONG_LONG 1
#endif

typedef float Real32;
typedef double Real64;

typedef int FileHandle;
typedef int Select_t;
typedef ::uid_t UserId;
typedef ::pid_t ProcId;

#ifndef OW_SHAREDLIB_EXTENSION
#define OW_SHAREDLIB_EXTENSION ".so"
#endif
#ifndef OW_FILENAME_SEPARATOR
#define OW_FILENAME_SEPARATOR "/"
#endif
#ifndef OW_PATHNAME_SEPARATOR
#define OW_PATHNAME_SEPARATOR ":"
#endif

} // namespace OpenWBEM
