# Lets other projects find the installed libraries: find_package(NAME), and pkg-config's module NAME.

include(CMakePackageConfigHelpers)

# cdr_install_development(NAME COMPONENT NAMESPACE INCLUDE DESCRIPTION): for library NAME, whose targets are in the
# export set NAMETargets and whose headers lie in INCLUDE below the prefix.
function(cdr_install_development name component namespace include description)
  get_target_property(version ${name} VERSION)
  set(folder ${CMAKE_INSTALL_LIBDIR}/cmake/${name})
  install(EXPORT ${name}Targets NAMESPACE ${namespace}:: DESTINATION ${folder} COMPONENT ${component})

  set(config ${CMAKE_CURRENT_BINARY_DIR}/${name}Config.cmake)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/package-config.cmake.in ${config} @ONLY)
  write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/${name}ConfigVersion.cmake
    VERSION ${version} COMPATIBILITY SameMajorVersion)
  install(FILES ${config} ${CMAKE_CURRENT_BINARY_DIR}/${name}ConfigVersion.cmake
    DESTINATION ${folder} COMPONENT ${component})

  # The prefix is relative to the .pc file, so that the packages can be unpacked anywhere.
  file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" up ${up})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/package.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT ${component})
endfunction()
