# Builds for another architecture with Debian's cross compiler, against the packages that cmake/target unpacks below
# .cache/CDR_TARGET. The programs run where they were built: they name that folder's loader and libraries.

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CDR_TARGET)

# Machine, the compiler's name for it, the name of its library folder, and its loader.
set(machines_armhf arm arm-linux-gnueabihf arm-linux-gnueabihf /lib/ld-linux-armhf.so.3)
set(machines_i386 i686 i686-linux-gnu i386-linux-gnu /lib/ld-linux.so.2)
set(machines_s390x s390x s390x-linux-gnu s390x-linux-gnu /lib/ld64.so.1)
set(flags_armhf -Wno-psabi) # GCC's notes on a change of its own between two versions long past
if(NOT machines_${CDR_TARGET})
  message(FATAL_ERROR "CDR_TARGET is '${CDR_TARGET}'; known are armhf, i386, s390x")
endif()
list(GET machines_${CDR_TARGET} 0 CMAKE_SYSTEM_PROCESSOR)
list(GET machines_${CDR_TARGET} 1 compiler)
list(GET machines_${CDR_TARGET} 2 CMAKE_LIBRARY_ARCHITECTURE)
list(GET machines_${CDR_TARGET} 3 loader)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CXX_FLAGS_INIT "${flags_${CDR_TARGET}}")
set(CMAKE_C_COMPILER ${compiler}-gcc)
set(CMAKE_CXX_COMPILER ${compiler}-g++)
get_filename_component(CMAKE_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../.cache/${CDR_TARGET} ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)

# The old tag, because it also holds for the libraries' own needs.
set(libraries ${CMAKE_SYSROOT}/lib/${CMAKE_LIBRARY_ARCHITECTURE}:${CMAKE_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE})
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "-Wl,--disable-new-dtags,-rpath,${libraries},--dynamic-linker,${CMAKE_SYSROOT}${loader}")
