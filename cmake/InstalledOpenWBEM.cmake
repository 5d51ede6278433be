# Builds against an OpenWBEM installed below OPENWBEM_ROOT instead of the library in openwbem/.

# use_installed_openwbem(TARGET): finds its headers, and adds UTF8Utils::ISO8859ToUTF8 if it has none.
function(use_installed_openwbem target)
  find_path(OPENWBEM_INCLUDE_DIR OW_CppProviderIncludes.hpp
    PATHS ${OPENWBEM_ROOT}/include/openwbem ${OPENWBEM_ROOT}/include NO_DEFAULT_PATH REQUIRED)
  target_include_directories(${target} SYSTEM PUBLIC ${OPENWBEM_INCLUDE_DIR})
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS ON)

  # Compile only: the object manager that loads the module provides the library.
  set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
  set(CMAKE_REQUIRED_INCLUDES ${OPENWBEM_INCLUDE_DIR})
  include(CheckCXXSourceCompiles)
  check_cxx_source_compiles("
    #include \"OW_UTF8Utils.hpp\"
    void convert(char* to) { OpenWBEM::UTF8Utils::ISO8859ToUTF8(\"a\", to, 1); }" OPENWBEM_HAS_ISO8859_TO_UTF8)
  if(NOT OPENWBEM_HAS_ISO8859_TO_UTF8)
    target_compile_definitions(${target} PRIVATE CDR_SUPPLY_ISO8859_TO_UTF8)
    target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/CDR/CDROAM/src/ISO8859ToUTF8.cpp)
  endif()
endfunction()
