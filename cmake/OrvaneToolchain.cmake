# Language level, warnings and Qt's strict mode, on one target that every other target links.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(ORVANE_CCACHE ccache)
if(ORVANE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${ORVANE_CCACHE}")
endif()

find_program(ORVANE_MOLD mold)
if(ORVANE_MOLD)
  add_link_options(-fuse-ld=mold)
endif()

if(ORVANE_SANITIZE)
  add_compile_options(-fsanitize=${ORVANE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ORVANE_SANITIZE})
  # clang 14 cannot lay out its check of function types in a coroutine: "difference across sections".
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_compile_options(-fno-sanitize=function)
  endif()
endif()

add_library(orvane_flags INTERFACE)
target_compile_options(orvane_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# Records have default members: a designated initialiser names only what differs.
target_compile_options(orvane_flags INTERFACE -Wno-missing-field-initializers)
# g++ 12 warns of its own coroutine frames and of inlined library code at -O2; neither names a fault of ours.
target_compile_options(orvane_flags INTERFACE
  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized -Wno-stringop-overflow -Wno-array-bounds -Wno-restrict>)
target_compile_definitions(orvane_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS QT_NO_FOREACH
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_STRICT_ITERATORS
  $<$<NOT:$<CONFIG:Release>>:_GLIBCXX_ASSERTIONS>)
target_include_directories(orvane_flags INTERFACE "${CMAKE_SOURCE_DIR}/src")
