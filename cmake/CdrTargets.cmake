# What every target of the project gets: warnings as errors, the chosen sanitizers or hardening.

# cdr_target_warnings(TARGET): the project's warnings, each an error.
function(cdr_target_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-qual -Wformat=2 -Wundef -Werror)
endfunction()

# cdr_target_sanitizers(TARGET): compiles and links with what CDR_SANITIZE names.
function(cdr_target_sanitizers target)
  if(CDR_SANITIZE STREQUAL "address")
    set(flags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    if(CDR_BUILD_FUZZ) # libFuzzer follows the paths through the libraries, too
      list(APPEND flags -fsanitize=fuzzer-no-link)
    endif()
  elseif(CDR_SANITIZE STREQUAL "thread")
    set(flags -fsanitize=thread -fno-omit-frame-pointer)
  elseif(CDR_SANITIZE)
    message(FATAL_ERROR "CDR_SANITIZE is '${CDR_SANITIZE}'; known are address and thread")
  endif()
  target_compile_options(${target} PRIVATE ${flags})
  target_link_options(${target} PRIVATE ${flags})
endfunction()

# cdr_target(TARGET): both of the above and cheap hardening.
function(cdr_target target)
  cdr_target_warnings(${target})
  cdr_target_sanitizers(${target})
  if(NOT CDR_SANITIZE)
    # Nobody replaces a single function of ours: the compiler may inline those that a library exports.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition -fstack-protector-strong $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
    # The same for the linker, so that the programs start with fewer symbols to look up.
    target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now,-O1,--as-needed,-Bsymbolic-functions)
  endif()
endfunction()

# cdr_test(NAME SOURCES... [LIBS libs...] [LABELS labels...]): a GoogleTest program, registered with ctest under its name.
function(cdr_test name)
  cmake_parse_arguments(ARG "" "" "LIBS;LABELS" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
  cdr_target(${name})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 170 LABELS "${ARG_LABELS}")
endfunction()
