# How a subsystem, a test and a fuzzer are declared.
#
#   orvane_module(NAME SOURCES … [HEADERS …] [PUBLIC …] [PRIVATE …])
#       A static library. PUBLIC names only what its headers show.
#   orvane_test(NAME LABEL unit|service|memory|window|e2e SOURCES … LINKS … [DEPENDS …] [DBUS] [PAINTS])
#       One GoogleTest program, run by ctest under its label. With DBUS it has a session bus of its own; with PAINTS it
#       has fonts, and no window. What counts memory is labelled so, for a sanitizer holds back what is freed.
#   orvane_fuzzer(NAME SOURCE … LINKS …)
#       A libFuzzer target where ORVANE_FUZZERS is on; otherwise a program that ctest runs over its corpus.

function(orvane_qt_features target)
  get_target_property(libraries ${target} LINK_LIBRARIES)
  if(libraries MATCHES "Qt6::|orvane_")
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

function(orvane_module name)
  cmake_parse_arguments(arg "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC orvane_flags ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
  orvane_qt_features(${name})
  set_property(GLOBAL APPEND PROPERTY ORVANE_MODULES ${name})
endfunction()

# Runs a test program the way every kind needs it: on the offscreen platform, and as root with the web engine's
# sandbox off, which Chromium demands there.
function(orvane_test_environment test)
  set(environment "QT_QPA_PLATFORM=offscreen" "LC_ALL=C.UTF-8" "QT_LOGGING_RULES=qt.webenginecontext.debug=false")
  execute_process(COMMAND id -u OUTPUT_VARIABLE user OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(user STREQUAL "0")
    list(APPEND environment "QTWEBENGINE_DISABLE_SANDBOX=1")
  endif()
  if(ORVANE_SANITIZE MATCHES "address")
    list(APPEND environment
      "ASAN_OPTIONS=detect_stack_use_after_return=1:detect_leaks=1"
      "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0"
      "UBSAN_OPTIONS=print_stacktrace=1")
  endif()
  set_tests_properties(${test} PROPERTIES ENVIRONMENT "${environment}")
endfunction()

function(orvane_test name)
  cmake_parse_arguments(arg "DBUS;PAINTS" "LABEL;TIMEOUT" "SOURCES;LINKS;DEPENDS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  set(main orvane_test_${arg_LABEL}_main)
  if(arg_PAINTS)
    set(main orvane_test_paints_main)
  endif()
  target_link_libraries(${name} PRIVATE orvane_flags ${arg_LINKS} ${main})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  orvane_qt_features(${name})
  if(arg_DEPENDS)
    add_dependencies(${name} ${arg_DEPENDS})
  endif()
  set(bus "")
  if(arg_DBUS)
    set(bus dbus-run-session "--config-file=${CMAKE_SOURCE_DIR}/tests/support/session-bus.conf" --)
  endif()
  add_test(NAME ${name} COMMAND ${bus} $<TARGET_FILE:${name}>)
  orvane_test_environment(${name})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  # A sanitizer takes a multiple of the time.
  if(ORVANE_SANITIZE)
    math(EXPR arg_TIMEOUT "${arg_TIMEOUT} * 4")
  endif()
  # What may take long starts first, so that it does not run alone at the end.
  set_tests_properties(${name} PROPERTIES LABELS "${arg_LABEL}" TIMEOUT ${arg_TIMEOUT} COST ${arg_TIMEOUT})
  # A web engine is a dozen processes; two at a time leave each other no room.
  if(arg_LABEL STREQUAL "e2e")
    set_tests_properties(${name} PROPERTIES RESOURCE_LOCK web_engine COST 10000)
  endif()
endfunction()

function(orvane_fuzzer name)
  cmake_parse_arguments(arg "" "SOURCE" "LINKS" ${ARGN})
  add_executable(fuzz_${name} ${arg_SOURCE})
  target_link_libraries(fuzz_${name} PRIVATE orvane_flags ${arg_LINKS})
  target_include_directories(fuzz_${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  orvane_qt_features(fuzz_${name})
  add_dependencies(orvane_fuzzers fuzz_${name})
  if(ORVANE_FUZZERS)
    target_compile_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    return()
  endif()
  target_sources(fuzz_${name} PRIVATE "${CMAKE_SOURCE_DIR}/fuzz/ReplayMain.cpp")
  add_test(NAME fuzz_${name} COMMAND fuzz_${name} "${CMAKE_SOURCE_DIR}/fuzz/corpus/${name}")
  orvane_test_environment(fuzz_${name})
  set_tests_properties(fuzz_${name} PROPERTIES LABELS unit TIMEOUT 120)
endfunction()
