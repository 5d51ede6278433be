// Configuration of the OpenWBEM provider library, for C and C++. Each macro can be preset with -D; nothing is declared
// here.

#pragma once

// A provider module reports OW_VERSION when it is loaded; an object manager refuses a text other than its own.
#ifndef OW_VERSION
#define OW_VERSION "3.0.3"
#endif
#ifndef OW_PACKAGE_VERSION
#define OW_PACKAGE_VERSION "3.0.3"
#endif
#ifndef OW_PACKAGE
#define OW_PACKAGE "openwbem"
#endif
#ifndef OW_PACKAGE_NAME
#define OW_PACKAGE_NAME "OpenWBEM"
#endif
#ifndef OW_PACKAGE_STRING
#define OW_PACKAGE_STRING "OpenWBEM 3.0.3"
#endif
#ifndef OW_PACKAGE_PREFIX
#define OW_PACKAGE_PREFIX ""
#endif

// Linkage marks of the public classes. All symbols of the library have default visibility, so they are empty.
#ifndef OW_EXPORT
#define OW_EXPORT
#endif
#ifndef OW_IMPORT
#define OW_IMPORT
#endif
#ifndef OW_COMMON_API
#define OW_COMMON_API OW_IMPORT
#endif
#ifndef OW_XML_API
#define OW_XML_API OW_IMPORT
#endif
#ifndef OW_CLIENT_API
#define OW_CLIENT_API OW_IMPORT
#endif
#ifndef OW_HTTP_API
#define OW_HTTP_API OW_IMPORT
#endif
#ifndef OW_CIMOMCOMMON_API
#define OW_CIMOMCOMMON_API OW_IMPORT
#endif
#ifndef OW_PROVIFC_API
#define OW_PROVIFC_API OW_IMPORT
#endif
#ifndef OW_CPPPROVIFC_API
#define OW_CPPPROVIFC_API OW_IMPORT
#endif
#ifndef OW_REPOSITORY_API
#define OW_REPOSITORY_API OW_IMPORT
#endif

// Needed by types that pass between a module and the library by exception or dynamic_cast: without it a module built
// with -fvisibility=hidden would have types of its own.
#ifndef OW_VISIBILITY_DEFAULT
#define OW_VISIBILITY_DEFAULT __attribute__((visibility("default")))
#endif
#ifndef OW_DEPRECATED
#define OW_DEPRECATED __attribute__((deprecated))
#endif

// The platform
#ifndef OW_GNU_LINUX
#define OW_GNU_LINUX 1
#endif
#ifndef OW_USE_PTHREAD
#define OW_USE_PTHREAD 1
#endif
#ifndef OW_USE_DL
#define OW_USE_DL 1
#endif
#ifndef OW_CHECK_NULL_REFERENCES
#define OW_CHECK_NULL_REFERENCES 1
#endif
#ifndef OW_CHECK_ARRAY_INDEXING
#define OW_CHECK_ARRAY_INDEXING 1
#endif
#ifndef OW_HAVE_UUPRETTY_FUNCTIONUU
#define OW_HAVE_UUPRETTY_FUNCTIONUU 1
#endif
#ifndef OW_HAVE_ISTREAM
#define OW_HAVE_ISTREAM 1
#endif
#ifndef OW_HAVE_OSTREAM
#define OW_HAVE_OSTREAM 1
#endif
#ifndef OW_NO_SSL
#define OW_NO_SSL 1
#endif

// Sizes of the fundamental types in bytes
#ifndef OW_SIZEOF_SHORT_INT
#define OW_SIZEOF_SHORT_INT __SIZEOF_SHORT__
#endif
#ifndef OW_SIZEOF_INT
#define OW_SIZEOF_INT __SIZEOF_INT__
#endif
#ifndef OW_SIZEOF_LONG_INT
#define OW_SIZEOF_LONG_INT __SIZEOF_LONG__
#endif
#ifndef OW_SIZEOF_LONG_LONG_INT
#define OW_SIZEOF_LONG_LONG_INT __SIZEOF_LONG_LONG__
#endif
#ifndef OW_SIZEOF_FLOAT
#define OW_SIZEOF_FLOAT __SIZEOF_FLOAT__
#endif
#ifndef OW_SIZEOF_DOUBLE
#define OW_SIZEOF_DOUBLE __SIZEOF_DOUBLE__
#endif
#ifndef OW_SIZEOF_CHAR_P
#define OW_SIZEOF_CHAR_P __SIZEOF_POINTER__
#endif

// Install paths
#ifndef OW_DEFAULT_LIB_DIR
#define OW_DEFAULT_LIB_DIR "/usr/lib/openwbem"
#endif
#ifndef OW_DEFAULT_LIBEXEC_DIR
#define OW_DEFAULT_LIBEXEC_DIR "/usr/libexec/openwbem"
#endif
#ifndef OW_DEFAULT_STATE_DIR
#define OW_DEFAULT_STATE_DIR "/var/lib/openwbem"
#endif
#ifndef OW_DEFAULT_SYSCONF_DIR
#define OW_DEFAULT_SYSCONF_DIR "/etc/openwbem"
#endif
#ifndef OW_PIDFILE_DIR
#define OW_PIDFILE_DIR "/run"
#endif

// Call tracing, compiled out
#ifndef OW_PRINT_FUNC_NAME
#define OW_PRINT_FUNC_NAME
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS1
#define OW_PRINT_FUNC_NAME_ARGS1(a1)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS2
#define OW_PRINT_FUNC_NAME_ARGS2(a1, a2)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS3
#define OW_PRINT_FUNC_NAME_ARGS3(a1, a2, a3)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS4
#define OW_PRINT_FUNC_NAME_ARGS4(a1, a2, a3, a4)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS5
#define OW_PRINT_FUNC_NAME_ARGS5(a1, a2, a3, a4, a5)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS6
#define OW_PRINT_FUNC_NAME_ARGS6(a1, a2, a3, a4, a5, a6)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS7
#define OW_PRINT_FUNC_NAME_ARGS7(a1, a2, a3, a4, a5, a6, a7)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS8
#define OW_PRINT_FUNC_NAME_ARGS8(a1, a2, a3, a4, a5, a6, a7, a8)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS9
#define OW_PRINT_FUNC_NAME_ARGS9(a1, a2, a3, a4, a5, a6, a7, a8, a9)
#endif
#ifndef OW_PRINT_FUNC_NAME_ARGS10
#define OW_PRINT_FUNC_NAME_ARGS10(a1, a2, a3, a4, a5, a6, a7, a8, a9, a10)
#endif
