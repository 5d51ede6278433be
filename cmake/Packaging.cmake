# The Debian packages that "cpack -G DEB" makes: one for each install component.
set(CPACK_PACKAGE_NAME cdr)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "CDR provider maintainers <maintainers@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL module server transfer console platform platform-dev openwbem openwbem-dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_STRIP_FILES ON)
# Empty, because it would be put before each package's own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(same "(= ${PROJECT_VERSION})")

# cdr_package(COMPONENT NAME SECTION DESCRIPTION [DEPENDS]): describes the component's package and which of ours it needs.
macro(cdr_package component name section description)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${description}\nPart of the CIM provider for Call Detail Recording.")
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${ARGN}")
endmacro()

cdr_package(module cdr-provider net "CIM provider module of the Call Detail Recording feature, with its schema"
  "cdr-platform ${same}, libopenwbem3 ${same}")
cdr_package(server cimserverd net "CIM-XML server for providers of the OpenWBEM interface" "libopenwbem3 ${same}, passwd")
cdr_package(console cimserver-console web "Page for browsers that shows and changes what a CIM-XML server serves" "cimserverd ${same}")
cdr_package(transfer cdr-transfer net "Sends call detail record files to the server of the push settings" "cdr-platform ${same}, cimserverd ${same}")
cdr_package(platform cdr-platform libs "Registry, log, scheduler and message queues of the device" "")
cdr_package(platform-dev cdr-platform-dev libdevel "Headers, CMake and pkg-config files of the device's platform libraries" "cdr-platform ${same}")
cdr_package(openwbem libopenwbem3 libs "Provider library, source-compatible with OpenWBEM 3.0.3" "")
cdr_package(openwbem-dev libopenwbem-dev libdevel "Headers, CMake and pkg-config files of the OpenWBEM provider library" "libopenwbem3 ${same}")
set(CPACK_DEBIAN_PLATFORM_PACKAGE_RECOMMENDS cron)
set(CPACK_DEBIAN_MODULE_PACKAGE_RECOMMENDS cimserverd)

set(CPACK_DEBIAN_SERVER_PACKAGE_RECOMMENDS "cdr-provider, cdr-platform")
set(CPACK_DEBIAN_SERVER_PACKAGE_SUGGESTS "sblim-wbemcli, cimserver-console")
set(scripts ${CMAKE_SOURCE_DIR}/packaging/debian-server)
set(CPACK_DEBIAN_SERVER_PACKAGE_CONTROL_EXTRA
  ${scripts}/postinst ${scripts}/prerm ${scripts}/postrm ${scripts}/conffiles ${scripts}/triggers)
set(CPACK_DEBIAN_PLATFORM_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/packaging/debian-platform/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
