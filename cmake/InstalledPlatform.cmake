# The platform libraries installed below PLATFORM_ROOT, as the targets ZpoShared and osa.

function(installed_platform_library name header)
  find_path(${name}_INCLUDE_DIR ${header} PATHS ${PLATFORM_ROOT} PATH_SUFFIXES include NO_DEFAULT_PATH REQUIRED)
  find_library(${name}_LIBRARY ${name} PATHS ${PLATFORM_ROOT}
    PATH_SUFFIXES lib lib64 lib/${CMAKE_LIBRARY_ARCHITECTURE} NO_DEFAULT_PATH REQUIRED)
  add_library(${name} UNKNOWN IMPORTED GLOBAL)
  set_target_properties(${name} PROPERTIES
    IMPORTED_LOCATION ${${name}_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${${name}_INCLUDE_DIR})
endfunction()

installed_platform_library(ZpoShared ZpoShared.h)
installed_platform_library(osa osa.h)
