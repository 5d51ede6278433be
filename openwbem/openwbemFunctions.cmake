# openwbem_add_provider(ID SOURCES...): the module libID.so with the provider of that id, as object managers look for it.
# It is not linked against the library: the object manager that loads it provides it.
function(openwbem_add_provider id)
  add_library(${id} MODULE ${ARGN})
  set_target_properties(${id} PROPERTIES PREFIX lib CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${id} PRIVATE OpenWBEM::headers)
endfunction()
